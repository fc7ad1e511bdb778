// The administration of profiles as the user sees it.
#pragma once

#include <windows.h>

#include <iosfwd>

#include "profiles/profile_store.h"

// Lists the profiles and lets the user add, remove, look at and copy them and choose the one for display. `profile`, in
// the active code page, may be null. S_OK when the user closes it, MAPI_E_USER_CANCEL when the user cancels, another
// failure when it cannot be shown. What the user has changed by then stays changed.
HRESULT ShowProfileAdministration(HWND window, const char* profile, ProfileStore& store);

// The same as questions and answers. The end of the input cancels.
HRESULT AskAboutProfiles(std::istream& input, std::ostream& output, ProfileStore& store);
