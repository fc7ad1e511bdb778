// The module that the caller gave for resources to be shown: dialogs come from there.
#pragma once

#include <windows.h>

// Null until the caller has given one.
HMODULE GetResourceModule();
void SetResourceModule(HMODULE module);
