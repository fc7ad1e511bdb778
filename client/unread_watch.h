// UnreadWatch: whether what was printed is all. The library delivers what its provider could read and does not tell
// what is missing; the provider counts it.
#pragma once

#include "client/loaded_module.h"
#include "qdxl7ra.h"

class UnreadWatch {
  public:
    // The provider beside this program stays loaded while it lives. One of another maker counts nothing.
    UnreadWatch();
    // Throws ClientError when something could not be read since then.
    void RequireAll() const;

  private:
    ModuleHandle provider_;
    VOKCountUnreadFunction* count_ = nullptr;
};
