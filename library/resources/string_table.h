// Strings of this library's own string table.
#pragma once

#include <windows.h>

#include <string>

#include "resources/string_ids.h"

// The text of a string, in the system's code page; empty when the table has no such id.
std::string LoadLibraryString(UINT id);

// What stands between the lines of a text: CR LF. Loaded when the library is.
inline std::string lineSeparator;
