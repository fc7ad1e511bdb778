// Changing where a service of a profile has its address books.
#pragma once

#include "profiles/profile_store.h"

// `service` counts the profile's services from 0. Every other line of the profiles file stays. Throws Failure:
// MAPI_E_NOT_FOUND for an unknown profile or service, and what the store throws.
void SetServiceLocation(const ProfileStore& store, std::string_view profile, size_t service,
                        const std::filesystem::path& location);
