// Loading and unloading of the provider library, which lies in this library's own directory.
#pragma once

#include <windows.h>

// Loads the provider, fills the provider table and hands over the caller's resource module. Nothing is done when it is
// loaded already. False when it cannot be loaded, or when it refuses the resource module: then it stays loaded.
bool LoadProvider(HMODULE resourceModule);

// Unloads the provider and empties the provider table.
void UnloadProvider();
