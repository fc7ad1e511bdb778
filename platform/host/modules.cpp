// Modules: shared libraries through dlopen, with Windows' reference counts and entry-point calls.
//
// A module handle is the dlopen handle, which with this C library is the address of the loader's link_map. Nothing here
// uses operator new: a program that lets allocations fail on purpose does not meet the loader.
#include "modules.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#if defined(__has_feature)
#define HOST_HAS_FEATURE(name) __has_feature(name)
#else
#define HOST_HAS_FEATURE(name) 0
#endif

namespace {

// A leak is reported at the end of the process, by names that only a module that is still mapped can give.
#if defined(__SANITIZE_ADDRESS__) || HOST_HAS_FEATURE(address_sanitizer)
constexpr int openFlags = RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE;
#else
constexpr int openFlags = RTLD_NOW | RTLD_LOCAL;
#endif

constexpr std::size_t maximumModules = 64;

// Constant-initialized and never destroyed: modules announce themselves before and after any static object's life.
constinit std::array<Module, maximumModules> modules;
constinit int loadsUnderWay = 0;

struct LoadUnderWay {
    LoadUnderWay() { ++loadsUnderWay; }
    LoadUnderWay(const LoadUnderWay&) = delete;
    LoadUnderWay& operator=(const LoadUnderWay&) = delete;
    ~LoadUnderWay() { --loadsUnderWay; }
};

struct CloseModule {
    void operator()(void* handle) const { dlclose(handle); }
};
using OpenedModule = std::unique_ptr<void, CloseModule>;

using PathBuffer = std::array<char, PATH_MAX>;

HMODULE GetProgram() {
    static const HMODULE program = static_cast<HMODULE>(dlopen(nullptr, RTLD_LAZY));
    return program;
}

// The module that holds the address; null when none does.
HMODULE FindHandleOf(const void* address) {
    Dl_info info;
    void* map = nullptr;
    return dladdr1(address, &info, &map, RTLD_DL_LINKMAP) != 0 ? static_cast<HMODULE>(map) : nullptr;
}

// Null when the table is full.
Module* FindOrAddModule(HMODULE handle) {
    if (Module* module = FindModule(handle)) return module;
    for (Module& module : modules) {
        if (module.handle != nullptr) continue;
        module.handle = handle;
        return &module;
    }
    return nullptr;
}

BOOL CallEntryPoint(const Module& module, DWORD reason, LPVOID reserved) {
    return module.entryPoint == nullptr || module.entryPoint(module.handle, reason, reserved);
}

// The program's own path, or an empty one.
void GetProgramPath(PathBuffer& path) {
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size() - 1);
    path[length > 0 ? static_cast<std::size_t>(length) : 0] = '\0';
}

// Appends to a path; false when it gets too long.
bool AppendPath(PathBuffer& path, const char* text) {
    const std::size_t length = std::strlen(path.data());
    const std::size_t added = std::strlen(text);
    if (length + added >= path.size()) return false;
    std::memcpy(path.data() + length, text, added + 1);
    return true;
}

// The full path of what LoadLibraryA was asked for: a name without a directory lies beside the program, and one with a
// relative directory below the current directory.
bool MakeFullPath(const char* name, PathBuffer& path) {
    path[0] = '\0';
    if (name[0] == '/') return AppendPath(path, name);
    if (std::strchr(name, '/') != nullptr) {
        if (getcwd(path.data(), path.size()) == nullptr) return false;
        return AppendPath(path, "/") && AppendPath(path, name);
    }
    GetProgramPath(path);
    char* slash = std::strrchr(path.data(), '/');
    if (slash == nullptr) return false;
    slash[1] = '\0';
    return AppendPath(path, name);
}

const char* GetModulePath(const Module& module, PathBuffer& buffer) {
    if (module.handle != GetProgram()) return reinterpret_cast<const link_map*>(module.handle)->l_name;
    GetProgramPath(buffer);
    return buffer.data();
}

const char* GetFileName(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path;
}

template <class Result>
Result FailWith(DWORD error) {
    SetLastError(error);
    return Result{};
}

}  // namespace

std::recursive_mutex& GetLoaderLock() {
    static constinit std::recursive_mutex lock;
    return lock;
}

Module* FindModule(HMODULE handle) {
    const bool program = handle == nullptr || handle == GetProgram();
    if (program) handle = GetProgram();
    for (Module& module : modules) {
        if (module.handle == handle) return &module;
    }
    if (!program) return nullptr;
    static constinit Module programModule;
    programModule.handle = handle;
    return &programModule;
}

extern "C" {

HMODULE WINAPI LoadLibraryA(LPCSTR lpLibFileName) {
    if (lpLibFileName == nullptr || *lpLibFileName == '\0') return FailWith<HMODULE>(ERROR_INVALID_PARAMETER);
    PathBuffer path;
    if (!MakeFullPath(lpLibFileName, path)) return FailWith<HMODULE>(ERROR_MOD_NOT_FOUND);

    const std::lock_guard lock(GetLoaderLock());
    OpenedModule opened;
    {
        const LoadUnderWay underWay;
        opened.reset(dlopen(path.data(), openFlags));
    }
    if (opened == nullptr) return FailWith<HMODULE>(ERROR_MOD_NOT_FOUND);
    Module* module = FindOrAddModule(static_cast<HMODULE>(opened.get()));
    if (module == nullptr) return FailWith<HMODULE>(ERROR_NOT_ENOUGH_MEMORY);

    ++module->references;
    if (module->references == 1 && !CallEntryPoint(*module, DLL_PROCESS_ATTACH, nullptr)) {
        FreeLibrary(static_cast<HMODULE>(opened.release()));
        return FailWith<HMODULE>(ERROR_DLL_INIT_FAILED);
    }
    return static_cast<HMODULE>(opened.release());
}

HMODULE WINAPI LoadLibraryExA(LPCSTR lpLibFileName, void*, DWORD) {
    return LoadLibraryA(lpLibFileName);
}

BOOL WINAPI FreeLibrary(HMODULE hLibModule) {
    const std::lock_guard lock(GetLoaderLock());
    Module* module = hLibModule != nullptr ? FindModule(hLibModule) : nullptr;
    if (module == nullptr || module->references == 0) return FailWith<BOOL>(ERROR_MOD_NOT_FOUND);
    const OpenedModule closing(hLibModule);
    if (module->references == 1) {
        CallEntryPoint(*module, DLL_PROCESS_DETACH, nullptr);
        if (!module->announced) *module = {};
    }
    // An announced module stays in the table until it is unmapped, which can be now or never.
    if (module->references > 0) --module->references;
    return TRUE;
}

FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR lpProcName) {
    const std::lock_guard lock(GetLoaderLock());
    const Module* module = FindModule(hModule);
    if (module == nullptr) return FailWith<FARPROC>(ERROR_MOD_NOT_FOUND);
    // A module exports by name only: there are no ordinals, which come as addresses below 64 KB.
    if (reinterpret_cast<UINT_PTR>(lpProcName) < 0x10000) return FailWith<FARPROC>(ERROR_PROC_NOT_FOUND);
    // dlsym also searches the libraries that the module needs; only the module's own exports count.
    void* address = dlsym(module->handle, lpProcName);
    if (address == nullptr || FindHandleOf(address) != module->handle) return FailWith<FARPROC>(ERROR_PROC_NOT_FOUND);
    return reinterpret_cast<FARPROC>(address);
}

DWORD WINAPI GetModuleFileNameA(HMODULE hModule, LPSTR lpFilename, DWORD nSize) {
    const std::lock_guard lock(GetLoaderLock());
    const Module* module = FindModule(hModule);
    if (module == nullptr) return FailWith<DWORD>(ERROR_MOD_NOT_FOUND);
    if (nSize == 0) return FailWith<DWORD>(ERROR_INSUFFICIENT_BUFFER);
    PathBuffer buffer;
    const char* path = GetModulePath(*module, buffer);
    const std::size_t length = std::strlen(path);
    lstrcpynA(lpFilename, path, static_cast<int>(nSize));
    if (length < nSize) return static_cast<DWORD>(length);
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return nSize;
}

DWORD WINAPI GetModuleFileNameW(HMODULE hModule, LPWSTR lpFilename, DWORD nSize) {
    PathBuffer path;
    const DWORD length = GetModuleFileNameA(hModule, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return 0;
    const int wideLength =
        MultiByteToWideChar(CP_ACP, 0, path.data(), static_cast<int>(length + 1), lpFilename, static_cast<int>(nSize));
    return wideLength > 0 ? static_cast<DWORD>(wideLength - 1) : nSize;
}

HMODULE WINAPI GetModuleHandleA(LPCSTR lpModuleName) {
    if (lpModuleName == nullptr) return GetProgram();
    const std::lock_guard lock(GetLoaderLock());
    const bool isPath = std::strchr(lpModuleName, '/') != nullptr;
    for (const Module& module : modules) {
        if (module.handle == nullptr || module.references == 0) continue;
        PathBuffer buffer;
        const char* path = GetModulePath(module, buffer);
        if (lstrcmpiA(isPath ? path : GetFileName(path), lpModuleName) == 0) return module.handle;
    }
    return FailWith<HMODULE>(ERROR_MOD_NOT_FOUND);
}

HINSTANCE HostModuleMapped(const void* address, HostDllMain entryPoint, const HostString* strings,
                           std::size_t stringCount) {
    const std::lock_guard lock(GetLoaderLock());
    Module* module = FindOrAddModule(FindHandleOf(address));
    if (module == nullptr) {
        std::fprintf(stderr, "host_windows: more than %zu modules; raise maximumModules in modules.cpp\n",
                     modules.size());
        std::abort();
    }
    module->announced = true;
    module->entryPoint = entryPoint;
    module->strings = strings;
    module->stringCount = stringCount;
    // LoadLibraryA attaches what it loads when all static objects are there. What the program is linked with, nobody
    // else attaches; a refusal then ends the process, as on Windows.
    if (loadsUnderWay == 0) {
        module->references = 1;
        if (!CallEntryPoint(*module, DLL_PROCESS_ATTACH, module)) {
            PathBuffer buffer;
            std::fprintf(stderr, "host_windows: %s refused to be loaded\n", GetModulePath(*module, buffer));
            std::abort();
        }
    }
    return module->handle;
}

void HostModuleUnmapped(HINSTANCE instance) {
    const std::lock_guard lock(GetLoaderLock());
    Module* module = FindModule(instance);
    if (module == nullptr) return;
    // Still in use: the process ends, which Windows tells by the last argument.
    if (module->references > 0) CallEntryPoint(*module, DLL_PROCESS_DETACH, module);
    *module = {};
}

}  // extern "C"
