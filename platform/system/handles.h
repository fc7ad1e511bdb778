// What the system calls an open file, closed when its owner goes.
#pragma once

#ifdef _WIN32

#include <windows.h>

#include <filesystem>
#include <memory>

struct HandleCloser {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

// Of what CreateFileW gives: null for no file.
inline Handle OwnedHandle(HANDLE handle) {
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

// Whether a file could not be had because of what others do with it just now. One that is deleted while others have it
// open keeps its name for so long, and nobody gets anything of it.
inline bool IsHeldByOthers(const std::filesystem::path& path, DWORD error) {
    if (error == ERROR_ACCESS_DENIED)
        return GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES && GetLastError() == ERROR_ACCESS_DENIED;
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE;
}

#else

#include <unistd.h>

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    // Negative where there is none.
    int Get() const { return number_; }

  private:
    int number_;
};

#endif
