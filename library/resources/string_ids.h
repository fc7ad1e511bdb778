// The ids of the string table, by name. Numbers and names stand in strings.inc.
#pragma once

#include <windows.h>

enum StringId : UINT {
#define STRING(id, name, text) name = id,
#include "resources/strings.inc"
#undef STRING
};
