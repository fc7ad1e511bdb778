// fax_find: looks for a word in the names and companies of every address book and container, and shows the details of
// what it finds. A use of the library in C++ with its texts in Unicode; docs/caller-guide.md walks through it.
//
// usage: fax_find WORD [PROFILE]
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "qdxl7rc.h"

namespace {

struct SessionCloser {
    void operator()(SessionHandle* session) const { CloseAddressBook(session); }
};
using Session = std::unique_ptr<SessionHandle, SessionCloser>;

std::wstring Wide(const char* text) {
    std::wstring wide(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), static_cast<int>(wide.size()));
    wide.resize(wide.find(L'\0'));
    return wide;
}

// Prints text of the library's code page as UTF-8.
void Print(const char* text) {
    const std::wstring wide = Wide(text);
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.c_str(), -1, utf8.data(), size, nullptr, nullptr);
    std::fputs(utf8.c_str(), stdout);
}

// Case and accents are compared in Unicode: in a code page of double bytes the second byte can look like a letter.
bool Contains(const char* text, const std::wstring& word) {
    const std::wstring wide = Wide(text);
    return FindNLSString(LOCALE_USER_DEFAULT, FIND_FROMSTART | LINGUISTIC_IGNORECASE, wide.c_str(),
                         static_cast<int>(wide.size()), word.c_str(), static_cast<int>(word.size()), nullptr) >= 0;
}

// The address books, or all containers below one of them.
std::vector<AddressBookRecord> ReadBooks(SessionHandle* session, AddressBookEntry parent) {
    std::uint32_t count = 0;
    if (!GetAddressBookList(session, 0, parent, &count, nullptr)) return {};
    std::vector<AddressBookRecord> books(count);
    const RecordListDescriptor records = {sizeof(AddressBookRecord), {}, books.data()};
    if (count > 0 && !GetAddressBookList(session, 0, parent, &count, &records)) return {};
    return books;
}

// Calls the function with each destination. The records of a large address book would take hundreds of megabytes, so
// they are filled an eighth at a time: those before it go into one record that nobody reads. Each filling begins with
// the first destination again, so there are always eight of them at most, however large the book.
template <typename Function>
void ForEachDestination(SessionHandle* session, AddressBookEntry book, Function&& function) {
    constexpr std::uint32_t smallestWindow = 1000;
    std::uint32_t total = 0;
    if (!GetDestinationList(session, 0, book, &total, nullptr)) return;
    const std::uint32_t windowSize = std::max(smallestWindow, total / 8 + 1);
    DestinationRecord unread = {};
    std::vector<DestinationRecord> window(std::min(total, windowSize));
    std::vector<DestinationRecord*> addresses(total, &unread);
    const RecordListDescriptor records = {0, {}, addresses.data()};
    for (std::uint32_t begin = 0; begin < total; begin += windowSize) {
        std::uint32_t end = begin + std::min(total - begin, windowSize);
        std::fill(window.begin(), window.end(), DestinationRecord());
        for (std::uint32_t i = begin; i < end; ++i) addresses[i] = &window[i - begin];
        // Before the last window it answers 0, as there are more destinations than it may write.
        GetDestinationList(session, 0, book, &end, &records);
        for (std::uint32_t i = begin; i < end; ++i) {
            function(window[i - begin]);
            addresses[i] = &unread;
        }
    }
}

std::string ReadDetails(SessionHandle* session, DestinationEntry destination) {
    std::uint32_t size = 0;
    if (!GetDestinationDetails(session, destination, &size, nullptr)) return {};
    std::string text(size, '\0');
    if (!GetDestinationDetails(session, destination, &size, text.data())) return {};
    // Lines end in CR LF, and the standard output makes CR LF of LF.
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

void Search(SessionHandle* session, const AddressBookRecord& book, const std::wstring& word) {
    DestinationEntry last = nullptr;
    ForEachDestination(session, book.entry, [&](const DestinationRecord& destination) {
        // A person has a record for each number, one behind the other.
        if (destination.entry == last) return;
        last = destination.entry;
        if (!Contains(destination.name, word) && !Contains(destination.company, word)) return;
        std::printf("[");
        Print(book.name);
        std::printf("]\n");
        Print(ReadDetails(session, destination.entry).c_str());
        std::printf("\n\n");
    });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: fax_find WORD [PROFILE]\n", stderr);
        return 2;
    }
    SetConsoleOutputCP(CP_UTF8);
    const Session session(OpenAddressBook(nullptr, argc > 2 ? argv[2] : nullptr, 0, nullptr, 0, nullptr));
    if (!session) {
        std::fprintf(stderr, "The address book cannot be opened: result 0x%08X\n",
                     static_cast<unsigned>(GetLastVOKError(nullptr)));
        return 1;
    }
    // Arguments come in the same code page as the library's texts.
    const std::wstring word = Wide(argv[1]);
    for (const AddressBookRecord& book : ReadBooks(session.get(), nullptr)) {
        Search(session.get(), book, word);
        for (const AddressBookRecord& container : ReadBooks(session.get(), book.entry)) {
            Search(session.get(), container, word);
        }
    }
    return 0;
}
