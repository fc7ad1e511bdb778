// The system calls behind files.h; everything else in this folder's callers is std::filesystem.
#include "platform/files.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

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

bool WriteAndFlush(const fs::path& path, std::string_view contents) {
    const Handle file = Open(path, GENERIC_WRITE, CREATE_ALWAYS);
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
    const FILETIME& time = information.ftLastWriteTime;
    return FileStatus{information.dwVolumeSerialNumber, Join(information.nFileIndexHigh, information.nFileIndexLow),
                      Join(information.nFileSizeHigh, information.nFileSizeLow),
                      static_cast<std::int64_t>(Join(time.dwHighDateTime, time.dwLowDateTime))};
}

#else

namespace {

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

bool WriteAndFlush(const fs::path& path, std::string_view contents) {
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    while (file.Get() >= 0 && !contents.empty()) {
        const ssize_t written = write(file.Get(), contents.data(), contents.size());
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
    if (stat(path.c_str(), &information) != 0) return std::nullopt;
    return FileStatus{information.st_dev, information.st_ino, static_cast<std::uint64_t>(information.st_size),
                      static_cast<std::int64_t>(information.st_mtim.tv_sec) * 1000000000 + information.st_mtim.tv_nsec};
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
    fs::path temporary = target;
    temporary += "." + std::to_string(ProcessNumber()) + ".new";
    if (WriteAndFlush(temporary, contents) && RenameOver(temporary, target)) return true;
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
