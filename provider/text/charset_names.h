// The names of character sets, as CHARSET parameters and settings have them.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

// The code page that a label names, whatever its case, hyphens and underscores; nothing for a label that is not known
// or whose code page the system lacks.
std::optional<UINT> CodePageOfCharset(std::string_view label);

// The name of a code page for messages and settings.
std::string_view CharsetNameOf(UINT codePage);
