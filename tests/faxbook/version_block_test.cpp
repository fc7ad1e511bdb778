// A version resource put together block by block.
#include "developer/version_block.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

std::string Value16(size_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

std::string Value32(uint32_t value) {
    return Value16(value & 0xFFFF) + Value16(value >> 16);
}

std::string Text(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) bytes += Value16(unit);
    return bytes + Value16(0);
}

std::string Aligned(std::string bytes) {
    bytes.resize((bytes.size() + 3) / 4 * 4);
    return bytes;
}

// Its length without the bytes that align what follows.
std::string Block(std::u16string_view name, const std::string& value, bool isText, const std::string& inside = {}) {
    const std::string header = Aligned("123456" + Text(name)).substr(6);
    const std::string bytes = inside.empty() ? header + value : Aligned("123456" + header + value).substr(6) + inside;
    return Value16(bytes.size() + 6) + Value16(isText ? value.size() / 2 : value.size()) + Value16(isText ? 1 : 0) +
           bytes;
}

std::string Sample() {
    const std::string numbers = Value32(0xFEEF04BD) + Value32(0x10000) + Value32(10 << 16 | 65) + Value32(7) +
                                Value32(10 << 16) + Value32(1 << 16) + std::string(28, '\0');
    const std::string texts = Aligned(Block(u"FileVersion", Text(u"10.65"), true)) +
                              Aligned(Block(u"CompanyName", Text(u"Größe & Co"), true)) + Block(u"Comments", {}, true);
    const std::string languages = Block(u"StringFileInfo", {}, true, Block(u"040904B0", {}, true, texts));
    const std::string translation = Block(u"Translation", Value32(0x04B00409), false);
    return Block(u"VS_VERSION_INFO", numbers, false, Aligned(languages) + Block(u"VarFileInfo", {}, true, translation));
}

}  // namespace

TEST(VersionBlockTest, NumbersAndTextsAreRead) {
    const auto version = ReadVersionBlock(Sample());
    ASSERT_TRUE(version);
    EXPECT_EQ(version->fileVersion, "10.65.0.7");
    EXPECT_EQ(version->productVersion, "10.0.1.0");
    const decltype(version->texts) texts = {{"FileVersion", "10.65"}, {"CompanyName", "Größe & Co"}, {"Comments", ""}};
    EXPECT_EQ(version->texts, texts);
}

TEST(VersionBlockTest, WhatIsDamagedIsReadWithinItsBytes) {
    const std::string whole = Sample();
    for (size_t size = 0; size < whole.size(); ++size) {
        // A copy of just these bytes, so that reading beyond them is seen.
        const std::vector<char> part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(ReadVersionBlock({part.data(), part.size()})) << size;
        for (const char other : {'\0', '\1', '\xFF'}) {
            std::vector<char> damaged(whole.begin(), whole.end());
            damaged[size] = other;
            const auto version = ReadVersionBlock({damaged.data(), damaged.size()});
            EXPECT_LE(version ? version->texts.size() : 0, whole.size() / 6) << size;
        }
    }
}
