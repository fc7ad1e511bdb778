// The system calls behind files.h; everything else in this folder's callers is std::filesystem.
#include "platform/files.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>

#include "platform/interrupt_hold.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace {

// The coarsest time of a file system: FAT counts in steps of two seconds.
constexpr std::int64_t coarsestStepSeconds = 2;

bool IsFresh(std::int64_t modified, std::int64_t now, std::int64_t unitsPerSecond) {
    const std::int64_t step = coarsestStepSeconds * unitsPerSecond;
    return modified > now - step && modified < now + step;
}

}  // namespace

#ifdef _WIN32

namespace {

struct HandleCloser {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

Handle Open(const fs::path& path, DWORD access, DWORD disposition) {
    const HANDLE handle = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, disposition, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

std::uint64_t Join(DWORD high, DWORD low) {
    return static_cast<std::uint64_t>(high) << 32 | low;
}

std::int64_t Join(const FILETIME& time) {
    return static_cast<std::int64_t>(Join(time.dwHighDateTime, time.dwLowDateTime));
}

bool WriteNewFile(const fs::path& path, std::string_view contents) {
    const Handle file = Open(path, GENERIC_WRITE, CREATE_NEW);
    DWORD written = 0;
    return file && WriteFile(file.get(), contents.data(), static_cast<DWORD>(contents.size()), &written, nullptr) &&
           written == contents.size() && FlushFileBuffers(file.get());
}

bool RenameOver(const fs::path& from, const fs::path& to) {
    return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

unsigned long ProcessNumber() {
    return GetCurrentProcessId();
}

}  // namespace

std::optional<FileStatus> ReadFileStatus(const fs::path& path) {
    const Handle file = Open(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    BY_HANDLE_FILE_INFORMATION information;
    if (!file || !GetFileInformationByHandle(file.get(), &information)) return std::nullopt;
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    const std::int64_t modified = Join(information.ftLastWriteTime);
    return FileStatus{information.dwVolumeSerialNumber, Join(information.nFileIndexHigh, information.nFileIndexLow),
                      Join(information.nFileSizeHigh, information.nFileSizeLow), modified,
                      IsFresh(modified, Join(now), 10'000'000)};
}

#else

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

std::int64_t Nanoseconds(const timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * nanosecondsPerSecond + time.tv_nsec;
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Get() const { return number_; }

  private:
    int number_;
};

bool WriteNewFile(const fs::path& path, std::string_view contents) {
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    while (file.Get() >= 0 && !contents.empty()) {
        const ssize_t written = write(file.Get(), contents.data(), contents.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        contents.remove_prefix(static_cast<size_t>(written));
    }
    return file.Get() >= 0 && fsync(file.Get()) == 0;
}

bool RenameOver(const fs::path& from, const fs::path& to) {
    if (rename(from.c_str(), to.c_str()) != 0) return false;
    // The new name is on the disk only when its folder is.
    const Descriptor folder(open(to.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Get() >= 0) fsync(folder.Get());
    return true;
}

long ProcessNumber() {
    return getpid();
}

}  // namespace

std::optional<FileStatus> ReadFileStatus(const fs::path& path) {
    struct stat information = {};
    timespec now = {};
    if (stat(path.c_str(), &information) != 0 || clock_gettime(CLOCK_REALTIME, &now) != 0) return std::nullopt;
    const std::int64_t modified = Nanoseconds(information.st_mtim);
    return FileStatus{information.st_dev, information.st_ino, static_cast<std::uint64_t>(information.st_size), modified,
                      IsFresh(modified, Nanoseconds(now), nanosecondsPerSecond)};
}

#endif

std::optional<std::string> ReadWholeFile(const fs::path& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (file.bad()) return std::nullopt;
    return bytes;
}

bool ReplaceFile(const fs::path& path, std::string_view contents) {
    std::error_code error;
    const fs::path target = fs::exists(path, error) ? fs::canonical(path, error) : path;
    if (error) return false;
    if (target.has_parent_path()) fs::create_directories(target.parent_path(), error);
    if (error) return false;
    const InterruptHold hold;
    // A file of that name is somebody else's, or what a crash has left.
    fs::path temporary;
    for (int attempt = 0; temporary.empty() || fs::exists(fs::symlink_status(temporary, error)); ++attempt) {
        temporary = target;
        temporary += "." + std::to_string(ProcessNumber()) + "-" + std::to_string(attempt) + ".new";
    }
    if (WriteNewFile(temporary, contents) && RenameOver(temporary, target)) return true;
    fs::remove(temporary, error);
    return false;
}

std::string Utf8Of(const fs::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

fs::path PathOfUtf8(std::string_view utf8) {
    return fs::path(std::u8string(utf8.begin(), utf8.end()));
}
