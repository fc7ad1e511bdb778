// LoadStringA over the string tables that modules announce.
#include <algorithm>
#include <cstring>
#include <span>

#include "modules.h"

extern "C" {

BOOL HostRegisterStrings(HINSTANCE instance, const HostString* strings, std::size_t count) {
    const std::lock_guard lock(GetLoaderLock());
    Module* module = FindModule(instance);
    if (module == nullptr) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return FALSE;
    }
    module->strings = strings;
    module->stringCount = count;
    return TRUE;
}

int WINAPI LoadStringA(HINSTANCE hInstance, UINT uID, LPSTR lpBuffer, int cchBufferMax) {
    if (lpBuffer == nullptr || cchBufferMax <= 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    *lpBuffer = '\0';
    const std::lock_guard lock(GetLoaderLock());
    if (const Module* module = FindModule(hInstance)) {
        const std::span strings(module->strings, module->stringCount);
        const auto found = std::ranges::find(strings, uID, &HostString::id);
        if (found != strings.end()) {
            lstrcpynA(lpBuffer, found->text, cchBufferMax);
            return lstrlenA(lpBuffer);
        }
    }
    SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return 0;
}

}  // extern "C"
