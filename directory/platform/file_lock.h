// FileLock: while one lives, no other process or thread that asks for a lock of the same file gets one. Nothing of it
// is on the disk, and it ends with its process, however that ends.
#pragma once

#include <filesystem>

class FileLock {
  public:
    enum class State {
        Held,
        Busy,        // another one had it for longer than anybody needs
        Impossible,  // the file's folder is not there, or its file system has no locks
    };

    // Waits for a few seconds at most.
    explicit FileLock(const std::filesystem::path& file);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    State GetState() const { return state_; }

  private:
    State state_ = State::Impossible;
#ifdef _WIN32
    void* mutex_ = nullptr;
#else
    int folder_ = -1;
#endif
};
