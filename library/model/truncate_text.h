// TruncateText: cutting of texts in the code page in force.
#pragma once

#include <string_view>

// The text cut to at most n bytes, without part of a character at its end. A text that fits is returned as it is.
std::string_view TruncateText(std::string_view text, size_t n);
