// The work of the two profile exports: each has the provider loaded for its length and opens no session.
#pragma once

#include "qdxl7rc.h"

#include <windows.h>

// Creates a profile, then adds the services in order up to the first that fails. Stores the last result that the
// provider gave as the library's; false when that is a failure, or when the provider could not be loaded: then nothing
// is stored.
bool CreateProviderProfile(ULONG_PTR uiParam, ULONG flags, const char* profileName, uint32_t serviceCount,
                           const ServiceRecord* services, HMODULE resourceModule);

// Shows the administration of profiles, then clears the profile's lock whatever that gave. The result is as above, but
// for a user who cancels, which is no failure.
bool ShowProviderAdministration(ULONG_PTR adminParam, const char* profileName, ULONG_PTR uiParam, ULONG flags,
                                HMODULE resourceModule);
