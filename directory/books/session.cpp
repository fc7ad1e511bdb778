// Listing folders and reading card files, when they are asked for.
#include "books/session.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <stdexcept>

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

bool IsCardFileName(const fs::path& path) {
    return EqualsIgnoringCase(Utf8Of(path.extension()), ".vcf");
}

std::string KeyOf(std::uint32_t owner, const fs::path& path) {
    return std::to_string(owner) + '/' + Utf8Of(path);
}

const std::shared_ptr<const CardSet>& NoCards() {
    static const std::shared_ptr<const CardSet> none = std::make_shared<CardSet>();
    return none;
}

}  // namespace

std::uint64_t IdentityOf(const CardSet& cards, const Card& card) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char* text = cards.Text(card.uid != 0 ? card.uid : card.name); *text != '\0'; ++text)
        hash = (hash ^ static_cast<unsigned char>(*text)) * 0x100000001B3U;
    return hash;
}

Session::Session(const std::vector<fs::path>& locations) : number_(NewSessionNumber()) {
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

std::uint32_t Session::AddFile(const fs::path& path) {
    const auto [position, isNew] = fileOfPath_.try_emplace(Utf8Of(path), static_cast<std::uint32_t>(files_.size()));
    if (isNew) files_.push_back({path, FileStatus(), nullptr});
    return position->second;
}

std::vector<std::uint32_t> Session::ListFiles(std::uint32_t node) {
    std::vector<std::uint32_t> files;
    if (!nodes_[node].isFolder) {
        files.push_back(AddFile(nodes_[node].path));
    } else if (nodes_[node].role != BookNode::Role::Location) {
        std::error_code error;
        for (const fs::path& path : ListFolder(nodes_[node].path))
            if (IsCardFileName(path) && !fs::is_directory(path, error)) files.push_back(AddFile(path));
    }
    return files;
}

std::vector<std::uint32_t> Session::ListAllFiles() {
    std::vector<std::uint32_t> files;
    std::vector<std::uint32_t> waiting = ListBooks();
    std::reverse(waiting.begin(), waiting.end());
    while (!waiting.empty()) {
        const std::uint32_t node = waiting.back();
        waiting.pop_back();
        for (const std::uint32_t file : ListFiles(node)) files.push_back(file);
        const std::vector<std::uint32_t> containers = ListContainers(node);
        waiting.insert(waiting.end(), containers.rbegin(), containers.rend());
    }
    return files;
}

ContentsStyle Session::ReadStyle(std::uint32_t node) {
    BookNode& asked = nodes_[node];
    asked.style = ContentsStyle::Plain;
    for (std::uint32_t holder = node; nodes_[holder].role != BookNode::Role::Location; holder = nodes_[holder].parent) {
        const BookSettings settings =
            ReadBookSettings(SettingsFileOf(nodes_[holder].path, nodes_[holder].isFolder), diagnostics_);
        if (settings.style) {
            asked.style = *settings.style;
            break;
        }
    }
    return asked.style;
}

std::shared_ptr<const CardSet> Session::ReadFile(std::uint32_t file, bool keepAddresses) {
    CardFile& known = files_[file];
    const std::optional<FileStatus> status = ReadFileStatus(known.path);
    if (known.cards && status == known.status && (known.cards->HasAddresses() || !keepAddresses)) return known.cards;
    // A file that changes while it is read has another status the next time.
    known.status = status.value_or(FileStatus());
    known.cards = NoCards();
    std::error_code error;
    std::ifstream text(known.path, std::ios::binary);
    if (!text || !fs::is_regular_file(known.path, error)) {
        diagnostics_.Report(known.path, 0, "file cannot be read", "check that it exists and that you may read it");
        return known.cards;
    }
    try {
        known.cards = CardSet::Read(known.path, text, known.status.size, keepAddresses, diagnostics_);
        if (text.bad()) diagnostics_.Report(known.path, 0, "file cannot be read to its end", "check the disk");
    } catch (const std::length_error&) {
        diagnostics_.Report(known.path, 0, "file is too large", "split it");
    }
    return known.cards;
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
