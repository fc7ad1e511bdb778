// The registry functions: open keys, and each operation on the file as a whole.
#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "registry_file.h"

namespace {

struct OpenKey {
    std::string path;  // below HKEY_CURRENT_USER; empty for that key itself
    REGSAM access;
};

// Handles are never used again, so that a closed handle stays invalid.
struct OpenKeys {
    std::mutex lock;
    std::map<HKEY, OpenKey> keys;
    UINT_PTR nextHandle = 0x1000;
};

OpenKeys& GetOpenKeys() {
    static OpenKeys openKeys;
    return openKeys;
}

std::optional<OpenKey> FindOpenKey(HKEY handle) {
    if (handle == HKEY_CURRENT_USER) return OpenKey{{}, KEY_ALL_ACCESS};
    OpenKeys& openKeys = GetOpenKeys();
    const std::lock_guard lock(openKeys.lock);
    const auto found = openKeys.keys.find(handle);
    return found != openKeys.keys.end() ? std::optional(found->second) : std::nullopt;
}

HKEY AddOpenKey(const std::string& path, REGSAM access) {
    OpenKeys& openKeys = GetOpenKeys();
    const std::lock_guard lock(openKeys.lock);
    const auto handle = reinterpret_cast<HKEY>(openKeys.nextHandle);
    openKeys.keys.emplace(handle, OpenKey{path, access});
    openKeys.nextHandle += 4;
    return handle;
}

bool HasControlCharacters(std::string_view text) {
    return std::ranges::any_of(text, [](char character) { return std::iscntrl(static_cast<BYTE>(character)); });
}

// The path of a key below another; backslashes at its end do not count.
std::string JoinPath(std::string path, std::string_view below) {
    while (!below.empty()) {
        const size_t end = std::min(below.find('\\'), below.size());
        if (end > 0) {
            if (!path.empty()) path += '\\';
            path += below.substr(0, end);
        }
        below.remove_prefix(std::min(end + 1, below.size()));
    }
    return path;
}

bool Exists(const RegistryKeys& keys, const std::string& path) {
    return path.empty() || keys.contains(path);
}

bool HasKeysBelow(const RegistryKeys& keys, const std::string& path) {
    const std::string prefix = path + '\\';
    return std::ranges::any_of(keys, [&](const auto& key) {
        return lstrcmpiA(key.first.substr(0, prefix.size()).c_str(), prefix.c_str()) == 0;
    });
}

void CreateWithParents(RegistryKeys& keys, const std::string& path) {
    for (size_t end = path.find('\\'); end != std::string::npos; end = path.find('\\', end + 1)) {
        keys[path.substr(0, end)];
    }
    keys[path];
}

// Runs one operation; no exception leaves it.
template <class Operation>
LSTATUS Run(Operation operation) {
    try {
        return operation();
    } catch (const std::filesystem::filesystem_error&) {
        return ERROR_READ_FAULT;
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

// Reads the registry and hands it to `use(keys)`.
template <class Use>
LSTATUS Read(Use use) {
    RegistryKeys keys;
    const LSTATUS status = ReadRegistry(keys);
    return status == ERROR_SUCCESS ? use(keys) : status;
}

// Reads the registry, hands it to `change(keys)` and, when that succeeds, writes it.
template <class Change>
LSTATUS Update(Change change) {
    const RegistryLock lock;
    if (!lock.IsHeld()) return ERROR_WRITE_FAULT;
    return Read([&](RegistryKeys& keys) {
        const LSTATUS status = change(keys);
        return status == ERROR_SUCCESS ? WriteRegistry(keys) : status;
    });
}

}  // namespace

extern "C" {

LSTATUS WINAPI RegCreateKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD Reserved, LPSTR /*lpClass*/, DWORD dwOptions,
                               REGSAM samDesired, const SECURITY_ATTRIBUTES* /*lpSecurityAttributes*/, PHKEY phkResult,
                               LPDWORD lpdwDisposition) {
    return Run([&]() -> LSTATUS {
        const std::optional<OpenKey> parent = FindOpenKey(hKey);
        if (!parent) return ERROR_INVALID_HANDLE;
        if (lpSubKey == nullptr || phkResult == nullptr || Reserved != 0 || dwOptions != REG_OPTION_NON_VOLATILE ||
            HasControlCharacters(lpSubKey)) {
            return ERROR_INVALID_PARAMETER;
        }
        const std::string path = JoinPath(parent->path, lpSubKey);
        DWORD disposition = REG_OPENED_EXISTING_KEY;
        const LSTATUS status = Update([&](RegistryKeys& keys) -> LSTATUS {
            if (!Exists(keys, parent->path)) return ERROR_KEY_DELETED;
            if (Exists(keys, path)) return ERROR_SUCCESS;
            CreateWithParents(keys, path);
            disposition = REG_CREATED_NEW_KEY;
            return ERROR_SUCCESS;
        });
        if (status != ERROR_SUCCESS) return status;
        *phkResult = AddOpenKey(path, samDesired);
        if (lpdwDisposition != nullptr) *lpdwDisposition = disposition;
        return ERROR_SUCCESS;
    });
}

LSTATUS WINAPI RegOpenKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD ulOptions, REGSAM samDesired, PHKEY phkResult) {
    return Run([&]() -> LSTATUS {
        const std::optional<OpenKey> parent = FindOpenKey(hKey);
        if (!parent) return ERROR_INVALID_HANDLE;
        if (phkResult == nullptr || ulOptions != 0) return ERROR_INVALID_PARAMETER;
        const std::string path = JoinPath(parent->path, lpSubKey != nullptr ? lpSubKey : "");
        return Read([&](const RegistryKeys& keys) -> LSTATUS {
            if (!Exists(keys, parent->path)) return ERROR_KEY_DELETED;
            if (!Exists(keys, path)) return ERROR_FILE_NOT_FOUND;
            *phkResult = AddOpenKey(path, samDesired);
            return ERROR_SUCCESS;
        });
    });
}

LSTATUS WINAPI RegQueryValueExA(HKEY hKey, LPCSTR lpValueName, LPDWORD lpReserved, LPDWORD lpType, LPBYTE lpData,
                                LPDWORD lpcbData) {
    return Run([&]() -> LSTATUS {
        const std::optional<OpenKey> key = FindOpenKey(hKey);
        if (!key) return ERROR_INVALID_HANDLE;
        if (lpReserved != nullptr || (lpData != nullptr && lpcbData == nullptr)) return ERROR_INVALID_PARAMETER;
        if ((key->access & KEY_QUERY_VALUE) == 0) return ERROR_ACCESS_DENIED;
        return Read([&](RegistryKeys& keys) -> LSTATUS {
            if (!Exists(keys, key->path)) return ERROR_KEY_DELETED;
            const RegistryValues& values = keys[key->path];
            const auto found = values.find(lpValueName != nullptr ? lpValueName : "");
            if (found == values.end()) return ERROR_FILE_NOT_FOUND;
            const auto& [type, data] = found->second;
            if (lpType != nullptr) *lpType = type;
            if (lpcbData == nullptr) return ERROR_SUCCESS;
            const DWORD capacity = std::exchange(*lpcbData, static_cast<DWORD>(data.size()));
            if (lpData == nullptr) return ERROR_SUCCESS;
            if (capacity < data.size()) return ERROR_MORE_DATA;
            std::ranges::copy(data, lpData);
            return ERROR_SUCCESS;
        });
    });
}

LSTATUS WINAPI RegSetValueExA(HKEY hKey, LPCSTR lpValueName, DWORD Reserved, DWORD dwType, const BYTE* lpData,
                              DWORD cbData) {
    return Run([&]() -> LSTATUS {
        const std::optional<OpenKey> key = FindOpenKey(hKey);
        if (!key) return ERROR_INVALID_HANDLE;
        const std::string name = lpValueName != nullptr ? lpValueName : "";
        // The file has no place for values of the branch itself.
        if (Reserved != 0 || (lpData == nullptr && cbData != 0) || HasControlCharacters(name) || key->path.empty()) {
            return ERROR_INVALID_PARAMETER;
        }
        if ((key->access & KEY_SET_VALUE) == 0) return ERROR_ACCESS_DENIED;
        return Update([&](RegistryKeys& keys) -> LSTATUS {
            if (!Exists(keys, key->path)) return ERROR_KEY_DELETED;
            keys[key->path][name] = {dwType, {lpData, lpData + cbData}};
            return ERROR_SUCCESS;
        });
    });
}

LSTATUS WINAPI RegDeleteKeyA(HKEY hKey, LPCSTR lpSubKey) {
    return Run([&]() -> LSTATUS {
        const std::optional<OpenKey> parent = FindOpenKey(hKey);
        if (!parent) return ERROR_INVALID_HANDLE;
        if (lpSubKey == nullptr) return ERROR_INVALID_PARAMETER;
        const std::string path = JoinPath(parent->path, lpSubKey);
        return Update([&](RegistryKeys& keys) -> LSTATUS {
            if (!keys.contains(path)) return path.empty() ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND;
            if (HasKeysBelow(keys, path)) return ERROR_ACCESS_DENIED;
            keys.erase(path);
            return ERROR_SUCCESS;
        });
    });
}

LSTATUS WINAPI RegCloseKey(HKEY hKey) {
    if (hKey == HKEY_CURRENT_USER) return ERROR_SUCCESS;
    OpenKeys& openKeys = GetOpenKeys();
    const std::lock_guard lock(openKeys.lock);
    return openKeys.keys.erase(hKey) != 0 ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

}  // extern "C"
