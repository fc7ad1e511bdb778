// The names that are devices in every folder of Windows.
#pragma once

#include <string_view>

// Whether a file's name is one, whatever stands behind a dot or a colon in it. Opening one may wait for a machine at
// the other end.
bool IsDeviceName(std::wstring_view name);
