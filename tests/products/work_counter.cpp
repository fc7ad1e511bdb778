// The program's own malloc and clock, which the shared libraries use as well: the program exports its symbols.
#include "work_counter.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>

#include <malloc.h>
#include <valgrind/callgrind.h>

extern "C" {
void* __libc_malloc(size_t bytes);
void* __libc_calloc(size_t count, size_t bytes);
void* __libc_realloc(void* memory, size_t bytes);
void* __libc_memalign(size_t alignment, size_t bytes);
void __libc_free(void* memory);
}

namespace {

bool isCounting = false;
size_t taken = 0;
std::ptrdiff_t inUse = 0;
std::ptrdiff_t mostInUse = 0;

void* Count(void* memory) {
    if (isCounting && memory != nullptr) {
        taken += malloc_usable_size(memory);
        inUse += static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
        mostInUse = std::max(mostInUse, inUse);
    }
    return memory;
}

void CountBack(void* memory) {
    if (isCounting && memory != nullptr) inUse -= static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
}

}  // namespace

extern "C" {

void* malloc(size_t bytes) {
    return Count(__libc_malloc(bytes));
}

void* calloc(size_t count, size_t bytes) {
    return Count(__libc_calloc(count, bytes));
}

void* realloc(void* memory, size_t bytes) {
    CountBack(memory);
    return Count(__libc_realloc(memory, bytes));
}

void* aligned_alloc(size_t alignment, size_t bytes) {
    return Count(__libc_memalign(alignment, bytes));
}

int posix_memalign(void** memory, size_t alignment, size_t bytes) {
    *memory = Count(__libc_memalign(alignment, bytes));
    return *memory == nullptr ? ENOMEM : 0;
}

void free(void* memory) {
    CountBack(memory);
    __libc_free(memory);
}

// Long after every file was written: one that was changed a moment ago is read again and again.
int clock_gettime(clockid_t, timespec* now) {
    now->tv_sec = 4'000'000'000;
    now->tv_nsec = 0;
    return 0;
}
}

WorkCounter::WorkCounter() {
    taken = 0;
    inUse = 0;
    mostInUse = 0;
    isCounting = true;
    CALLGRIND_TOGGLE_COLLECT;
}

Memory WorkCounter::Stop(const std::string& name) {
    CALLGRIND_TOGGLE_COLLECT;
    isCounting = false;
    if (name.empty())
        CALLGRIND_ZERO_STATS;
    else
        CALLGRIND_DUMP_STATS_AT(name.c_str());
    return {taken, static_cast<size_t>(mostInUse)};
}

void* TakeUncounted(size_t bytes) {
    return __libc_malloc(bytes);
}

void GiveBackUncounted(void* memory) {
    __libc_free(memory);
}
