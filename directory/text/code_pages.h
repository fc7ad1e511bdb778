// Text between code pages. Inside the provider text is UTF-8, always well-formed; what callers get is in the active
// code page, where a character that the code page lacks is its default character.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

inline constexpr UINT codePageWesternEuropean = 1252;

// The code page that a charset label names; nothing for a label that is not known.
std::optional<UINT> CodePageOfCharset(std::string_view label);

bool IsAscii(std::string_view text);
bool IsUtf8(std::string_view text);

// Appends bytes of a code page as UTF-8; false when the system cannot convert them, then nothing is appended.
bool AppendAsUtf8(std::string_view bytes, UINT codePage, std::string& utf8);

// UTF-8 with U+FFFD for every byte that is not part of a character.
void AppendRepairedUtf8(std::string_view bytes, std::string& utf8);

// A whole file's text as UTF-8 where it is UTF-16: it has a byte-order mark, or one of its first two bytes is 0.
// Nothing otherwise.
std::optional<std::string> Utf8FromUtf16(std::string_view bytes);
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
// The text behind a UTF-8 byte-order mark.
std::string_view WithoutUtf8Mark(std::string_view text);

// UTF-8 to the active code page: the one place where callers' text is made.
void AppendInActiveCodePage(std::string_view utf8, std::string& text);
std::string InActiveCodePage(std::string_view utf8);
// What a caller passed.
std::string FromActiveCodePage(std::string_view text);
