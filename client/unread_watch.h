// UnreadWatch: whether what was printed is all. The library delivers what its provider could read and does not tell
// what is missing; the provider counts it.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

#include "qdxl7ra.h"

class UnreadWatch {
  public:
    // The provider beside this program stays loaded while it lives. One of another maker counts nothing.
    UnreadWatch();
    // Throws ClientError when something could not be read since then.
    void RequireAll() const;

  private:
    struct Closer {
        void operator()(HMODULE loaded) const { FreeLibrary(loaded); }
    };

    std::unique_ptr<std::remove_pointer_t<HMODULE>, Closer> provider_;
    VOKCountUnreadFunction* count_ = nullptr;
};
