// CString: an immutable 8-bit string that knows its length. Its bytes lie in the memory blocks of the list that owns
// it, after their length (32 bits, unaligned) and before a NUL. A CString is one pointer; an empty one costs no bytes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "class_library/memory_blocks.h"

class CString {
  public:
    CString() = default;

    // A copy of a NUL-terminated text in the blocks; null and empty give the empty string. Throws std::bad_alloc.
    CString(MemoryBlocks& blocks, const char* source)
        : CString(blocks, source != nullptr ? std::string_view(source) : std::string_view()) {}

    CString(MemoryBlocks& blocks, std::string_view source) {
        if (source.empty()) return;
        const uint32_t length = static_cast<uint32_t>(
            std::min<size_t>(source.size(), std::numeric_limits<uint32_t>::max() - sizeof length - 1));
        char* bytes = blocks.AllocateBytes(sizeof length + length + 1);
        std::memcpy(bytes, &length, sizeof length);
        text_ = bytes + sizeof length;
        std::memcpy(bytes + sizeof length, source.data(), length);
        bytes[sizeof length + length] = '\0';
    }

    bool IsEmpty() const { return text_ == nullptr; }

    // The bytes without the NUL, which stands right after them.
    std::string_view View() const {
        if (text_ == nullptr) return "";
        uint32_t length;
        std::memcpy(&length, text_ - sizeof length, sizeof length);
        return {text_, length};
    }

  private:
    const char* text_ = nullptr;
};
