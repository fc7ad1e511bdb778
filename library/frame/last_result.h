// The library-wide last result code.
#pragma once

#include <windows.h>

// The outcome of the last OpenAddressBook, CreateProfile or DisplayAdminProfiles. It is stored before the provider's
// objects are released, except those of a session that failed to open: what their Release calls reads it.
inline constinit HRESULT libraryLastResult = S_OK;
