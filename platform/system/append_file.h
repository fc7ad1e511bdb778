// Adding to a file that a user has named, which may be anything.
#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

// Makes a missing file, for its user alone: on Windows with the rights of its folder. One that is there keeps its
// rights. What another user has put into a folder for everybody, such as /tmp, is refused, and so is another user's
// link anywhere. Nothing is waited for: no reader of a pipe who does not come or keep up, and no device.
std::error_code AppendToFile(const std::filesystem::path& path, std::string_view bytes);
