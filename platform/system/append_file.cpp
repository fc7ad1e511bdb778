// What is written is written in one piece, so that the lines of several programs do not mix.
#include "platform/system/append_file.h"

#ifdef _WIN32

#include <windows.h>

#include "platform/system/device_names.h"

namespace {

std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

bool IsWaitingDevice(const std::filesystem::path& path) {
    return IsDeviceName(path.filename().native()) && path != L"NUL" && path != L"CON";
}

}  // namespace

std::error_code AppendToFile(const std::filesystem::path& path, std::string_view bytes) {
    const std::error_code noFile(ERROR_NOT_SUPPORTED, std::system_category());
    if (IsWaitingDevice(path)) return noFile;
    const HANDLE file =
        CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return LastError();
    std::error_code error;
    DWORD written = 0;
    if (GetFileType(file) == FILE_TYPE_PIPE)
        error = noFile;
    else if (!WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
        error = LastError();
    CloseHandle(file);
    return error;
}

#else

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>

namespace {

constexpr mode_t forItsUser = 0600;

std::error_code LastError() {
    return {errno, std::generic_category()};
}

bool IsOfAnother(const struct stat& file) {
    return file.st_uid != geteuid() && file.st_uid != 0;
}

bool IsForEverybody(const std::filesystem::path& folder) {
    struct stat information = {};
    const char* const path = folder.empty() ? "." : folder.c_str();
    return stat(path, &information) == 0 && (information.st_mode & S_IWOTH) != 0 &&
           (information.st_mode & S_ISVTX) != 0;
}

class File {
  public:
    explicit File(const std::filesystem::path& path) {
        constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
        number_ = open(path.c_str(), flags | O_NOFOLLOW, forItsUser);
        struct stat link = {};
        if (number_ >= 0 || errno != ELOOP || lstat(path.c_str(), &link) != 0) return;
        errno = EACCES;
        if (!IsOfAnother(link)) number_ = open(path.c_str(), flags, forItsUser);
    }
    ~File() {
        if (number_ >= 0) close(number_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    int Number() const { return number_; }

  private:
    int number_;
};

// While one lives, writing to a pipe whose reader has gone is an error and does not end the program.
class PipeSignalHold {
  public:
    PipeSignalHold() {
        sigemptyset(&signal_);
        sigaddset(&signal_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &signal_, &before_);
    }
    ~PipeSignalHold() {
        const timespec now = {};
        while (!wasPending_ && sigtimedwait(&signal_, nullptr, &now) < 0 && errno == EINTR) {
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    PipeSignalHold(const PipeSignalHold&) = delete;
    PipeSignalHold& operator=(const PipeSignalHold&) = delete;

  private:
    sigset_t signal_ = {};
    sigset_t before_ = {};
    bool wasPending_ = false;
};

}  // namespace

std::error_code AppendToFile(const std::filesystem::path& path, std::string_view bytes) {
    const File file(path);
    struct stat information = {};
    if (file.Number() < 0 || fstat(file.Number(), &information) != 0) return LastError();
    if (IsOfAnother(information) && IsForEverybody(path.parent_path()))
        return std::make_error_code(std::errc::permission_denied);
    const PipeSignalHold hold;
    const ssize_t written = write(file.Number(), bytes.data(), bytes.size());
    if (written < 0) return LastError();
    // A full disk takes what it can.
    const bool isWhole = static_cast<size_t>(written) == bytes.size();
    return isWhole ? std::error_code() : std::make_error_code(std::errc::no_space_on_device);
}

#endif
