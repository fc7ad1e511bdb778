// The code page functions: the active code page, and conversion between code pages and UTF-16.
//
// Unlike Windows, a character that a code page lacks is never replaced by one that looks like it, only by the default
// character; and for broken UTF-8 Windows can give another number of replacement characters.
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

#include "code_page_tables.h"

namespace {

constexpr WCHAR replacementCharacter = 0xFFFD;

bool IsHighSurrogate(WCHAR unit) {
    return (unit & 0xFC00) == 0xD800;
}
bool IsLowSurrogate(WCHAR unit) {
    return (unit & 0xFC00) == 0xDC00;
}

bool DescribeCodePage(UINT number, CPINFO& info) {
    if (number != CP_UTF8) return CodePage::Describe(number, info);
    info = {.MaxCharSize = 4, .DefaultChar = {'?'}, .LeadByte = {}};
    return true;
}

// 65001 unless the environment variable HOST_CODE_PAGE names another.
struct ActiveCodePage {
    UINT number = CP_UTF8;
    bool isLeadByte[0x100] = {};

    ActiveCodePage() {
        CPINFO info = {};
        if (const char* text = std::getenv("HOST_CODE_PAGE"); text != nullptr && *text != '\0') {
            UINT wanted = 0;
            const char* end = text + std::strlen(text);
            if (std::from_chars(text, end, wanted).ptr == end && wanted != 0 && DescribeCodePage(wanted, info)) {
                number = wanted;
            } else {
                std::fprintf(stderr, "HOST_CODE_PAGE=%s is not a code page known here; %u (UTF-8) is used\n", text,
                             number);
            }
        }
        DescribeCodePage(number, info);
        ForEachLeadByte(info, [this](unsigned byte) { isLeadByte[byte] = true; });
    }
};

const ActiveCodePage& GetActiveCodePage() {
    static const ActiveCodePage page;
    return page;
}

// Where a conversion writes: a caller's buffer, or with a capacity of 0 nowhere, only counted.
template <class Unit>
class Output {
  public:
    Output(Unit* theUnits, int theCapacity) : units_(theUnits), capacity_(static_cast<size_t>(theCapacity)) {}

    void Put(Unit unit) {
        if (count_ < capacity_) units_[count_] = unit;
        ++count_;
    }

    // The number of units; 0 with the last error when the buffer is too small.
    int Finish() const {
        if (capacity_ == 0 || count_ <= capacity_) return static_cast<int>(count_);
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }

  private:
    Unit* units_;
    size_t capacity_;
    size_t count_ = 0;
};

struct Utf8Character {
    char32_t value;  // the replacement character for bytes that are no character
    bool isValid;
    size_t length;
};

// The first character of text that is not empty. Of bytes that are no character, those are taken together that could
// have begun one.
Utf8Character DecodeUtf8(std::string_view text) {
    const auto lead = static_cast<BYTE>(text[0]);
    if (lead < 0x80) return {lead, true, 1};
    if (lead < 0xC2 || lead > 0xF4) return {replacementCharacter, false, 1};
    const size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    // The second byte's range keeps out longer forms than needed, surrogates and what lies above U+10FFFF.
    BYTE low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    BYTE high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    char32_t value = lead & (0x7Fu >> length);
    for (size_t at = 1; at < length; ++at) {
        const BYTE byte = at < text.size() ? static_cast<BYTE>(text[at]) : BYTE{0};
        if (byte < low || byte > high) return {replacementCharacter, false, at};
        value = value << 6 | (byte & 0x3Fu);
        low = 0x80;
        high = 0xBF;
    }
    return {value, true, length};
}

void EncodeUtf8(char32_t value, Output<char>& output) {
    const auto put = [&output](char32_t byte) { output.Put(static_cast<char>(byte)); };
    if (value < 0x80) return put(value);
    if (value < 0x800) {
        put(0xC0 | value >> 6);
    } else if (value < 0x10000) {
        put(0xE0 | value >> 12);
        put(0x80 | (value >> 6 & 0x3F));
    } else {
        put(0xF0 | value >> 18);
        put(0x80 | (value >> 12 & 0x3F));
        put(0x80 | (value >> 6 & 0x3F));
    }
    put(0x80 | (value & 0x3F));
}

// False when bytes were no character.
bool Utf8ToWide(std::string_view text, Output<WCHAR>& output) {
    bool valid = true;
    while (!text.empty()) {
        const Utf8Character character = DecodeUtf8(text);
        valid = valid && character.isValid;
        if (character.value >= 0x10000) {
            output.Put(static_cast<WCHAR>(0xD7C0 + (character.value >> 10)));
            output.Put(static_cast<WCHAR>(0xDC00 + (character.value & 0x3FF)));
        } else {
            output.Put(static_cast<WCHAR>(character.value));
        }
        text.remove_prefix(character.length);
    }
    return valid;
}

bool CodePageToWide(const CodePage& page, std::string_view text, Output<WCHAR>& output) {
    bool valid = true;
    for (size_t at = 0; at < text.size(); ++at) {
        unsigned code = static_cast<BYTE>(text[at]);
        WCHAR character = CodePage::undefined;
        if (!page.IsLeadByte(static_cast<BYTE>(code))) {
            character = page.ToWide(code);
        } else if (at + 1 < text.size() && text[at + 1] != '\0') {
            character = page.ToWide(code << 8 | static_cast<BYTE>(text[++at]));
        }
        if (character == CodePage::undefined) {
            valid = false;
            character = page.GetWideDefault();
        }
        output.Put(character);
    }
    return valid;
}

void WideToUtf8(std::u16string_view text, Output<char>& output) {
    for (size_t at = 0; at < text.size(); ++at) {
        const WCHAR unit = text[at];
        if (IsHighSurrogate(unit) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) {
            EncodeUtf8((static_cast<char32_t>(unit - 0xD7C0) << 10) + (text[++at] & 0x3FF), output);
        } else {
            EncodeUtf8(IsHighSurrogate(unit) || IsLowSurrogate(unit) ? replacementCharacter : unit, output);
        }
    }
}

// True when the default text had to be used.
bool WideToCodePage(const CodePage& page, std::u16string_view text, std::string_view defaultText,
                    Output<char>& output) {
    bool usedDefault = false;
    for (const WCHAR unit : text) {
        const unsigned code = page.FromWide(unit);
        if (code == 0 && unit != 0) {
            usedDefault = true;
            for (const char byte : defaultText) output.Put(byte);
            continue;
        }
        if (code > 0xFF) output.Put(static_cast<char>(code >> 8));
        output.Put(static_cast<char>(code));
    }
    return usedDefault;
}

int FailWith(DWORD error) {
    SetLastError(error);
    return 0;
}

// What both conversions ask of their arguments. A length of -1 stands for a text with its terminating NUL.
template <class Unit, class Target>
bool AreArgumentsValid(const Unit* text, int length, const Target* target, int capacity) {
    return text != nullptr && length != 0 && length >= -1 && capacity >= 0 && (capacity == 0 || target != nullptr) &&
           static_cast<const void*>(text) != static_cast<const void*>(target);
}

template <class Unit>
std::basic_string_view<Unit> MakeView(const Unit* text, int length) {
    return {text, length == -1 ? std::char_traits<Unit>::length(text) + 1 : static_cast<size_t>(length)};
}

}  // namespace

extern "C" {

UINT WINAPI GetACP() {
    return GetActiveCodePage().number;
}

BOOL WINAPI IsDBCSLeadByte(BYTE TestChar) {
    return GetActiveCodePage().isLeadByte[TestChar];
}

BOOL WINAPI GetCPInfo(UINT CodePage, LPCPINFO lpCPInfo) try {
    if (lpCPInfo != nullptr && DescribeCodePage(CodePage == CP_ACP ? GetACP() : CodePage, *lpCPInfo)) return TRUE;
    return FailWith(ERROR_INVALID_PARAMETER);
} catch (const std::bad_alloc&) {
    return FailWith(ERROR_NOT_ENOUGH_MEMORY);
}

int WINAPI MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr, int cbMultiByte,
                               LPWSTR lpWideCharStr, int cchWideChar) try {
    if (!AreArgumentsValid(lpMultiByteStr, cbMultiByte, lpWideCharStr, cchWideChar)) {
        return FailWith(ERROR_INVALID_PARAMETER);
    }
    if ((dwFlags & ~MB_ERR_INVALID_CHARS) != 0) return FailWith(ERROR_INVALID_FLAGS);
    const std::string_view text = MakeView(lpMultiByteStr, cbMultiByte);
    Output<WCHAR> output(lpWideCharStr, cchWideChar);
    const UINT number = CodePage == CP_ACP ? GetACP() : CodePage;
    bool valid;
    if (number == CP_UTF8) {
        valid = Utf8ToWide(text, output);
    } else if (const ::CodePage* page = ::CodePage::Find(number)) {
        valid = CodePageToWide(*page, text, output);
    } else {
        return FailWith(ERROR_INVALID_PARAMETER);
    }
    if (!valid && (dwFlags & MB_ERR_INVALID_CHARS) != 0) return FailWith(ERROR_NO_UNICODE_TRANSLATION);
    return output.Finish();
} catch (const std::bad_alloc&) {
    return FailWith(ERROR_NOT_ENOUGH_MEMORY);
}

int WINAPI WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr, int cchWideChar,
                               LPSTR lpMultiByteStr, int cbMultiByte, LPCSTR lpDefaultChar,
                               LPBOOL lpUsedDefaultChar) try {
    if (!AreArgumentsValid(lpWideCharStr, cchWideChar, lpMultiByteStr, cbMultiByte)) {
        return FailWith(ERROR_INVALID_PARAMETER);
    }
    const std::u16string_view text = MakeView(lpWideCharStr, cchWideChar);
    Output<char> output(lpMultiByteStr, cbMultiByte);
    const UINT number = CodePage == CP_ACP ? GetACP() : CodePage;
    if (number == CP_UTF8) {
        if (dwFlags != 0) return FailWith(ERROR_INVALID_FLAGS);
        if (lpDefaultChar != nullptr || lpUsedDefaultChar != nullptr) return FailWith(ERROR_INVALID_PARAMETER);
        WideToUtf8(text, output);
        return output.Finish();
    }
    if ((dwFlags & ~WC_NO_BEST_FIT_CHARS) != 0) return FailWith(ERROR_INVALID_FLAGS);
    const ::CodePage* page = ::CodePage::Find(number);
    if (page == nullptr) return FailWith(ERROR_INVALID_PARAMETER);
    if (lpDefaultChar == nullptr) lpDefaultChar = "?";
    const size_t defaultLength = page->IsLeadByte(static_cast<BYTE>(*lpDefaultChar)) ? 2 : 1;
    const bool usedDefault = WideToCodePage(*page, text, {lpDefaultChar, defaultLength}, output);
    if (lpUsedDefaultChar != nullptr) *lpUsedDefaultChar = usedDefault;
    return output.Finish();
} catch (const std::bad_alloc&) {
    return FailWith(ERROR_NOT_ENOUGH_MEMORY);
}

}  // extern "C"
