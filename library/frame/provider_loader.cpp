// Provider loader: the provider's path, its loading and its entry points.
#include "frame/provider_loader.h"

#include <algorithm>
#include <utility>

#include "class_library/cwinapp.h"
#include "provider/provider_table.h"
#include "resources/string_table.h"

namespace {

// Where this library's own file name begins in its path: only an ending of the path can be equal to it. The length of
// the path when the library goes by another name.
size_t FindFileName(const std::string& path, const std::string& ownName) {
    size_t cut = 0;
    while (cut < path.size() && lstrcmpiA(path.c_str() + cut, ownName.c_str()) != 0) ++cut;
    return cut;
}

// This library's own path. Empty when it is too long or holds characters that the code page lacks: what the system
// gives then is the path of another file, or of none.
std::string GetLibraryPath() {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(GetModuleInstance(), path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return {};
    WCHAR exactPath[MAX_PATH], samePath[MAX_PATH];
    const DWORD exactLength = GetModuleFileNameW(GetModuleInstance(), exactPath, MAX_PATH);
    const int sameLength = MultiByteToWideChar(CP_ACP, 0, path, static_cast<int>(length), samePath, MAX_PATH);
    const bool same = std::equal(exactPath, exactPath + exactLength, samePath, samePath + sameLength);
    return same ? std::string(path, length) : std::string();
}

// The provider's path: this library's path with its own file name exchanged; empty when that is not known. The system
// must get a full path, so that it looks nowhere else. A library that was renamed gets a path that names no file.
std::string BuildProviderPath() {
    const std::string path = GetLibraryPath();
    if (path.empty()) return {};
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
    const std::string path = BuildProviderPath();
    if (path.empty()) return false;
    providerTable.module = LoadLibraryA(path.c_str());
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
    // The table is empty first: what the provider calls while it ends finds none loaded.
    FreeLibrary(std::exchange(providerTable, {}).module);
}
