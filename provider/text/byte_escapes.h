// Bytes as a backslash and two hexadecimal digits: text that no code page changes.
#pragma once

#include <string>
#include <string_view>

// The byte that two digits at the beginning of a text are; -1 where there are none.
int HexPair(std::string_view text);

void AppendByteEscape(unsigned char byte, std::string& text);

// For the user's eyes: escaped letters beyond ASCII as themselves. Text in which they are none stays as it is.
std::string WithLetters(std::string_view escaped);
