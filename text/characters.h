// Characters of UTF-8 text: their width at a terminal and their letter case.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The code points; a byte that is not part of well-formed UTF-8 counts as U+FFFD.
std::u32string CodePoints(std::string_view utf8);

// Columns that the text takes at a terminal: 2 for wide East Asian characters and emoji, 0 for combining marks and
// other characters that are drawn over their neighbour.
size_t DisplayWidth(std::string_view utf8);

// Takes one line from the front of the text: what fits into the columns, up to a blank or behind a slash or
// semicolon if one is there, and one character at least. The blanks at the break are dropped.
std::string_view TakeLine(std::string_view& utf8, size_t columns);

// For comparing without regard to case: Latin, Greek, Cyrillic and Armenian letters in small form, with a sharp s as
// ss, everything else as it is.
std::u32string FoldCase(std::string_view utf8);

bool ContainsFolded(std::string_view text, std::u32string_view foldedWord);
