// Both directions go through UTF-16, as Windows converts.
#include "text.h"

#include <limits>

#include "command_failure.h"
#include "text/ascii.h"

namespace {

using Utf16 = std::basic_string<WCHAR>;

int Length(size_t size) {
    if (size > static_cast<size_t>(std::numeric_limits<int>::max())) throw CommandFailure("a text is longer than 2 GB");
    return static_cast<int>(size);
}

Utf16 ToUtf16(std::string_view text, UINT codePage) {
    if (text.empty()) return {};
    const int size = Length(text.size());
    Utf16 units(static_cast<size_t>(MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0)), WCHAR());
    MultiByteToWideChar(codePage, 0, text.data(), size, units.data(), Length(units.size()));
    return units;
}

std::string FromUtf16(std::basic_string_view<WCHAR> units, UINT codePage) {
    if (units.empty()) return {};
    const int size = Length(units.size());
    const int byteCount = WideCharToMultiByte(codePage, 0, units.data(), size, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<size_t>(byteCount), '\0');
    WideCharToMultiByte(codePage, 0, units.data(), size, text.data(), byteCount, nullptr, nullptr);
    return text;
}

}  // namespace

std::string Utf8(std::string_view codePageText) {
    // ASCII is the same in every code page, and nearly all that passes here.
    if (IsAscii(codePageText)) return std::string(codePageText);
    return FromUtf16(ToUtf16(codePageText, CP_ACP), CP_UTF8);
}

std::string Utf8(std::basic_string_view<WCHAR> utf16) {
    return FromUtf16(utf16, CP_UTF8);
}

std::string AsCodePageHasIt(std::string_view utf8) {
    return Utf8(FromUtf16(ToUtf16(utf8, CP_UTF8), CP_ACP));
}

std::string InCodePage(std::string_view utf8, std::string_view what) {
    std::string text = FromUtf16(ToUtf16(utf8, CP_UTF8), CP_ACP);
    if (Utf8(text) != utf8) {
        throw CommandFailure(std::string(what) + " \"" + std::string(utf8) +
                             "\" has characters that the system's code page " + std::to_string(GetACP()) +
                             " lacks; use another name");
    }
    return text;
}
