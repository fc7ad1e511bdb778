// FileLock: while one lives, no other process or thread that asks for a lock of the same file gets one. It ends with
// its process, however that ends.
#pragma once

#include <filesystem>
#include <optional>

#include "platform/system/handles.h"

class FileLock {
  public:
    enum class State {
        Held,
        Busy,        // another one had it for longer than anybody needs
        Impossible,  // the file's folder is not there or must not be written, or its file system has no locks
    };

    // Waits for some seconds at most. The file need not exist. Of a link it is the file that it leads to that is to be
    // given, for who comes by another way.
    explicit FileLock(const std::filesystem::path& file);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    State GetState() const { return state_; }

    // Waits for a moment where somebody has the lock and would rather have nobody open the file. For who reads it.
    static void GiveWay(const std::filesystem::path& file);

  private:
    State state_ = State::Impossible;
#ifdef _WIN32
    Handle lock_;
#else
    std::optional<Descriptor> folder_;
#endif
};
