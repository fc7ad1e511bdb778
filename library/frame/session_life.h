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

// A session that a reading export works on, for its length. It cannot be used by another one meanwhile, and a closing
// that is asked for meanwhile takes place at the end.
class SessionUse {
  public:
    explicit SessionUse(SessionHandle& session);
    SessionUse(const SessionUse&) = delete;
    SessionUse& operator=(const SessionUse&) = delete;
    ~SessionUse();

    // False when the session was in use already: then this is no use of it.
    explicit operator bool() const { return session_ != nullptr; }

  private:
    SessionHandle* session_;
};

// Destroys a handle, at once or when its use ends. Its provider objects are released before the provider may be
// unloaded; until then the session is in use, so that what the provider's Release calls does not close it again.
void DestroyHandle(SessionHandle* handle);

// Whether the memory at the handle's address is there and can be written to. A handle that has been closed can pass.
bool IsValidHandle(SessionHandle* handle);
