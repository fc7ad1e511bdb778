// The one service of this provider: the address books in a folder, or in one file, of vCards.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "profiles/profile_store.h"
#include "session/session.h"

// Whether CreateService knows the name; letter case does not matter.
bool IsServiceName(std::string_view name);

// A session on a profile of the store. An empty name stands for the profile chosen for display or, when there is none
// or the environment names a contacts folder, for the contacts folder alone. Throws Failure:
// MAPI_E_NOT_FOUND for an unknown profile, and what the store throws. The session's messages go to the receiver, if it
// has a function.
std::shared_ptr<Session> OpenSession(std::string_view profileName, const ProfileStore& store,
                                     const VOKMessageReceiver& messages = {});
