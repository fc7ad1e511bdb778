// The library's resources that are no strings: dialogs and their controls, icon groups, version block, manifest.
#pragma once

#include <windows.h>

#include "output/output.h"

// Adds rows of kind, id, control and text; what this system's library cannot carry is noted.
void AddOtherResources(HMODULE module, Table& table, Console& console);
