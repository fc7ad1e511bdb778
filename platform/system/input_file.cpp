// It is asked what a file is before it is opened and again of what was opened: another one may have taken its name.
#include "platform/system/input_file.h"

#include <algorithm>
#include <climits>

#include "platform/system/files.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the buffer is written before it is read
InputFile::InputFile(const std::filesystem::path& path) {
    const std::optional<FileStatus> status = ReadFileStatus(path, error_);
    isNoFile_ = status && status->kind != FileStatus::Kind::File;
    if (!status || isNoFile_) return;
    size_ = status->size;
#ifdef _WIN32
    file_ = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file_ == INVALID_HANDLE_VALUE) {
        file_ = nullptr;
        error_.assign(static_cast<int>(GetLastError()), std::system_category());
        return;
    }
    isNoFile_ = GetFileType(file_) != FILE_TYPE_DISK;
#else
    file_ = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat information = {};
    if (file_ < 0 || fstat(file_, &information) != 0) {
        error_.assign(errno, std::generic_category());
        return;
    }
    isNoFile_ = !S_ISREG(information.st_mode);
#endif
    isOpen_ = !isNoFile_;
}

InputFile::~InputFile() {
#ifdef _WIN32
    if (file_ != nullptr) CloseHandle(file_);
#else
    if (file_ >= 0) close(file_);
#endif
}

size_t InputFile::ReadSome(char* bytes, size_t count) {
    if (!isOpen_ || error_) return 0;
#ifdef _WIN32
    DWORD read = 0;
    if (!ReadFile(file_, bytes, static_cast<DWORD>(std::min<size_t>(count, INT_MAX)), &read, nullptr))
        error_.assign(static_cast<int>(GetLastError()), std::system_category());
    return read;
#else
    ssize_t got = -1;
    do {
        got = read(file_, bytes, std::min<size_t>(count, INT_MAX));
    } while (got < 0 && errno == EINTR);
    if (got < 0) error_.assign(errno, std::generic_category());
    return static_cast<size_t>(std::max<ssize_t>(got, 0));
#endif
}

InputFile::int_type InputFile::underflow() {
    const size_t count = ReadSome(buffer_.data(), buffer_.size());
    setg(buffer_.data(), buffer_.data(), buffer_.data() + count);
    return count == 0 ? traits_type::eof() : traits_type::to_int_type(buffer_.front());
}

// Past the buffer: large pieces go where they are wanted.
std::streamsize InputFile::xsgetn(char* bytes, std::streamsize count) {
    const std::streamsize buffered = std::min<std::streamsize>(count, egptr() - gptr());
    std::copy_n(gptr(), buffered, bytes);
    setg(eback(), gptr() + buffered, egptr());
    std::streamsize taken = buffered;
    while (taken < count) {
        const size_t more = ReadSome(bytes + taken, static_cast<size_t>(count - taken));
        if (more == 0) break;
        taken += static_cast<std::streamsize>(more);
    }
    return taken;
}
