// The names of profiles: what new ones may be called, and how callers say them. A profile that is there may have any
// name that a line of the file can hold.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

// Why no new profile can have the name, such as "it is empty"; empty when one can. The name is UTF-8.
std::string FaultOfNewName(std::string_view name);

// A caller's name as UTF-8. Throws Failure with `otherwise` for one that is no text in the active code page: repaired,
// it could be the name of another profile.
std::string ProfileNameOfCaller(std::string_view name, HRESULT otherwise);
