// Conversions by way of UTF-16, with the system's tables.
#include "text/code_pages.h"

#include <array>
#include <climits>
#include <memory>

#include "text/ascii.h"

namespace {

struct CharsetName {
    std::string_view label;
    UINT codePage;
};

// ISO-8859-1 and US-ASCII are read as their superset 1252: exporters write one and mean the other.
constexpr CharsetName charsetNames[] = {
    {"UTF-8", CP_UTF8},     {"UTF8", CP_UTF8},       {"US-ASCII", 1252},     {"ASCII", 1252},
    {"ISO-8859-1", 1252},   {"LATIN1", 1252},        {"WINDOWS-1252", 1252}, {"CP1252", 1252},
    {"WINDOWS-1250", 1250}, {"WINDOWS-1251", 1251},  {"WINDOWS-1253", 1253}, {"WINDOWS-1254", 1254},
    {"WINDOWS-1257", 1257}, {"SHIFT_JIS", 932},      {"SHIFT-JIS", 932},     {"SJIS", 932},
    {"WINDOWS-31J", 932},   {"CP932", 932},          {"GB2312", 936},        {"GBK", 936},
    {"EUC-KR", 949},        {"KS_C_5601-1987", 949}, {"BIG5", 950},
};

// UTF-16 of a short text on the stack, of a long one on the heap.
class Utf16 {
  public:
    explicit Utf16(size_t capacity) {
        if (capacity > small_.size()) large_ = std::make_unique<WCHAR[]>(capacity);
    }
    WCHAR* Get() { return large_ ? large_.get() : small_.data(); }

  private:
    std::array<WCHAR, 256> small_;
    std::unique_ptr<WCHAR[]> large_;
};

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

int ConversionLength(size_t length) {
    if (length > INT_MAX / 4) throw std::length_error("text too long to convert");
    return static_cast<int>(length);
}

// No code page turns a byte into more than one UTF-16 unit, so the number of bytes is room enough.
bool Convert(std::string_view bytes, UINT from, UINT to, std::string& text) {
    if (bytes.empty()) return true;
    const int length = ConversionLength(bytes.size());
    Utf16 wide(bytes.size());
    const int units = MultiByteToWideChar(from, 0, bytes.data(), length, wide.Get(), length);
    if (units <= 0) return false;
    const int needed = WideCharToMultiByte(to, 0, wide.Get(), units, nullptr, 0, nullptr, nullptr);
    if (needed <= 0) return false;
    const size_t start = text.size();
    text.resize(start + static_cast<size_t>(needed));
    WideCharToMultiByte(to, 0, wide.Get(), units, text.data() + start, needed, nullptr, nullptr);
    return true;
}

}  // namespace

std::optional<UINT> CodePageOfCharset(std::string_view label) {
    for (const CharsetName& name : charsetNames)
        if (EqualsIgnoringCase(name.label, label)) return name.codePage;
    return std::nullopt;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const size_t length = CharacterLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

void AppendRepairedUtf8(std::string_view bytes, std::string& utf8) {
    while (!bytes.empty()) {
        const size_t length = CharacterLength(bytes);
        utf8.append(length == 0 ? std::string_view("\xEF\xBF\xBD") : bytes.substr(0, length));
        bytes.remove_prefix(std::max<size_t>(length, 1));
    }
}

bool AppendAsUtf8(std::string_view bytes, UINT codePage, std::string& utf8) {
    if (IsAscii(bytes) || (codePage == CP_UTF8 && IsUtf8(bytes))) {
        utf8.append(bytes);
        return true;
    }
    return codePage != CP_UTF8 && Convert(bytes, codePage, CP_UTF8, utf8);
}

std::optional<std::string> Utf8FromUtf16(std::string_view bytes) {
    if (bytes.size() < 2) return std::nullopt;
    const bool marked = bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE");
    if (!marked && (bytes[0] == '\0') == (bytes[1] == '\0')) return std::nullopt;
    const bool bigEndian = bytes[0] == '\0' || bytes[0] == '\xFE';
    if (marked) bytes.remove_prefix(2);
    const size_t units = bytes.size() / 2;
    const auto wide = std::make_unique<WCHAR[]>(units + 1);
    for (size_t i = 0; i < units; ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        wide[i] = static_cast<WCHAR>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    const int length = ConversionLength(units);
    const int needed = WideCharToMultiByte(CP_UTF8, 0, wide.get(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(std::max(needed, 0)), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.get(), length, utf8.data(), needed, nullptr, nullptr);
    return utf8;
}

std::string_view WithoutUtf8Mark(std::string_view text) {
    if (text.starts_with(utf8Mark)) text.remove_prefix(utf8Mark.size());
    return text;
}

void AppendInActiveCodePage(std::string_view utf8, std::string& text) {
    static const bool activeIsUtf8 = GetACP() == CP_UTF8;
    if (activeIsUtf8 || IsAscii(utf8))
        text.append(utf8);
    else if (!Convert(utf8, CP_UTF8, CP_ACP, text))
        text.append(utf8.size(), '?');
}

std::string InActiveCodePage(std::string_view utf8) {
    std::string text;
    AppendInActiveCodePage(utf8, text);
    return text;
}

std::string FromActiveCodePage(std::string_view text) {
    std::string utf8;
    if (!AppendAsUtf8(text, GetACP(), utf8)) AppendAsUtf8(text, codePageWesternEuropean, utf8);
    return utf8;
}
