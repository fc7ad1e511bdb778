// The layout: 4 flag bytes of 0, the provider's own 16 bytes, the session, then the fields in their order.
#include "session/entry_id.h"

#include <cstring>

namespace {

constexpr std::array<BYTE, 20> prefix = {0,    0,    0,    0,    0x6B, 0x3E, 0x94, 0xD1, 0x58, 0xF2,
                                         0x4C, 0x07, 0xA5, 0x1D, 0x90, 0xC8, 0x2F, 0x76, 0xE3, 0xBA};

// The caller's bytes need not be aligned.
template <typename Bytes, typename Visit>
void ForEachField(Bytes* bytes, std::uint64_t& session, EntryId& id, Visit visit) {
    Bytes* at = bytes + prefix.size();
    const auto field = [&](auto& value) {
        visit(at, value);
        at += sizeof value;
    };
    field(session);
    field(id.kind);
    field(id.node);
    field(id.file);
    field(id.card);
    field(id.faxNumber);
    field(id.edition);
    field(id.identity);
}

static_assert(entryIdSize ==
              prefix.size() + sizeof(std::uint64_t) + size_t{6} * sizeof(std::uint32_t) + sizeof(std::uint64_t));

}  // namespace

EntryIdBytes EncodeEntryId(const EntryId& id, std::uint64_t session) {
    EntryIdBytes bytes;
    std::memcpy(bytes.data(), prefix.data(), prefix.size());
    EntryId copy = id;
    ForEachField(bytes.data(), session, copy,
                 [](BYTE* place, const auto& value) { std::memcpy(place, &value, sizeof value); });
    return bytes;
}

std::optional<EntryId> DecodeEntryId(const BYTE* bytes, size_t size, std::uint64_t session) {
    if (bytes == nullptr || size != entryIdSize || std::memcmp(bytes, prefix.data(), prefix.size()) != 0)
        return std::nullopt;
    EntryId id{};
    std::uint64_t madeBy = 0;
    ForEachField(bytes, madeBy, id, [](const BYTE* place, auto& value) { std::memcpy(&value, place, sizeof value); });
    if (madeBy != session || id.kind < EntryId::Kind::Container || id.kind > EntryId::Kind::Group) return std::nullopt;
    return id;
}
