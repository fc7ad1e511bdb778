// What std::filesystem does not give: a file's identity and age in one question, and all of a small file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

// Two equal values are the same file in the same state, as far as the system can tell.
struct FileStatus {
    enum class Kind { File, Folder, Other };  // other: a pipe, a socket, a device

    Kind kind = Kind::File;
    std::uint64_t volume = 0;
    std::uint64_t index = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0;  // in the system's own unit
    // Changed so shortly before it was asked for that a further change need not show in the time of the last one.
    bool isFresh = false;

    bool IsSameFileAs(const FileStatus& other) const { return volume == other.volume && index == other.index; }
    friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

// Follows links, and opens nothing that could wait. Nothing when the file or folder does not exist or must not be seen:
// `error` says why.
std::optional<FileStatus> ReadFileStatus(const std::filesystem::path& path, std::error_code& error);
std::optional<FileStatus> ReadFileStatus(const std::filesystem::path& path);

// Nothing has that name, not even a link that leads nowhere. False where that cannot be told.
bool IsNothingThere(const std::filesystem::path& path);

// The bytes of a small file, or nothing when it is no file or cannot be read.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path);

// For messages and names.
std::string Utf8Of(const std::filesystem::path& path);
std::filesystem::path PathOfUtf8(std::string_view utf8);
