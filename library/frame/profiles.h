// The work of the two profile exports: each has the provider loaded for its length and opens no session.
#pragma once

#include "qdxl7rc.h"

#include <windows.h>

#include <optional>

// Creates a profile, then adds the services in order up to the first that fails. The last result that the provider
// gave, or nothing when the provider could not be loaded.
std::optional<HRESULT> CreateProviderProfile(ULONG_PTR uiParam, ULONG flags, const char* profileName,
                                             uint32_t serviceCount, const ServiceRecord* services,
                                             HMODULE resourceModule);

// Shows the administration of profiles, then clears the profile's lock whatever that gave. The result is as above.
std::optional<HRESULT> ShowProviderAdministration(ULONG_PTR adminParam, const char* profileName, ULONG_PTR uiParam,
                                                  ULONG flags, HMODULE resourceModule);
