// Listing folders and reading card files, when they are asked for.
#include "session/session.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <stdexcept>

#include "cards/card_identity.h"
#include "reading_stop.h"
#include "sources/files/card_files.h"
#include "text/ascii.h"
#include "text/code_pages.h"
#include "unread.h"

namespace fs = std::filesystem;

namespace {

// Folders that are linked to each other have more paths than anybody could list. A folder that several address books
// share is listed in each.
constexpr size_t mostFurtherPlaces = 256;
constexpr size_t mostFurtherPlacesPerFolder = 4;

// Different in every session of every process, so that identifiers kept from another one are recognised.
std::uint64_t NewSessionNumber() {
    static std::atomic<std::uint64_t> count = 0;
    const auto now = static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
    return now * 0x9E3779B97F4A7C15U + ++count;
}

// A folder is another thing than a file that had its name before.
std::string KeyOf(std::uint32_t parent, bool isFolder, const fs::path& path) {
    return std::to_string(parent) + (isFolder ? '/' : ':') + Utf8Of(path);
}

const std::shared_ptr<const CardSet>& NoCards() {
    static const std::shared_ptr<const CardSet> none = std::make_shared<CardSet>();
    return none;
}

}  // namespace

Session::Session(const std::vector<fs::path>& locations, const VOKMessageReceiver& messages)
    : number_(NewSessionNumber()), diagnostics_(messages) {
    for (const fs::path& location : locations)
        AddNode(location, BookNode::Role::Location, false, static_cast<std::uint32_t>(nodes_.size()), FileStatus());
    locationCount_ = static_cast<std::uint32_t>(nodes_.size());
}

std::uint32_t Session::AddNode(const fs::path& path, BookNode::Role role, bool isFolder, std::uint32_t parent,
                               const FileStatus& identity) {
    const auto [position, isNew] =
        nodeOfPath_.try_emplace(KeyOf(parent, isFolder, path), static_cast<std::uint32_t>(nodes_.size()));
    if (isNew) {
        const fs::path name = isFolder ? path.filename() : path.stem();
        const std::uint32_t service = role == BookNode::Role::Location ? parent : nodes_[parent].service;
        nodes_.push_back({path, InActiveCodePage(Utf8Of(name)), role, isFolder, parent, service, identity,
                          SettingsFileOf(path, isFolder)});
    }
    nodes_[position->second].identity = identity;
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
    if (error) ReportUnreadable(folder, error);
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

bool Session::IsInTooManyPlaces(std::uint32_t node, const fs::path& path, const FileStatus& folder) {
    if (nodeOfPath_.contains(KeyOf(node, true, path))) return false;
    const auto [place, isFirst] = firstPlaces_.try_emplace({folder.volume, folder.index}, path);
    if (isFirst) return false;
    // A folder that was renamed is where it is now.
    const std::optional<FileStatus> first = ReadFileStatus(place->second);
    if (!first || !first->IsSameFileAs(folder)) {
        place->second = path;
        return false;
    }
    if (furtherPlaces_ >= mostFurtherPlaces + mostFurtherPlacesPerFolder * firstPlaces_.size()) return true;
    ++furtherPlaces_;
    return false;
}

// Folders that are linked to each other are left out in many places, too.
void Session::ReportLeftOut(const fs::path& link, std::string_view why) {
    constexpr size_t mostReported = 100;
    constexpr std::string_view advice = "it was left out here; the folder is listed elsewhere";
    if (linksLeftOut_.size() < mostReported && linksLeftOut_.insert(link).second)
        diagnostics_.Report(link, 0, why, advice);
    else if (!linksLeftOut_.contains(link))
        diagnostics_.Report(nodes_[0].path, 0, "more links lead back or show folders in too many places",
                            "they were left out without a further word; remove links that are not needed");
}

void Session::AddChild(std::uint32_t node, const fs::path& path, std::vector<std::uint32_t>& children) {
    RequireNotStopped();
    const bool inLocation = nodes_[node].role == BookNode::Role::Location;
    const BookNode::Role role = inLocation ? BookNode::Role::Book : BookNode::Role::Container;
    std::error_code error;
    const std::optional<FileStatus> status = ReadFileStatus(path, error);
    if (status && status->kind == FileStatus::Kind::Folder) {
        if (LeadsBack(node, *status))
            ReportLeftOut(path, "link leads back to a folder that it lies in");
        else if (IsInTooManyPlaces(node, path, *status))
            ReportLeftOut(path, "links show folders in too many places");
        else
            children.push_back(AddNode(path, role, true, node, *status));
    } else if (IsCardFileName(path)) {
        // Whether it can be read is said when it is.
        if (inLocation) children.push_back(AddNode(path, role, false, node, FileStatus()));
    } else if (!status && !IsNothingThere(path)) {
        ReportUnreadable(path, error);
    }
}

void Session::CountUnreadHere() {
    ++unreadCount_;
    CountUnread();
}

void Session::ReportUnread(const fs::path& path, std::string_view what, std::string_view advice) {
    CountUnreadHere();
    diagnostics_.Report(path, {.what = what, .advice = advice, .names = {}, .isIncomplete = true});
}

void Session::ReportUnreadable(const fs::path& path, const std::error_code& error) {
    CountUnreadHere();
    diagnostics_.Report(path,
                        {.what = "folder cannot be read: {}",
                         .advice = "check that it is there, that you may read it and that its path is not too long",
                         .names = {FromActiveCodePage(error.message())},
                         .isIncomplete = true});
}

std::vector<std::uint32_t> Session::ListBooks() {
    std::vector<std::uint32_t> books;
    for (std::uint32_t location = 0; location < locationCount_; ++location) {
        BookNode& node = nodes_[location];
        std::error_code error;
        const std::optional<FileStatus> status = ReadFileStatus(node.path, error);
        node.isFolder = status && status->kind == FileStatus::Kind::Folder;
        node.identity = status.value_or(FileStatus());
        if (node.path.empty())
            ReportUnread("contacts", "no contacts folder is known", "name one in FAXBOOK_CONTACTS");
        else if (node.isFolder)
            for (const fs::path& path : ListFolder(node.path)) AddChild(location, path, books);
        else if (status && IsCardFileName(node.path))
            AddChild(location, node.path, books);
        else if (status)
            ReportUnread(node.path, "neither a folder nor an address file",
                         "name another in FAXBOOK_CONTACTS or in the profile");
        else if (IsNothingThere(node.path))
            ReportUnread(node.path, "no such folder or file",
                         "create it, or name another in FAXBOOK_CONTACTS or in the profile");
        else
            ReportUnreadable(node.path, error);
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

std::vector<std::uint32_t> Session::ListFiles(std::uint32_t node, const BookSettings& settings) {
    std::vector<std::uint32_t> files;
    if (!nodes_[node].isFolder) {
        files.push_back(AddFile(nodes_[node].path, settings.charset));
    } else if (nodes_[node].role != BookNode::Role::Location) {
        std::error_code error;
        for (const fs::path& path : ListFolder(nodes_[node].path))
            if (IsCardFileName(path) && !fs::is_directory(path, error))
                files.push_back(AddFile(path, settings.charset));
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

const BookSettings& Session::ReadSettings(std::uint32_t node) {
    BookSettings settings;
    for (std::uint32_t holder = node; nodes_[holder].role != BookNode::Role::Location; holder = nodes_[holder].parent)
        if (const std::optional<BookSettings>& own = ReadOwnSettings(holder))
            settings.Inherit(*own);
        else
            CountUnreadHere();
    return nodes_[node].settings = settings;
}

// The file is read once, and again when it has changed or could not be read: all that lies below its folder asks for
// it.
const std::optional<BookSettings>& Session::ReadOwnSettings(std::uint32_t node) {
    BookNode& owner = nodes_[node];
    const FileStatus known = ReadFileStatus(owner.settingsFile).value_or(FileStatus());
    if (owner.ownSettings && owner.settingsStatus == known && !known.isFresh) return owner.ownSettings;
    owner.ownSettings = ReadBookSettings(owner.settingsFile, diagnostics_);
    owner.settingsStatus = known;
    return owner.ownSettings;
}

std::shared_ptr<const CardSet> Session::ReadFile(std::uint32_t file, CardSetContents contents) {
    RequireNotStopped();
    CardFile& known = files_[file];
    if (!known.categoriesOf) {
        const FileStatus status = ReadFileStatus(known.path).value_or(FileStatus());
        const bool isRead = known.isTooLarge || (known.cards && known.isComplete);
        if (!isRead || known.status.isFresh || status != known.status || known.charset != known.readCharset ||
            !known.contents.Includes(contents))
            ReadFromDisk(known, known.contents.And(contents), status);
        else if (known.isTooLarge)
            CountUnreadHere();
    }
    return known.cards ? known.cards : NoCards();
}

void Session::ForgetFile(std::uint32_t file) {
    files_[file].cards = nullptr;
    files_[file].isComplete = false;
    ReportNoMemory(files_[file].path);
}

void Session::ReportNoMemory(const fs::path& path) {
    ReportUnread(path, "there is not enough memory for this file", "close other programs, or split the file");
}

// A file that changes while it is read has another status the next time.
void Session::ReadFromDisk(CardFile& file, CardSetContents contents, const FileStatus& status) {
    class Messages final : public MessageReceiver {
      public:
        Messages(Diagnostics& diagnostics, const fs::path& path) : diagnostics_(diagnostics), path_(path) {}
        void Take(const Message& message) override { diagnostics_.Report(path_, message); }

      private:
        Diagnostics& diagnostics_;
        const fs::path& path_;
    };

    file.status = status;
    file.contents = contents;
    file.readCharset = file.charset;
    file.isComplete = false;
    file.isTooLarge = false;
    Messages messages(diagnostics_, file.path);
    MessagePass pass(diagnostics_);
    try {
        // Before the new cards are read: there need not be memory for both.
        const std::optional<Edition> before = TakeEdition(file);
        CardSetBuilder builder(contents, std::min(status.size, mostFileBytes), messages);
        const CardFileReading reading = ReadCardFile(file.path, file.charset, builder);
        SetCards(file, builder.Finish(reading.guessedCharset), before);
        file.isComplete = reading.isComplete;
        if (!file.isComplete) CountUnreadHere();
    } catch (const std::length_error&) {
        file.isTooLarge = true;
        ReportUnread(file.path, "file is too large", "split it");
    } catch (const std::bad_alloc&) {
        ReportNoMemory(file.path);
    }
    pass.Finish();
}

std::optional<Session::Edition> Session::TakeEdition(CardFile& file) const {
    if (!file.cards) return std::nullopt;
    const std::shared_ptr<const CardSet> cards = std::move(file.cards);
    return Edition{cards->Edition(), HashCards(*cards, number_)};
}

void Session::SetCards(CardFile& file, std::shared_ptr<CardSet> cards, const std::optional<Edition>& before) {
    const bool areSame = before && before->hashes == HashCards(*cards, number_);
    cards->SetEdition(areSame ? before->number : ++editionCount_);
    file.cards = std::move(cards);
}

std::uint32_t Session::SetCategoryGroups(std::uint32_t node, std::shared_ptr<CardSet> groups) {
    const auto next = static_cast<std::uint32_t>(files_.size());
    const auto [position, isNew] = categoryGroupsOfNode_.try_emplace(node, next);
    if (isNew) files_.push_back({.path = nodes_[node].path, .categoriesOf = node});
    CardFile& file = files_[position->second];
    const std::optional<Edition> before = TakeEdition(file);
    SetCards(file, std::move(groups), before);
    return position->second;
}

std::optional<std::uint32_t> Session::CategoryGroupsOf(std::uint32_t node) const {
    const auto found = categoryGroupsOfNode_.find(node);
    if (found == categoryGroupsOfNode_.end()) return std::nullopt;
    return found->second;
}

std::optional<FoundEntry> Session::FindEntry(const EntryId& id) const {
    if (id.file >= files_.size() || !files_[id.file].cards) return std::nullopt;
    const std::shared_ptr<const CardSet>& set = files_[id.file].cards;
    const bool isFaxEntry = id.kind == EntryId::Kind::FaxEntry;
    const auto found = [&](std::uint32_t card, std::uint32_t faxNumber) -> std::optional<FoundEntry> {
        EntryId now = id;
        now.card = card;
        now.faxNumber = faxNumber;
        now.edition = set->Edition();
        const bool isThere = card < set->Cards().size() &&
                             set->Cards()[card].isGroup == (id.kind == EntryId::Kind::Group) &&
                             (!isFaxEntry || faxNumber < set->Cards()[card].faxNumberCount);
        if (!isThere) return std::nullopt;
        return FoundEntry{now, {set, id.file, card}};
    };
    if (id.edition == set->Edition()) return found(id.card, id.faxNumber);
    const std::span<const CardEntry> entries = set->FindIdentity(id.identity, number_);
    if (entries.size() == 1 && entries[0].faxNumber.has_value() == isFaxEntry)
        return found(entries[0].card, entries[0].faxNumber.value_or(0));
    return std::nullopt;
}

std::optional<FoundEntry> Session::FindEntryOrReport(const EntryId& id, std::string_view name) {
    std::optional<FoundEntry> found = FindEntry(id);
    if (found || id.file >= files_.size() || !files_[id.file].cards) return found;
    const std::string_view kind = id.kind == EntryId::Kind::Group      ? "group"
                                  : id.kind == EntryId::Kind::FaxEntry ? "fax number"
                                                                       : "person";
    const std::string who =
        name.empty() ? "of card " + std::to_string(id.card + 1) : "\"" + FromActiveCodePage(name) + "\"";
    const size_t count = files_[id.file].cards->FindIdentity(id.identity, number_).size();
    if (count == 0)
        diagnostics_.Report(files_[id.file].path, 0,
                            "the {} {}, as it was listed, is not there any more, or was changed",
                            "nobody is meant by it now; list the address book again and choose anew", {kind, who});
    else
        diagnostics_.Report(files_[id.file].path, 0, "the {} {}, as it was listed, could now be any of {}",
                            "nobody is meant by it now; give each card an identifier (UID) of its own or remove what "
                            "is there twice, then list the address book again",
                            {kind, who, std::to_string(count)});
    return found;
}

// Of the same edition are most: there the position decides.
bool Session::AreSame(const EntryId& a, const EntryId& b) {
    if (a.kind != b.kind || a.node != b.node || a.file != b.file || a.identity != b.identity) return false;
    return a.edition != b.edition || (a.card == b.card && a.faxNumber == b.faxNumber);
}
