// Windows locks a mutex that is named after the file, as a lock of the file itself would end when it is replaced;
// elsewhere the file's folder is locked.
#include "platform/file_lock.h"

namespace {

constexpr int patienceMilliseconds = 5000;

}  // namespace

#ifdef _WIN32

#include <windows.h>

#include <cstdint>
#include <cwctype>
#include <string>

namespace {

// The same for every spelling of the path that differs in case only.
std::wstring MutexNameOf(const std::filesystem::path& file) {
    std::error_code error;
    std::filesystem::path path = std::filesystem::weakly_canonical(file, error);
    if (error) path = file;
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const wchar_t c : path.native()) hash = (hash ^ std::towlower(c)) * 0x100000001B3U;
    return L"Global\\QDXL7RA-file-" + std::to_wstring(hash);
}

}  // namespace

FileLock::FileLock(const std::filesystem::path& file)
    : mutex_(CreateMutexW(nullptr, FALSE, MutexNameOf(file).c_str())) {
    if (mutex_ == nullptr) return;
    const DWORD answer = WaitForSingleObject(mutex_, patienceMilliseconds);
    // Whoever ended while it had the mutex has left the file as it was, or replaced it whole.
    if (answer == WAIT_OBJECT_0 || answer == WAIT_ABANDONED) state_ = State::Held;
    if (answer == WAIT_TIMEOUT) state_ = State::Busy;
}

FileLock::~FileLock() {
    if (state_ == State::Held) ReleaseMutex(mutex_);
    if (mutex_ != nullptr) CloseHandle(mutex_);
}

#else

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

FileLock::FileLock(const std::filesystem::path& file) {
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
    folder_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder_ < 0) return;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(patienceMilliseconds);
    while (flock(folder_, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) return;
        if (std::chrono::steady_clock::now() > end) {
            state_ = State::Busy;
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    state_ = State::Held;
}

FileLock::~FileLock() {
    if (folder_ >= 0) close(folder_);
}

#endif
