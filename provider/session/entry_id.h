// Entry identifiers: what a container, a person, a fax entry or a group is known by outside. They hold for one session,
// and their bytes mean nothing to anyone else.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <optional>

struct EntryId {
    enum class Kind : std::uint32_t { Container = 1, Person, FaxEntry, Group };

    Kind kind = Kind::Container;
    std::uint32_t node = 0;  // the container, or the one that lists the entry
    std::uint32_t file = 0;
    std::uint32_t card = 0;
    std::uint32_t faxNumber = 0;  // of a fax entry
    // Of the card or the fax number, and the edition of the file's cards in which it stands at the position above: the
    // file may have been read anew since.
    std::uint32_t edition = 0;
    std::uint64_t identity = 0;
};

inline constexpr size_t entryIdSize = 60;
using EntryIdBytes = std::array<BYTE, entryIdSize>;

EntryIdBytes EncodeEntryId(const EntryId& id, std::uint64_t session);
// Nothing for bytes that this session did not make; whether what they name exists is not looked at.
std::optional<EntryId> DecodeEntryId(const BYTE* bytes, size_t size, std::uint64_t session);
