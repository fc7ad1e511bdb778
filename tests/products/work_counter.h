// What a piece of work costs: bytes of memory, by taking the place of the program's malloc, and instructions, where the
// program runs under callgrind. Neither depends on how busy the machine is, nor on when it runs: the clock stands
// still.
#pragma once

#include <cstddef>
#include <string>

struct Memory {
    size_t taken = 0;  // bytes in all
    size_t most = 0;   // bytes at one time, beside what was there before
};

// Counts from its making to Stop. One at a time.
class WorkCounter {
  public:
    WorkCounter();
    WorkCounter(const WorkCounter&) = delete;
    WorkCounter& operator=(const WorkCounter&) = delete;

    // Callgrind writes the instructions down under the name, or forgets them where there is none.
    Memory Stop(const std::string& name);
};

// Memory that is not counted: that of the caller's records.
void* TakeUncounted(size_t bytes);
void GiveBackUncounted(void* memory);
