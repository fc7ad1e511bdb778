// One session: the address books of a profile's services and the card files read so far. Every object that the
// provider hands out holds its session, so it lives as long as any of them.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "books/book_settings.h"
#include "books/entry_id.h"
#include "cards/card_set.h"
#include "cards/card_set_builder.h"
#include "diagnostics.h"
#include "platform/files.h"

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
    BookSettings settings = {};  // as last read
};

// One card of the session, held for as long as it is needed.
struct CardReference {
    std::shared_ptr<const CardSet> cards;
    std::uint32_t file;
    std::uint32_t card;

    const Card& Get() const { return cards->Cards()[card]; }
};

class Session {
  public:
    // One location for each service of the profile, in order. Nothing is read yet. Messages go to the sink, if any.
    explicit Session(const std::vector<std::filesystem::path>& locations, DiagnosticsSink* sink = nullptr);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    std::uint64_t Number() const { return number_; }
    Diagnostics& Messages() { return diagnostics_; }

    // Nodes are numbered in the order in which they are first seen and stay for the life of the session.
    const BookNode* FindNode(std::uint32_t node) const { return node < nodes_.size() ? &nodes_[node] : nullptr; }
    // Listings are read from the disk each time, sorted by name.
    std::vector<std::uint32_t> ListBooks();
    std::vector<std::uint32_t> ListContainers(std::uint32_t node);
    // Also reads the settings, by which the files are read.
    std::vector<std::uint32_t> ListFiles(std::uint32_t node);
    // Every address book of the profile and every container below it, depth first.
    std::vector<std::uint32_t> ListAllBooks();

    // The file's cards, read anew only when the file has changed. A file that cannot be read is reported and has none.
    std::shared_ptr<const CardSet> ReadFile(std::uint32_t file, CardSetContents contents = {});
    // Gives a node the groups of its categories, as a file that only the session has; replaces those given before.
    std::uint32_t SetCategoryGroups(std::uint32_t node, std::shared_ptr<const CardSet> groups);
    const std::filesystem::path& FilePath(std::uint32_t file) const { return files_[file].path; }
    size_t FileCount() const { return files_.size(); }

    // The card that an identifier names, as its file was last read; nothing when it is gone.
    std::optional<CardReference> FindCard(const EntryId& id) const;

  private:
    struct CardFile {
        std::filesystem::path path;
        FileStatus status = {};
        CardSetContents contents = {};
        std::optional<UINT> charset = {};      // of the settings
        std::optional<UINT> readCharset = {};  // the one that the cards were read with
        std::shared_ptr<const CardSet> cards = {};
        bool isOnDisk = true;
    };

    std::uint32_t AddNode(const std::filesystem::path& path, BookNode::Role role, bool isFolder, std::uint32_t parent,
                          const FileStatus& identity);
    void AddChild(std::uint32_t node, const std::filesystem::path& path, std::vector<std::uint32_t>& children);
    bool LeadsBack(std::uint32_t node, const FileStatus& folder) const;
    void ReadSettings(std::uint32_t node);
    std::uint32_t AddFile(const std::filesystem::path& path, std::optional<UINT> charset);
    void ReadFromDisk(CardFile& file, CardSetContents contents, const FileStatus& status);
    std::vector<std::filesystem::path> ListFolder(const std::filesystem::path& folder);

    std::uint64_t number_;
    Diagnostics diagnostics_;
    std::deque<BookNode> nodes_;
    std::unordered_map<std::string, std::uint32_t> nodeOfPath_;
    std::vector<CardFile> files_;
    std::unordered_map<std::string, std::uint32_t> fileOfPath_;
    std::unordered_map<std::uint32_t, std::uint32_t> categoryGroupsOfNode_;
    std::uint32_t locationCount_ = 0;
};
