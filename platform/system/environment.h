// Where the user's files are, and whether a user sits at a terminal.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>

// The value of an environment variable as a path; nothing when it is not set or empty.
std::optional<std::filesystem::path> EnvironmentPath(const char* name);

// The contacts folder, the file of the profiles, and where diagnostics go.
inline constexpr char contactsVariable[] = "FAXBOOK_CONTACTS";
inline constexpr char profilesVariable[] = "FAXBOOK_PROFILES";
inline constexpr char diagnosticsVariable[] = "FAXBOOK_DIAGNOSTICS";

// What contactsVariable names, else the user's own contacts folder. It need not exist. Empty when the system names
// none.
std::filesystem::path ContactsFolder();

// What profilesVariable names, else profiles.ini in the user's configuration folder.
std::filesystem::path ProfilesFile();

bool IsTerminalOnStandardInput();

// The code page that files of this system are in when they are not UTF-8. A program may have UTF-8 for its own; the
// files that it meets are the system's all the same.
UINT CodePageOfFiles();
