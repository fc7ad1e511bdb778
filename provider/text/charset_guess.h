// Which character set text is in that neither is UTF-8 nor says what it is.
#pragma once

#include <windows.h>

#include <string_view>

// The code page in which the sample reads best. The sample is text of one file, as much of it as may help; one name is
// enough where a guess is possible at all. What fits two code pages alike is in `likely`, the one that the user's
// system works with, if that is one of them.
UINT GuessCodePage(std::string_view sample, UINT likely);
