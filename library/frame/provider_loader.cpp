// Provider loader: the provider's path, its loading and its entry points.
#include "frame/provider_loader.h"

#include "class_library/cwinapp.h"
#include "provider/entry_points.h"
#include "resources/string_table.h"

namespace {

// Where this library's own file name begins in its path: only an ending of the path can be equal to it. The length of
// the path when the library goes by another name.
size_t FindFileName(const std::string& path, const std::string& ownName) {
    size_t cut = 0;
    while (cut < path.size() && lstrcmpiA(path.c_str() + cut, ownName.c_str()) != 0) ++cut;
    return cut;
}

// The provider's path: this library's path with its own file name exchanged. The loader must get a full path, so that
// it looks nowhere else; a library that was renamed gets a path that names no file.
std::string BuildProviderPath() {
    char modulePath[MAX_PATH] = {};
    GetModuleFileNameA(GetModuleInstance(), modulePath, sizeof modulePath);
    modulePath[sizeof modulePath - 1] = '\0';
    const std::string path = modulePath;
    return path.substr(0, FindFileName(path, LoadLibraryString(IDS_LIBRARY_FILE))) +
           LoadLibraryString(IDS_PROVIDER_FILE);
}

template <class Function>
void Resolve(Function*& entryPoint, const char* name) {
    entryPoint = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(providerTable.module, name)));
}

}  // namespace

bool LoadProvider(HMODULE resourceModule) {
    if (providerTable.module != nullptr) return true;
    providerTable.module = LoadLibraryA(BuildProviderPath().c_str());
    if (providerTable.module == nullptr) return false;
    Resolve(providerTable.VOKAdminProfiles, "VOKAdminProfiles");
    Resolve(providerTable.VOKOpen, "VOKOpen");
    Resolve(providerTable.VOKAllocateBuffer, "VOKAllocateBuffer");
    Resolve(providerTable.VOKAllocateMore, "VOKAllocateMore");
    Resolve(providerTable.VOKFreeBuffer, "VOKFreeBuffer");
    Resolve(providerTable.VOKFreeProws, "VOKFreeProws");
    Resolve(providerTable.SetResourceDllHandle, "SetResourceDllHandle");
    return providerTable.SetResourceDllHandle == nullptr ||
           SUCCEEDED(providerTable.SetResourceDllHandle(resourceModule));
}

void UnloadProvider() {
    FreeLibrary(providerTable.module);
    providerTable = {};
}
