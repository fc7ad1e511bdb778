// Text between code pages. Inside the provider text is UTF-8, always well-formed; what callers get is in the active
// code page, where a character that the code page lacks is its default character.
#pragma once

#include <windows.h>

#include <istream>
#include <optional>
#include <string>
#include <string_view>

inline constexpr UINT codePageIso2022Jp = 50220;
inline constexpr UINT codePageEucJp = 20932;

bool IsUtf8(std::string_view text);

// The functions below throw std::length_error for a text longer than longestConversion.

// All that is left of a stream that is converted as a whole.
void AppendRest(std::istream& stream, std::string& bytes);

// Appends bytes of a code page as UTF-8; false when they are no text of it, or the system lacks it: then nothing is
// appended.
bool AppendAsUtf8(std::string_view bytes, UINT codePage, std::string& utf8);
// The same of bytes that are no text of it: what cannot be read becomes the code page's own default character, or in
// UTF-8 U+FFFD.
void AppendRepaired(std::string_view bytes, UINT codePage, std::string& utf8);

// A whole file's text as UTF-8 where it is UTF-16: it has a byte-order mark, or one of its first two bytes is 0.
// Nothing otherwise.
std::optional<std::string> Utf8FromUtf16Bytes(std::string_view bytes);
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
// The text behind a UTF-8 byte-order mark.
std::string_view WithoutUtf8Mark(std::string_view text);

// UTF-8 to the active code page: the one place where callers' text is made.
void AppendInActiveCodePage(std::string_view utf8, std::string& text);
std::string InActiveCodePage(std::string_view utf8);
// What a caller passed.
std::string FromActiveCodePage(std::string_view text);
