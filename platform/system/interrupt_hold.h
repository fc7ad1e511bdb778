// InterruptHold: while one lives, Ctrl-C, a closed terminal or a request to end does not end the process; it does so
// right after. For the moments in which a file is being replaced, so that no half of it is left. Held by one thread at
// a time; other threads of the program may be interrupted as ever.
#pragma once

#ifndef _WIN32
#include <csignal>
#endif

class InterruptHold {
  public:
    InterruptHold();
    ~InterruptHold();
    InterruptHold(const InterruptHold&) = delete;
    InterruptHold& operator=(const InterruptHold&) = delete;

#ifndef _WIN32
  private:
    sigset_t before_ = {};
#endif
};
