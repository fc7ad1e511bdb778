// The environment of both systems, and the folders that each of them calls the user's own.
#include "platform/system/environment.h"

#include <windows.h>

#include <cstdlib>
#include <string>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace fs = std::filesystem;

#ifdef _WIN32

std::optional<fs::path> EnvironmentPath(const char* name) {
    const std::wstring wideName(name, name + std::char_traits<char>::length(name));
    std::wstring value(GetEnvironmentVariableW(wideName.c_str(), nullptr, 0), L'\0');
    value.resize(GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size())));
    if (value.empty()) return std::nullopt;
    return fs::path(value);
}

bool IsTerminalOnStandardInput() {
    return _isatty(0) != 0;
}

UINT CodePageOfFiles() {
    if (GetACP() != CP_UTF8) return GetACP();
    DWORD codePage = CP_UTF8;
    GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                   reinterpret_cast<LPWSTR>(&codePage), sizeof codePage / sizeof(WCHAR));
    return codePage;
}

namespace {

fs::path UserContacts() {
    const std::optional<fs::path> home = EnvironmentPath("USERPROFILE");
    return home ? *home / "Contacts" : fs::path();
}

fs::path UserConfiguration() {
    return EnvironmentPath("APPDATA").value_or(fs::path());
}

}  // namespace

#else

std::optional<fs::path> EnvironmentPath(const char* name) {
    const char* const value = std::getenv(name);
    if (value == nullptr || *value == '\0') return std::nullopt;
    return fs::path(value);
}

bool IsTerminalOnStandardInput() {
    return isatty(STDIN_FILENO) == 1;
}

UINT CodePageOfFiles() {
    return GetACP();
}

namespace {

fs::path XdgFolder(const char* variable, const char* belowHome) {
    if (const std::optional<fs::path> folder = EnvironmentPath(variable)) return *folder;
    const std::optional<fs::path> home = EnvironmentPath("HOME");
    return home ? *home / belowHome : fs::path();
}

fs::path UserContacts() {
    const fs::path data = XdgFolder("XDG_DATA_HOME", ".local/share");
    return data.empty() ? data : data / "contacts";
}

fs::path UserConfiguration() {
    return XdgFolder("XDG_CONFIG_HOME", ".config");
}

}  // namespace

#endif

fs::path ContactsFolder() {
    if (const std::optional<fs::path> named = EnvironmentPath(contactsVariable)) return *named;
    return UserContacts();
}

fs::path ProfilesFile() {
    if (const std::optional<fs::path> named = EnvironmentPath(profilesVariable)) return *named;
    const fs::path configuration = UserConfiguration();
    return configuration.empty() ? configuration : configuration / "faxbook" / "profiles.ini";
}
