// The loaded provider, as the provider loader fills it in and every call of the provider finds it.
#pragma once

#include "mapi/entry_points.h"

// The provider module and what it exports; all null while it is not loaded. An entry point that it lacks is null.
struct ProviderTable {
    HMODULE module = nullptr;
    VOKAdminProfilesFunction* VOKAdminProfiles = nullptr;
    VOKOpenFunction* VOKOpen = nullptr;
    VOKAllocateBufferFunction* VOKAllocateBuffer = nullptr;
    VOKAllocateMoreFunction* VOKAllocateMore = nullptr;
    VOKFreeBufferFunction* VOKFreeBuffer = nullptr;
    VOKFreeProwsFunction* VOKFreeProws = nullptr;
    SetResourceDllHandleFunction* SetResourceDllHandle = nullptr;
};

// The one provider of this process. Filled and emptied by the provider loader only.
inline constinit ProviderTable providerTable;
