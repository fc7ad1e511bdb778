// UTF-16, which the system converts by and its windows speak: the one place that asks the system to convert.
#pragma once

#include <windows.h>

#include <climits>
#include <string>
#include <string_view>

using Utf16String = std::basic_string<WCHAR>;
using Utf16View = std::basic_string_view<WCHAR>;

// Bytes that are converted in one piece: the system counts in an int what four bytes of text may become.
inline constexpr size_t longestConversion = INT_MAX / 4;

// The functions below throw std::length_error for a longer text.

// What is no text of the code page becomes the system's replacement character.
Utf16String ToUtf16(std::string_view bytes, UINT codePage);
inline Utf16String Utf16FromUtf8(std::string_view utf8) {
    return ToUtf16(utf8, CP_UTF8);
}

// A character that the code page lacks becomes its default character, and half of a surrogate pair that stands alone
// becomes U+FFFD.
std::string FromUtf16(Utf16View units, UINT codePage);
inline std::string Utf8FromUtf16(Utf16View units) {
    return FromUtf16(units, CP_UTF8);
}

// Appends bytes of one code page in another one. The flags are those of MultiByteToWideChar; false, with nothing
// appended, when the system cannot convert, or with MB_ERR_INVALID_CHARS when the bytes are no text of the code page.
bool AppendConverted(std::string_view bytes, UINT from, DWORD flags, UINT to, std::string& text);
