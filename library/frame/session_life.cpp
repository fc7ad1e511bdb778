// Creating, destroying and validating session handles.
#include "frame/session_life.h"

#include <new>

#include "frame/export_guard.h"
#include "frame/provider_loader.h"

namespace {

// Live handles of this process, with those that exist only for the length of a profile export.
constinit LONG openHandleCount = 0;

// The count rises first, so that a session opened from inside the provider's loading does not load it again.
bool AcquireProvider(HMODULE resourceModule) {
    if (++openHandleCount > 1) return true;
    if (GuardAgainstExceptions(false, [&] { return LoadProvider(resourceModule); })) return true;
    --openHandleCount;
    return false;
}

void ReleaseProvider() {
    if (--openHandleCount == 0 && providerTable.module != nullptr) UnloadProvider();
}

}  // namespace

void HandleDestroyer::operator()(SessionHandle* handle) const {
    delete handle;
    ReleaseProvider();
}

OwnedHandle CreateHandle(const char* profileName, HMODULE resourceModule) {
    std::unique_ptr<SessionHandle> handle(new (std::nothrow) SessionHandle);
    if (handle == nullptr || !AcquireProvider(resourceModule)) return nullptr;
    if (profileName != nullptr) lstrcpynA(handle->profileName, profileName, sizeof handle->profileName);
    return OwnedHandle(handle.release());
}

SessionUse::SessionUse(SessionHandle& session) : session_(session.inUse ? nullptr : &session) {
    session.inUse = true;
}

SessionUse::~SessionUse() {
    if (session_ == nullptr) return;
    session_->inUse = false;
    if (session_->closes) DestroyHandle(session_);
}

void DestroyHandle(SessionHandle* handle) {
    handle->closes = true;
    if (handle->inUse) return;
    handle->inUse = true;
    OwnedHandle destroyed(handle);
}

bool IsValidHandle(SessionHandle* handle) {
    return handle != nullptr && !IsBadWritePtr(handle, sizeof(SessionHandle));
}
