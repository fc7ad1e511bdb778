// Nearly all texts have no control characters: they are looked at and left.
#include "text/control_characters.h"

#include "text/ascii.h"
#include "text/code_pages.h"

bool IsPlain(std::string_view text) {
    return !HasAny(text, [](char c) { return (static_cast<signed char>(c) < ' ') | (c == '\x7F'); });
}

size_t ControlLength(std::string_view utf8) {
    if (utf8.empty()) return 0;
    if (IsControl(utf8[0])) return 1;
    const auto byte = [&](size_t i) { return i < utf8.size() ? static_cast<unsigned char>(utf8[i]) : 0u; };
    if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0) return 2;
    const bool isSeparatorOrEmbedding = byte(1) == 0x80 && byte(2) >= 0xA8 && byte(2) <= 0xAE;
    const bool isIsolate = byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9;
    return byte(0) == 0xE2 && (isSeparatorOrEmbedding || isIsolate) ? 3 : 0;
}

bool HasControls(std::string_view utf8) {
    for (; !utf8.empty(); utf8.remove_prefix(1))
        if (ControlLength(utf8) != 0) return true;
    return false;
}

std::string WithoutControls(std::string_view text, char kept) {
    if (IsPlain(text)) return std::string(text);
    std::string repaired;
    if (!IsUtf8(text)) {
        AppendRepaired(text, CP_UTF8, repaired);
        text = repaired;
    }
    std::string shown;
    shown.reserve(text.size());
    const auto separates = [kept](char c) { return c == ' ' || c == kept; };
    bool isBlankDue = false;
    while (!text.empty()) {
        const size_t length = text[0] == kept ? 0 : ControlLength(text);
        if (length == 0) {
            if (isBlankDue && !shown.empty() && !separates(shown.back()) && !separates(text[0])) shown += ' ';
            shown += text[0];
        }
        isBlankDue = length > 0;
        text.remove_prefix(std::max<size_t>(length, 1));
    }
    return shown;
}
