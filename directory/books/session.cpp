// Listing folders and reading card files, when they are asked for.
#include "books/session.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <stdexcept>

#include "books/card_files.h"
#include "text/ascii.h"
#include "text/code_pages.h"

namespace fs = std::filesystem;

namespace {

// Different in every session of every process, so that identifiers kept from another one are recognised.
std::uint64_t NewSessionNumber() {
    static std::atomic<std::uint64_t> count = 0;
    const auto now = static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
    return now * 0x9E3779B97F4A7C15U + ++count;
}

std::string KeyOf(std::uint32_t owner, const fs::path& path) {
    return std::to_string(owner) + '/' + Utf8Of(path);
}

const std::shared_ptr<const CardSet>& NoCards() {
    static const std::shared_ptr<const CardSet> none = std::make_shared<CardSet>();
    return none;
}

}  // namespace

Session::Session(const std::vector<fs::path>& locations, DiagnosticsSink* sink)
    : number_(NewSessionNumber()), diagnostics_(sink) {
    for (const fs::path& location : locations)
        AddNode(location, BookNode::Role::Location, false, static_cast<std::uint32_t>(nodes_.size()), FileStatus());
    locationCount_ = static_cast<std::uint32_t>(nodes_.size());
}

std::uint32_t Session::AddNode(const fs::path& path, BookNode::Role role, bool isFolder, std::uint32_t parent,
                               const FileStatus& identity) {
    const auto [position, isNew] =
        nodeOfPath_.try_emplace(KeyOf(parent, path), static_cast<std::uint32_t>(nodes_.size()));
    if (isNew) {
        const fs::path name = isFolder ? path.filename() : path.stem();
        const std::uint32_t service = role == BookNode::Role::Location ? parent : nodes_[parent].service;
        nodes_.push_back({path, InActiveCodePage(Utf8Of(name)), role, isFolder, parent, service, identity});
    }
    return position->second;
}

std::vector<fs::path> Session::ListFolder(const fs::path& folder) {
    struct Named {
        std::string folded;
        fs::path path;
    };
    std::vector<Named> entries;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::string name = LowerCased(Utf8Of(entry->path().filename()));
        if (!name.starts_with('.')) entries.push_back({std::move(name), entry->path()});
    }
    if (error)
        diagnostics_.Report(folder, 0, "folder cannot be read: " + error.message(),
                            "check that it exists and that you may read it");
    std::sort(entries.begin(), entries.end(),
              [](const Named& a, const Named& b) { return std::tie(a.folded, a.path) < std::tie(b.folded, b.path); });
    std::vector<fs::path> paths;
    paths.reserve(entries.size());
    for (Named& entry : entries) paths.push_back(std::move(entry.path));
    return paths;
}

bool Session::LeadsBack(std::uint32_t node, const FileStatus& folder) const {
    for (;;) {
        if (nodes_[node].identity.IsSameFileAs(folder)) return true;
        if (nodes_[node].parent == node) return false;
        node = nodes_[node].parent;
    }
}

void Session::AddChild(std::uint32_t node, const fs::path& path, std::vector<std::uint32_t>& children) {
    const bool inLocation = nodes_[node].role == BookNode::Role::Location;
    const BookNode::Role role = inLocation ? BookNode::Role::Book : BookNode::Role::Container;
    std::error_code error;
    if (fs::is_directory(path, error)) {
        const std::optional<FileStatus> status = ReadFileStatus(path);
        if (!status)
            diagnostics_.Report(path, 0, "folder cannot be read", "check that you may read it");
        else if (LeadsBack(node, *status))
            diagnostics_.Report(path, 0, "link leads back to a folder that it lies in", "it was left out");
        else
            children.push_back(AddNode(path, role, true, node, *status));
    } else if (inLocation && IsCardFileName(path)) {
        children.push_back(AddNode(path, role, false, node, FileStatus()));
    }
}

std::vector<std::uint32_t> Session::ListBooks() {
    std::vector<std::uint32_t> books;
    for (std::uint32_t location = 0; location < locationCount_; ++location) {
        BookNode& node = nodes_[location];
        const std::optional<FileStatus> status = ReadFileStatus(node.path);
        std::error_code error;
        node.isFolder = fs::is_directory(node.path, error);
        node.identity = status.value_or(FileStatus());
        if (node.path.empty()) {
            diagnostics_.Report("contacts", 0, "no contacts folder is known", "name one in FAXBOOK_CONTACTS");
        } else if (node.isFolder) {
            for (const fs::path& path : ListFolder(node.path)) AddChild(location, path, books);
        } else if (status) {
            AddChild(location, node.path, books);
        } else {
            diagnostics_.Report(node.path, 0, "no such folder or file",
                                "create it, or name another in FAXBOOK_CONTACTS or in the profile");
        }
    }
    return books;
}

std::vector<std::uint32_t> Session::ListContainers(std::uint32_t node) {
    std::vector<std::uint32_t> containers;
    if (nodes_[node].isFolder)
        for (const fs::path& path : ListFolder(nodes_[node].path)) AddChild(node, path, containers);
    return containers;
}

std::uint32_t Session::AddFile(const fs::path& path, std::optional<UINT> charset) {
    const auto [position, isNew] = fileOfPath_.try_emplace(Utf8Of(path), static_cast<std::uint32_t>(files_.size()));
    if (isNew) files_.push_back({.path = path});
    files_[position->second].charset = charset;
    return position->second;
}

std::vector<std::uint32_t> Session::ListFiles(std::uint32_t node) {
    std::vector<std::uint32_t> files;
    ReadSettings(node);
    const std::optional<UINT> charset = nodes_[node].settings.charset;
    if (!nodes_[node].isFolder) {
        files.push_back(AddFile(nodes_[node].path, charset));
    } else if (nodes_[node].role != BookNode::Role::Location) {
        std::error_code error;
        for (const fs::path& path : ListFolder(nodes_[node].path))
            if (IsCardFileName(path) && !fs::is_directory(path, error)) files.push_back(AddFile(path, charset));
    }
    return files;
}

std::vector<std::uint32_t> Session::ListAllBooks() {
    std::vector<std::uint32_t> books;
    std::vector<std::uint32_t> waiting = ListBooks();
    std::reverse(waiting.begin(), waiting.end());
    while (!waiting.empty()) {
        const std::uint32_t node = waiting.back();
        waiting.pop_back();
        books.push_back(node);
        const std::vector<std::uint32_t> containers = ListContainers(node);
        waiting.insert(waiting.end(), containers.rbegin(), containers.rend());
    }
    return books;
}

void Session::ReadSettings(std::uint32_t node) {
    BookSettings settings;
    for (std::uint32_t holder = node; nodes_[holder].role != BookNode::Role::Location; holder = nodes_[holder].parent)
        settings.Inherit(ReadBookSettings(SettingsFileOf(nodes_[holder].path, nodes_[holder].isFolder), diagnostics_));
    nodes_[node].settings = settings;
}

std::shared_ptr<const CardSet> Session::ReadFile(std::uint32_t file, CardSetContents contents) {
    CardFile& known = files_[file];
    if (!known.isOnDisk) return known.cards;
    const FileStatus status = ReadFileStatus(known.path).value_or(FileStatus());
    if (!known.cards || known.status.isFresh || status != known.status || known.charset != known.readCharset ||
        !known.contents.Includes(contents))
        ReadFromDisk(known, known.contents.And(contents), status);
    return known.cards;
}

// A file that changes while it is read has another status the next time.
void Session::ReadFromDisk(CardFile& file, CardSetContents contents, const FileStatus& status) {
    class Messages final : public MessageReceiver {
      public:
        Messages(Diagnostics& diagnostics, const fs::path& path) : diagnostics_(diagnostics), path_(path) {}
        void Report(size_t line, std::string_view what, std::string_view advice) override {
            diagnostics_.Report(path_, line, what, advice);
        }

      private:
        Diagnostics& diagnostics_;
        const fs::path& path_;
    };

    file.status = status;
    file.contents = contents;
    file.readCharset = file.charset;
    file.cards = NoCards();
    Messages messages(diagnostics_, file.path);
    try {
        CardSetBuilder builder(contents, status.size, messages);
        const std::optional<UINT> guessed = ReadCardFile(file.path, file.charset, builder);
        file.cards = builder.Finish(guessed);
    } catch (const std::length_error&) {
        messages.Report(0, "file is too large", "split it");
    }
}

std::uint32_t Session::SetCategoryGroups(std::uint32_t node, std::shared_ptr<const CardSet> groups) {
    const auto next = static_cast<std::uint32_t>(files_.size());
    const auto [position, isNew] = categoryGroupsOfNode_.try_emplace(node, next);
    if (isNew) files_.push_back({.path = nodes_[node].path, .isOnDisk = false});
    files_[position->second].cards = std::move(groups);
    return position->second;
}

std::optional<CardReference> Session::FindCard(const EntryId& id) const {
    if (id.file >= files_.size() || !files_[id.file].cards) return std::nullopt;
    const std::shared_ptr<const CardSet>& set = files_[id.file].cards;
    const std::span<const Card> cards = set->Cards();
    const bool isGroup = id.kind == EntryId::Kind::Group;
    const auto isMeant = [&](const Card& card) {
        return card.isGroup == isGroup && IdentityOf(*set, card) == id.identity;
    };
    if (id.card < cards.size() && isMeant(cards[id.card])) return CardReference{set, id.file, id.card};
    const auto found = std::find_if(cards.begin(), cards.end(), isMeant);
    if (found == cards.end()) return std::nullopt;
    return CardReference{set, id.file, static_cast<std::uint32_t>(found - cards.begin())};
}
