// The life of session handles, and with them of the provider: loaded with the first handle, unloaded with the last.
#pragma once

#include "frame/session.h"

struct HandleDestroyer {
    void operator()(SessionHandle* handle) const;
};
using OwnedHandle = std::unique_ptr<SessionHandle, HandleDestroyer>;

// A handle without a session, while which the provider is loaded. Null when there is no memory or the provider cannot
// be loaded or refuses the resource module.
OwnedHandle CreateHandle(const char* profileName, HMODULE resourceModule);

// Destroys a handle. Its provider objects are released before the provider may be unloaded; until then the session is
// in use, so that what the provider's Release calls does not close it again.
void DestroyHandle(SessionHandle* handle);

// Whether the memory at the handle's address is there and can be written to. A handle that has been closed can pass.
bool IsValidHandle(SessionHandle* handle);
