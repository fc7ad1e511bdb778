// Digits are written small, and read in any case.
#include "text/byte_escapes.h"

#include "text/ascii.h"
#include "text/code_pages.h"

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const char lower = ToLowerAscii(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace

int HexPair(std::string_view text) {
    if (text.size() < 2 || HexValue(text[0]) < 0 || HexValue(text[1]) < 0) return -1;
    return HexValue(text[0]) * 16 + HexValue(text[1]);
}

void AppendByteEscape(unsigned char byte, std::string& text) {
    text.push_back('\\');
    text.push_back(hexDigits[byte / 16]);
    text.push_back(hexDigits[byte % 16]);
}

std::string WithLetters(std::string_view escaped) {
    std::string text;
    for (size_t i = 0; i < escaped.size(); ++i) {
        const int byte = escaped[i] == '\\' ? HexPair(escaped.substr(i + 1)) : -1;
        text.push_back(byte >= 0x80 ? static_cast<char>(byte) : escaped[i]);
        if (byte >= 0x80) i += 2;
    }
    return IsUtf8(text) ? text : std::string(escaped);
}
