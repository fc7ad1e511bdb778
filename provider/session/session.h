// One session: the address books of a profile's services and the card files read so far. Every object that the
// provider hands out holds its session, so it lives as long as any of them.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "cards/card_set.h"
#include "cards/card_set_builder.h"
#include "diagnostics.h"
#include "platform/system/files.h"
#include "session/entry_id.h"
#include "sources/files/book_settings.h"

inline constexpr std::string_view vcardServiceName = "VCARD";

// A folder or a card file: a service's location, an address book, or a container below one.
struct BookNode {
    enum class Role { Location, Book, Container };

    std::filesystem::path path;
    std::string name;  // in the active code page
    Role role;
    bool isFolder;
    std::uint32_t parent;   // of a location: itself
    std::uint32_t service;  // its position in the profile
    FileStatus identity;
    std::filesystem::path settingsFile;
    BookSettings settings = {};                    // as last read, with what it has from its parents
    std::optional<BookSettings> ownSettings = {};  // of the settings file when its status was this
    std::optional<FileStatus> settingsStatus = {};
};

// One card of the session, held for as long as it is needed.
struct CardReference {
    std::shared_ptr<const CardSet> cards;
    std::uint32_t file;
    std::uint32_t card;

    const Card& Get() const { return cards->Cards()[card]; }
};

// What an identifier names, where it stands now.
struct FoundEntry {
    EntryId id;
    CardReference card;
};

class Session {
  public:
    // One location for each service of the profile, in order. Nothing is read yet. Messages go to the receiver, if it
    // has a function.
    explicit Session(const std::vector<std::filesystem::path>& locations, const VOKMessageReceiver& messages = {});
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    std::uint64_t Number() const { return number_; }
    Diagnostics& Messages() { return diagnostics_; }

    // Nodes are numbered in the order in which they are first seen and stay for the life of the session.
    const BookNode* FindNode(std::uint32_t node) const { return node < nodes_.size() ? &nodes_[node] : nullptr; }
    // Listings are read from the disk each time, sorted by name.
    std::vector<std::uint32_t> ListBooks();
    std::vector<std::uint32_t> ListContainers(std::uint32_t node);
    // The card files of the node, which are read by these settings.
    std::vector<std::uint32_t> ListFiles(std::uint32_t node, const BookSettings& settings);
    // The node's settings as they are now, with what it has from its parents; until they are read again they are those
    // of the node.
    const BookSettings& ReadSettings(std::uint32_t node);
    // Every address book of the profile and every container below it, depth first.
    std::vector<std::uint32_t> ListAllBooks();

    // The file's cards, read anew only when the file has changed or could not be read to its end: another program may
    // have held it, or memory may have been missing. A file that cannot be read is reported and has none; one that is
    // too large for the memory that there is costs no other file anything.
    std::shared_ptr<const CardSet> ReadFile(std::uint32_t file, CardSetContents contents = {});
    // The groups of a node's categories are a file that only the session has. Setting them replaces those set before.
    std::uint32_t SetCategoryGroups(std::uint32_t node, std::shared_ptr<CardSet> groups);
    std::optional<std::uint32_t> CategoryGroupsOf(std::uint32_t node) const;
    // The node, if the file is one of category groups.
    std::optional<std::uint32_t> NodeOfCategoryGroups(std::uint32_t file) const { return files_[file].categoriesOf; }
    // False when some or all of the file could not be read.
    bool IsComplete(std::uint32_t file) const { return files_[file].isComplete; }
    // Gives up the cards of a file for whose rows there is no memory.
    void ForgetFile(std::uint32_t file);
    // How often something was asked for that could not be read; see unread.h.
    size_t UnreadCount() const { return unreadCount_; }
    const std::filesystem::path& FilePath(std::uint32_t file) const { return files_[file].path; }
    size_t FileCount() const { return files_.size(); }

    // What an identifier of a person, a fax entry or a group names in its file as that was last read. While the cards
    // are those among which the identifier was made, its position decides, else the one entry of its identity; where
    // there is none or more than one, nothing is meant.
    std::optional<FoundEntry> FindEntry(const EntryId& id) const;
    // The same, and reports that nothing is meant. `name` is the entry's, or empty.
    std::optional<FoundEntry> FindEntryOrReport(const EntryId& id, std::string_view name);
    // Whether two identifiers name the same.
    static bool AreSame(const EntryId& a, const EntryId& b);

  private:
    struct CardFile {
        std::filesystem::path path;
        FileStatus status = {};
        CardSetContents contents = {};
        std::optional<UINT> charset = {};           // of the settings
        std::optional<UINT> readCharset = {};       // the one that the cards were read with
        std::shared_ptr<const CardSet> cards = {};  // null when they could not be read
        bool isComplete = true;
        bool isTooLarge = false;                         // and need not be looked at again before it changes
        std::optional<std::uint32_t> categoriesOf = {};  // the node; only the session has the file
    };

    std::uint32_t AddNode(const std::filesystem::path& path, BookNode::Role role, bool isFolder, std::uint32_t parent,
                          const FileStatus& identity);
    void AddChild(std::uint32_t node, const std::filesystem::path& path, std::vector<std::uint32_t>& children);
    bool LeadsBack(std::uint32_t node, const FileStatus& folder) const;
    bool IsInTooManyPlaces(std::uint32_t node, const std::filesystem::path& path, const FileStatus& folder);
    void ReportLeftOut(const std::filesystem::path& link, std::string_view why);
    const std::optional<BookSettings>& ReadOwnSettings(std::uint32_t node);
    std::uint32_t AddFile(const std::filesystem::path& path, std::optional<UINT> charset);
    void ReadFromDisk(CardFile& file, CardSetContents contents, const FileStatus& status);
    // The edition goes on as long as the cards are the same.
    struct Edition {
        std::uint32_t number;
        std::vector<std::uint64_t> hashes;
    };
    // Of the cards that the file had until now, which are given up.
    std::optional<Edition> TakeEdition(CardFile& file) const;
    void SetCards(CardFile& file, std::shared_ptr<CardSet> cards, const std::optional<Edition>& before);
    void CountUnreadHere();
    std::vector<std::filesystem::path> ListFolder(const std::filesystem::path& folder);
    // These count what cannot be read, too.
    void ReportUnread(const std::filesystem::path& path, std::string_view what, std::string_view advice);
    void ReportNoMemory(const std::filesystem::path& path);
    void ReportUnreadable(const std::filesystem::path& path, const std::error_code& error);

    std::uint64_t number_;
    Diagnostics diagnostics_;
    std::deque<BookNode> nodes_;
    std::unordered_map<std::string, std::uint32_t> nodeOfPath_;
    // Links may show a folder in several places.
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::filesystem::path> firstPlaces_;  // by volume and index
    size_t furtherPlaces_ = 0;
    std::set<std::filesystem::path> linksLeftOut_;  // that were reported
    std::vector<CardFile> files_;
    std::unordered_map<std::string, std::uint32_t> fileOfPath_;
    std::unordered_map<std::uint32_t, std::uint32_t> categoryGroupsOfNode_;
    std::uint32_t editionCount_ = 0;
    size_t unreadCount_ = 0;
    std::uint32_t locationCount_ = 0;
};
