// The resource is a block with blocks in it, each beginning at a multiple of 4 bytes: 16-bit values for its length, the
// length of its value and the value's type, its name in UTF-16, its value, and the blocks inside.
#include "developer/version_block.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "client/record_text.h"
#include "text/utf16.h"

namespace {

// Throws std::out_of_range when the bytes end too early.
template <typename Value>
Value ReadAt(std::string_view bytes, size_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(Value)) throw std::out_of_range("the block ends");
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof(value));
    return value;
}

size_t Aligned(size_t offset) {
    return (offset + 3) / 4 * 4;
}

// Up to its NUL or the end of the bytes.
std::basic_string<WCHAR> ReadText(std::string_view bytes) {
    std::basic_string<WCHAR> text;
    for (; bytes.size() >= sizeof(uint16_t); bytes.remove_prefix(sizeof(uint16_t))) {
        const auto unit = ReadAt<uint16_t>(bytes, 0);
        if (unit == 0) break;
        text += static_cast<WCHAR>(unit);
    }
    return text;
}

struct Block {
    std::string name;
    std::string_view value;
    std::string_view inside;
};

// Takes it from the front of the blocks.
Block TakeBlock(std::string_view& blocks) {
    constexpr size_t headerSize = 3 * sizeof(uint16_t);
    constexpr uint16_t textType = 1;  // the length of its value is in UTF-16 units, else in bytes
    const size_t size = ReadAt<uint16_t>(blocks, 0);
    if (size < headerSize || size > blocks.size()) throw std::out_of_range("the block ends");
    const std::string_view bytes = blocks.substr(0, size);
    const auto name = ReadText(bytes.substr(headerSize));
    const size_t valueOffset = std::min(Aligned(headerSize + (name.size() + 1) * sizeof(uint16_t)), size);
    const size_t unitSize = ReadAt<uint16_t>(bytes, 4) == textType ? sizeof(uint16_t) : 1;
    const size_t valueSize = std::min(ReadAt<uint16_t>(bytes, 2) * unitSize, size - valueOffset);
    blocks.remove_prefix(std::min(Aligned(size), blocks.size()));
    return {Utf8FromUtf16(name), bytes.substr(valueOffset, valueSize),
            bytes.substr(std::min(Aligned(valueOffset + valueSize), size))};
}

std::string VersionText(std::string_view value, size_t offset) {
    const auto high = ReadAt<uint32_t>(value, offset);
    const auto low = ReadAt<uint32_t>(value, offset + sizeof(uint32_t));
    return std::to_string(high >> 16) + "." + std::to_string(high & 0xFFFF) + "." + std::to_string(low >> 16) + "." +
           std::to_string(low & 0xFFFF);
}

}  // namespace

std::optional<VersionBlock> ReadVersionBlock(std::string_view bytes) try {
    constexpr uint32_t fixedSignature = 0xFEEF04BD;
    constexpr size_t fileVersionOffset = 8;
    constexpr size_t productVersionOffset = 16;
    Block root = TakeBlock(bytes);
    if (root.name != "VS_VERSION_INFO" || ReadAt<uint32_t>(root.value, 0) != fixedSignature) return std::nullopt;
    VersionBlock version = {
        VersionText(root.value, fileVersionOffset), VersionText(root.value, productVersionOffset), {}};
    while (!root.inside.empty()) {
        Block kind = TakeBlock(root.inside);
        while (kind.name == "StringFileInfo" && !kind.inside.empty()) {
            Block language = TakeBlock(kind.inside);
            while (!language.inside.empty()) {
                const Block text = TakeBlock(language.inside);
                version.texts.emplace_back(text.name, Utf8FromUtf16(ReadText(text.value)));
            }
        }
    }
    return version;
} catch (const std::out_of_range&) {
    return std::nullopt;
}
