// What std::filesystem does not give: a file's identity and age in one question, and replacing a file so that a crash
// leaves the old one or the new one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

// Two equal values are the same file in the same state, as far as the system can tell.
struct FileStatus {
    std::uint64_t volume = 0;
    std::uint64_t index = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0;  // in the system's own unit
    // Changed so shortly before it was asked for that a further change need not show in the time of the last one.
    bool isFresh = false;

    bool IsSameFileAs(const FileStatus& other) const { return volume == other.volume && index == other.index; }
    friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

// Follows links. Nothing when the file or folder does not exist or must not be seen.
std::optional<FileStatus> ReadFileStatus(const std::filesystem::path& path);

// The bytes of a small file, or nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path);

// Writes a new file beside the file, flushes to the disk and renames; makes missing folders. False when it cannot, then
// the file is as it was.
bool ReplaceFile(const std::filesystem::path& path, std::string_view contents);

// For messages and names.
std::string Utf8Of(const std::filesystem::path& path);
std::filesystem::path PathOfUtf8(std::string_view utf8);
