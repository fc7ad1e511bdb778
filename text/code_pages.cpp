// Conversions by way of UTF-16, with the system's tables.
#include "text/code_pages.h"

#include <algorithm>
#include <stdexcept>

#include "text/ascii.h"
#include "text/utf16.h"

namespace {

// Of the UTF-8 character that a text begins with; 0 for bytes that are none.
size_t CharacterLength(std::string_view text) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    if (first < 0x80) return 1;
    const size_t length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
    if (length == 0 || text.size() < length) return 0;
    // The second byte has the tighter limits: no overlong forms, no surrogates, nothing above U+10FFFF.
    const unsigned low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < low || byte(1) > high) return 0;
    for (size_t i = 2; i < length; ++i)
        if (byte(i) < 0x80 || byte(i) > 0xBF) return 0;
    return length;
}

// The escape sequences of ISO-2022-JP switch between ASCII and two-byte codes that are those of EUC-JP without the high
// bits. The system converts EUC-JP.
std::string EucFromIso2022(std::string_view bytes) {
    std::string euc;
    bool twoBytes = false;
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\x1B' && i + 2 < bytes.size()) {
            twoBytes = bytes[i + 1] == '$';
            i += 2;
        } else if (twoBytes && static_cast<unsigned char>(bytes[i]) > ' ') {
            euc.push_back(static_cast<char>(bytes[i] | 0x80));
        } else {
            euc.push_back(bytes[i]);
        }
    }
    return euc;
}

bool ConvertToUtf8(std::string_view bytes, UINT codePage, DWORD flags, std::string& utf8) {
    if (codePage == codePageIso2022Jp)
        return AppendConverted(EucFromIso2022(bytes), codePageEucJp, flags, CP_UTF8, utf8);
    return AppendConverted(bytes, codePage, flags, CP_UTF8, utf8);
}

}  // namespace

void AppendRest(std::istream& stream, std::string& bytes) {
    size_t piece = size_t{64} * 1024;
    while (stream) {
        const size_t begin = bytes.size();
        if (begin > longestConversion) throw std::length_error("text too long to convert");
        bytes.resize(begin + piece);
        stream.read(bytes.data() + begin, static_cast<std::streamsize>(piece));
        bytes.resize(begin + static_cast<size_t>(stream.gcount()));
        piece = bytes.size();
    }
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const size_t length = CharacterLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

bool AppendAsUtf8(std::string_view bytes, UINT codePage, std::string& utf8) {
    if (IsAscii(bytes) && codePage != codePageIso2022Jp) {
        utf8.append(bytes);
        return true;
    }
    if (codePage != CP_UTF8) return ConvertToUtf8(bytes, codePage, MB_ERR_INVALID_CHARS, utf8);
    if (!IsUtf8(bytes)) return false;
    utf8.append(bytes);
    return true;
}

void AppendRepaired(std::string_view bytes, UINT codePage, std::string& utf8) {
    if (codePage != CP_UTF8 && ConvertToUtf8(bytes, codePage, 0, utf8)) return;
    while (!bytes.empty()) {
        const size_t length = CharacterLength(bytes);
        utf8.append(length == 0 ? std::string_view("\xEF\xBF\xBD") : bytes.substr(0, length));
        bytes.remove_prefix(std::max<size_t>(length, 1));
    }
}

std::optional<std::string> Utf8FromUtf16Bytes(std::string_view bytes) {
    if (bytes.size() < 2) return std::nullopt;
    const bool marked = bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE");
    if (!marked && (bytes[0] == '\0') == (bytes[1] == '\0')) return std::nullopt;
    const bool bigEndian = bytes[0] == '\0' || bytes[0] == '\xFE';
    if (marked) bytes.remove_prefix(2);
    const size_t units = bytes.size() / 2;
    Utf16String wide(units, WCHAR());
    for (size_t i = 0; i < units; ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        wide[i] = static_cast<WCHAR>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return Utf8FromUtf16(wide);
}

std::string_view WithoutUtf8Mark(std::string_view text) {
    if (text.starts_with(utf8Mark)) text.remove_prefix(utf8Mark.size());
    return text;
}

void AppendInActiveCodePage(std::string_view utf8, std::string& text) {
    static const bool activeIsUtf8 = GetACP() == CP_UTF8;
    if (activeIsUtf8 || IsAscii(utf8))
        text.append(utf8);
    else if (!AppendConverted(utf8, CP_UTF8, 0, CP_ACP, text))
        text.append(utf8.size(), '?');
}

std::string InActiveCodePage(std::string_view utf8) {
    std::string text;
    AppendInActiveCodePage(utf8, text);
    return text;
}

std::string FromActiveCodePage(std::string_view text) {
    std::string utf8;
    if (!AppendAsUtf8(text, GetACP(), utf8)) AppendRepaired(text, GetACP(), utf8);
    return utf8;
}
