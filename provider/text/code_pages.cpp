// Conversions by way of UTF-16, with the system's tables.
#include "text/code_pages.h"

#include <array>
#include <memory>

#include "text/ascii.h"

namespace {

// UTF-16 of a short text on the stack, of a long one on the heap.
class Utf16 {
  public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the short text is written before it is read
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
    if (length > longestConversion) throw std::length_error("text too long to convert");
    return static_cast<int>(length);
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

// No code page turns a byte into more than one UTF-16 unit, so the number of bytes is room enough. False, with nothing
// appended, when the system cannot convert, or with MB_ERR_INVALID_CHARS when the bytes are no text of the code page.
bool Convert(std::string_view bytes, UINT from, DWORD flags, UINT to, std::string& text) {
    if (bytes.empty()) return true;
    const int length = ConversionLength(bytes.size());
    Utf16 wide(bytes.size());
    const int units = MultiByteToWideChar(from, flags, bytes.data(), length, wide.Get(), length);
    if (units <= 0) return false;
    const int needed = WideCharToMultiByte(to, 0, wide.Get(), units, nullptr, 0, nullptr, nullptr);
    if (needed <= 0) return false;
    const size_t start = text.size();
    text.resize(start + static_cast<size_t>(needed));
    WideCharToMultiByte(to, 0, wide.Get(), units, text.data() + start, needed, nullptr, nullptr);
    return true;
}

bool ConvertToUtf8(std::string_view bytes, UINT codePage, DWORD flags, std::string& utf8) {
    if (codePage == codePageIso2022Jp) return Convert(EucFromIso2022(bytes), codePageEucJp, flags, CP_UTF8, utf8);
    return Convert(bytes, codePage, flags, CP_UTF8, utf8);
}

}  // namespace

void AppendRest(std::istream& stream, std::string& bytes) {
    size_t piece = size_t{64} * 1024;
    while (stream) {
        const size_t begin = bytes.size();
        ConversionLength(begin);
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
    else if (!Convert(utf8, CP_UTF8, 0, CP_ACP, text))
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
