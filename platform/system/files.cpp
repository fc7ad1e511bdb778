// The system calls behind files.h; everything else in this folder's callers is std::filesystem.
#include "platform/system/files.h"

#include <iterator>

#include "platform/system/input_file.h"

#ifdef _WIN32
#include "platform/system/device_names.h"
#include "platform/system/handles.h"
#else
#include <ctime>

#include <sys/stat.h>
#endif

namespace fs = std::filesystem;

namespace {

// The coarsest time of a file system: FAT counts in steps of two seconds. One that counts parts of a second does so in
// steps of the system's clock, some hundredths of a second at most.
constexpr std::int64_t coarsestStepSeconds = 2;
constexpr std::int64_t finerStepsPerSecond = 10;

bool IsFresh(std::int64_t modified, std::int64_t now, std::int64_t unitsPerSecond) {
    const bool hasParts = modified % unitsPerSecond != 0;
    const std::int64_t step = hasParts ? unitsPerSecond / finerStepsPerSecond : coarsestStepSeconds * unitsPerSecond;
    return modified > now - step && modified < now + step;
}

}  // namespace

#ifdef _WIN32

namespace {

std::uint64_t Join(DWORD high, DWORD low) {
    return static_cast<std::uint64_t>(high) << 32 | low;
}

std::int64_t Join(const FILETIME& time) {
    return static_cast<std::int64_t>(Join(time.dwHighDateTime, time.dwLowDateTime));
}

}  // namespace

std::optional<FileStatus> ReadFileStatus(const fs::path& path, std::error_code& error) {
    if (IsDeviceName(path.filename().native())) return FileStatus{.kind = FileStatus::Kind::Other};
    const Handle file = OwnedHandle(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (file && GetFileType(file.get()) != FILE_TYPE_DISK) return FileStatus{.kind = FileStatus::Kind::Other};
    BY_HANDLE_FILE_INFORMATION information;
    if (!file || !GetFileInformationByHandle(file.get(), &information)) {
        error.assign(static_cast<int>(GetLastError()), std::system_category());
        return std::nullopt;
    }
    const bool isFolder = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    const std::int64_t modified = Join(information.ftLastWriteTime);
    return FileStatus{isFolder ? FileStatus::Kind::Folder : FileStatus::Kind::File,
                      information.dwVolumeSerialNumber,
                      Join(information.nFileIndexHigh, information.nFileIndexLow),
                      Join(information.nFileSizeHigh, information.nFileSizeLow),
                      modified,
                      IsFresh(modified, Join(now), 10'000'000)};
}

// The system says of a path that is too long for it that there is nothing.
bool IsNothingThere(const fs::path& path) {
    if (IsDeviceName(path.filename().native()) || path.native().size() >= MAX_PATH) return false;
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) return false;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

#else

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

std::int64_t Nanoseconds(const timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * nanosecondsPerSecond + time.tv_nsec;
}

}  // namespace

std::optional<FileStatus> ReadFileStatus(const fs::path& path, std::error_code& error) {
    struct stat information = {};
    timespec now = {};
    if (stat(path.c_str(), &information) != 0 || clock_gettime(CLOCK_REALTIME, &now) != 0) {
        error.assign(errno, std::generic_category());
        return std::nullopt;
    }
    const FileStatus::Kind kind = S_ISREG(information.st_mode)   ? FileStatus::Kind::File
                                  : S_ISDIR(information.st_mode) ? FileStatus::Kind::Folder
                                                                 : FileStatus::Kind::Other;
    const std::int64_t modified = Nanoseconds(information.st_mtim);
    return FileStatus{kind,
                      information.st_dev,
                      information.st_ino,
                      static_cast<std::uint64_t>(information.st_size),
                      modified,
                      IsFresh(modified, Nanoseconds(now), nanosecondsPerSecond)};
}

bool IsNothingThere(const fs::path& path) {
    struct stat information = {};
    return lstat(path.c_str(), &information) != 0 && errno == ENOENT;
}

#endif

std::optional<FileStatus> ReadFileStatus(const fs::path& path) {
    std::error_code ignored;
    return ReadFileStatus(path, ignored);
}

std::optional<std::string> ReadWholeFile(const fs::path& path) {
    InputFile file(path);
    if (!file.IsOpen()) return std::nullopt;
    std::string bytes(std::istreambuf_iterator<char>(&file), {});
    if (file.Error()) return std::nullopt;
    return bytes;
}

std::string Utf8Of(const fs::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

fs::path PathOfUtf8(std::string_view utf8) {
    return fs::path(std::u8string(utf8.begin(), utf8.end()));
}
