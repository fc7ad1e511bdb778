// Text from files as a terminal may get it. A control character is here what a terminal obeys, or what changes the
// order or the lines in which the text around it is shown: U+0000 to U+001F, U+007F to U+009F, the line and paragraph
// separators U+2028 and U+2029, and the embeddings, overrides and isolates of writing direction, U+202A to U+202E and
// U+2066 to U+2069. The marks of direction, which Arabic and Hebrew texts need, are none.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Of the ASCII characters only.
constexpr bool IsControl(char c) {
    return (static_cast<unsigned char>(c) < ' ') | (c == '\x7F');
}

// Printable ASCII characters only.
bool IsPlain(std::string_view text);

// The bytes of the control character that well-formed UTF-8 text begins with; 0 when it begins with another character.
size_t ControlLength(std::string_view utf8);

bool HasControls(std::string_view utf8);

// Well-formed UTF-8 without control characters: each run of them between other characters becomes one blank, and a byte
// that is no text becomes U+FFFD. The kept character stays.
std::string WithoutControls(std::string_view text, char kept = ' ');
