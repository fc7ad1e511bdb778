// Lets the user choose where a service's vCards are.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>

// Shows the system's folders and files from `current` on. Nothing when the user cancels.
std::optional<std::filesystem::path> ChooseLocation(HWND owner, const std::wstring& title,
                                                    const std::filesystem::path& current);
