// Windows locks a file beside the file, which is there for so long only and which another user cannot have made first,
// as he could a mutex; elsewhere the file's folder is locked. A lock of the file itself would end when it is replaced.
#include "platform/system/file_lock.h"

#include "platform/system/patience.h"

#ifdef _WIN32

namespace {

std::filesystem::path LockNameOf(const std::filesystem::path& file) {
    std::filesystem::path name = file;
    name += ".qdxl7ra-lock";
    return name;
}

}  // namespace

FileLock::FileLock(const std::filesystem::path& file) {
    const std::filesystem::path name = LockNameOf(file);
    TryPatiently([&] {
        lock_ = OwnedHandle(CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                                        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
        if (lock_) {
            state_ = State::Held;
            return Attempt::Succeeded;
        }
        const bool isHeld = IsHeldByOthers(name, GetLastError());
        state_ = isHeld ? State::Busy : State::Impossible;
        return isHeld ? Attempt::InTheWay : Attempt::Failed;
    });
}

// Older systems, and many servers, replace no file that anybody has open.
void FileLock::GiveWay(const std::filesystem::path& file) {
    constexpr std::chrono::milliseconds moment{5};
    if (GetFileAttributesW(LockNameOf(file).c_str()) != INVALID_FILE_ATTRIBUTES) std::this_thread::sleep_for(moment);
}

#else

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

FileLock::FileLock(const std::filesystem::path& file) {
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
    folder_.emplace(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder_->Get() < 0) return;
    TryPatiently([&] {
        if (flock(folder_->Get(), LOCK_EX | LOCK_NB) == 0) {
            state_ = State::Held;
            return Attempt::Succeeded;
        }
        const bool isHeld = errno == EWOULDBLOCK || errno == EINTR;
        state_ = isHeld ? State::Busy : State::Impossible;
        return isHeld ? Attempt::InTheWay : Attempt::Failed;
    });
}

void FileLock::GiveWay(const std::filesystem::path&) {}

#endif
