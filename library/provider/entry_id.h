// EntryId: a provider's entry identifier, opaque bytes that open the entry again.
#pragma once

#include <cstring>
#include <string_view>

#include "class_library/memory_blocks.h"
#include "provider/property_values.h"

// The holder and its bytes belong to the memory blocks of the list that owns the entry.
struct EntryId {
    ULONG cb = 0;
    const BYTE* lpb = nullptr;  // null when cb is 0; of any alignment
};

// The bytes of an identifier, for comparing; empty for one that is absent.
inline std::string_view GetBytes(const EntryId* entryId) {
    if (entryId == nullptr || entryId->cb == 0) return {};
    return {reinterpret_cast<const char*>(entryId->lpb), entryId->cb};
}

// Sets the `entryId` of an entry or details object from one property value. A value with another tag than the expected
// one, PR_ENTRYID, changes nothing; a value without bytes gives an empty holder. Throws std::bad_alloc.
template <class Object>
void SetEntryId(Object& object, MemoryBlocks& blocks, const SPropValue* value, ULONG expectedTag) {
    if (value == nullptr || value->ulPropTag != expectedTag) return;
    EntryId* entryId = blocks.Create<EntryId>();
    const SBinary& source = value->Value.bin;
    if (source.cb != 0 && source.lpb != nullptr) {
        char* bytes = blocks.AllocateBytes(source.cb);
        std::memcpy(bytes, source.lpb, source.cb);
        *entryId = {source.cb, reinterpret_cast<const BYTE*>(bytes)};
    }
    object.entryId = entryId;
}
