// The registry's contents and the file that keeps them: the text format of registry editors (REGEDIT4), with the branch
// HKEY_CURRENT_USER only.
#pragma once

#include <windows.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

// Names are told apart without regard to case, and keep the case they were created with.
struct IgnoreCase {
    bool operator()(const std::string& first, const std::string& second) const {
        return lstrcmpiA(first.c_str(), second.c_str()) < 0;
    }
};

struct RegistryValue {
    DWORD type = 0;
    std::vector<BYTE> data;
};
using RegistryValues = std::map<std::string, RegistryValue, IgnoreCase>;

// The keys below HKEY_CURRENT_USER by their path, such as Software\Name. A key's parents are keys, too.
using RegistryKeys = std::map<std::string, RegistryValues, IgnoreCase>;

// The environment variable HOST_REGISTRY; without it faxbook/registry in $XDG_CONFIG_HOME or ~/.config.
std::filesystem::path GetRegistryPath();

// Reads the file; no file is an empty registry. ERROR_BADDB, after a line on standard error that says where, when the
// file is damaged.
LSTATUS ReadRegistry(RegistryKeys& keys);

// Held from reading to writing by whoever changes the registry: one process at a time.
class RegistryLock {
  public:
    RegistryLock();
    RegistryLock(const RegistryLock&) = delete;
    RegistryLock& operator=(const RegistryLock&) = delete;
    ~RegistryLock();

    bool IsHeld() const { return directory_ >= 0; }

  private:
    int directory_;
};

// Writes the file anew: whatever happens, the old file or the new one is there. Called with the lock held.
LSTATUS WriteRegistry(const RegistryKeys& keys);
