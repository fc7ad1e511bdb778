// Text with the line breaks that callers show.
#pragma once

#include <string>

// Makes a text that is one line: every run of control characters and blanks becomes one blank; none stays at the ends.
void MakeSingleLine(std::string& text);
// Line breaks as Windows shows them; other control characters become blanks; nothing blank at the ends.
void MakeWindowsLines(std::string& text);
