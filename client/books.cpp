// A book is looked for in four ways, from the strictest to the most lenient; the first that finds any decides.
#include "client/books.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "client/client_error.h"
#include "client/name_lists.h"
#include "client/record_text.h"
#include "text/characters.h"

namespace {

using Path = std::vector<std::string>;

std::string EscapeName(std::string_view name) {
    std::string escaped;
    for (const char c : name) {
        if (c == '/' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

Path SplitPath(std::string_view text) {
    Path path(1);
    for (size_t i = 0; i < text.size(); ++i) {
        const bool escapes = text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '/' || text[i + 1] == '\\');
        if (escapes) {
            path.back() += text[++i];
        } else if (text[i] == '/') {
            path.emplace_back();
        } else {
            path.back() += text[i];
        }
    }
    return path;
}

bool SameFolded(const std::string& left, const std::string& right) {
    return FoldCase(left) == FoldCase(right);
}

template <typename Equal>
bool EndsWith(const Path& path, const Path& end, Equal equal) {
    return path.size() >= end.size() && std::equal(end.rbegin(), end.rend(), path.rbegin(), equal);
}

std::vector<std::string> PathTexts(const std::vector<const Book*>& books) {
    std::vector<std::string> texts;
    std::ranges::transform(books, std::back_inserter(texts), [](const Book* book) { return PathText(*book); });
    return texts;
}

}  // namespace

Book& Books::Add(const Book* parent, std::string name) {
    Book book;
    if (parent) book.path = parent->path;
    book.path.push_back(name);
    constexpr int firstCopy = 2;
    const auto [first, isNew] = copies_.try_emplace(PathText(book), firstCopy);
    for (bool isFree = isNew; !isFree;) {
        book.path.back() = name + "#" + std::to_string(first->second++);
        isFree = copies_.try_emplace(PathText(book), firstCopy).second;
    }
    book.name = std::move(name);
    return books_.emplace_back(std::move(book));
}

Books ReadBooks(LibrarySession& session) {
    Books books;
    for (const AddressBookRecord& record : session.AddressBooks()) {
        const size_t bookIndex = books.size();
        Book& book = books.Add(nullptr, FieldText(record.name));
        book.entry = record.entry;
        book.serviceName = FieldText(record.serviceName);
        book.providerValue = record.providerValue;
        const std::vector<AddressBookRecord> containers = session.Containers(record.entry);
        for (const AddressBookRecord& container : containers) {
            const size_t parentIndex = container.parent
                                           ? bookIndex + 1 + static_cast<size_t>(container.parent - containers.data())
                                           : bookIndex;
            const Book parent = books[parentIndex];
            Book& added = books.Add(&parent, FieldText(container.name));
            added.entry = container.entry;
            added.isContainer = true;
            added.serviceName = parent.serviceName;
            added.providerValue = parent.providerValue;
        }
    }
    return books;
}

std::string PathText(const Book& book) {
    std::string text;
    for (const std::string& name : book.path) {
        if (&name != &book.path.front()) text += '/';
        text += EscapeName(name);
    }
    return text;
}

const Book& FindBook(const Books& books, std::string_view wanted) {
    const Path path = SplitPath(AsCodePageHasIt(wanted));
    const std::string quoted = "\"" + std::string(wanted) + "\"";
    const std::function<bool(const Book&)> ways[] = {
        [&](const Book& book) { return book.path == path; },
        [&](const Book& book) { return EndsWith(book.path, path, std::equal_to<>()); },
        [&](const Book& book) { return std::ranges::equal(book.path, path, SameFolded); },
        [&](const Book& book) { return EndsWith(book.path, path, SameFolded); },
    };
    for (const auto& matches : ways) {
        std::vector<const Book*> found;
        for (const Book& book : books) {
            if (matches(book)) found.push_back(&book);
        }
        if (found.size() == 1) return *found.front();
        if (!found.empty()) {
            throw ClientError("more than one address book is called " + quoted +
                              "; name one by its path: " + JoinNames(PathTexts(found)));
        }
    }
    if (books.empty()) {
        throw ClientError("there is no address book " + quoted +
                          ", as the profile has no address books; see \"faxbook "
                          "profiles\" and the provider's contacts folder");
    }
    std::vector<std::string> paths;
    std::ranges::transform(books, std::back_inserter(paths), PathText);
    throw ClientError("there is no address book " + quoted + "; there are: " + JoinNames(paths));
}
