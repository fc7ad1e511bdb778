// The POSIX functions that the C++ runtime calls inside a DLL of ours, and what it has taken, given back when the DLL
// is unloaded. A function that is lacking here would come from MinGW's thread library; linking fails then, as that
// brings its own of the others.
//
// Nothing here allocates memory or takes a handle. Locks are held for a few instructions or while a file is written,
// and two threads hardly ever want the same one, so those that wait sleep.
#include <windows.h>

#include <pthread.h>
#include <sched.h>
#include <time.h>

#include <atomic>
#include <cerrno>
#include <cstdint>

namespace __gnu_cxx {
// Frees the memory that the runtime keeps for exceptions when there is no other.
void __freeres();
}  // namespace __gnu_cxx

namespace {

// Values of threads are in fiber-local storage: what is left of them goes with the thread, or with the index. The
// runtime has one key, for all its variables of threads.
constexpr long mostKeys = 4;
pthread_key_t keys[mostKeys];
std::atomic<long> keyCount = 0;

struct ModuleEnd {
    ~ModuleEnd() {
        while (keyCount > 0) FlsFree(keys[--keyCount]);
        __gnu_cxx::__freeres();
    }
};
// Made before all other objects of the module, so destroyed after them.
[[gnu::init_priority(101)]] ModuleEnd moduleEnd;

void Wait() {
    if (SwitchToThread() == 0) Sleep(1);
}

// A mutex's value: how often it is locked and, in the lower half, by which thread. Free is 0, or one of the negative
// values that static mutexes of every kind begin with.
constexpr std::intptr_t onceLocked = std::intptr_t(1) << 32;

}  // namespace

extern "C" {

int pthread_key_create(pthread_key_t* key, void (*destroy)(void*)) {
    const DWORD index = keyCount < mostKeys ? FlsAlloc(destroy) : FLS_OUT_OF_INDEXES;
    if (index == FLS_OUT_OF_INDEXES) return EAGAIN;
    keys[keyCount++] = *key = index;
    return 0;
}

void* pthread_getspecific(pthread_key_t key) {
    // It clears the last error, which belongs to those who call the DLL.
    const DWORD error = GetLastError();
    void* const value = FlsGetValue(key);
    SetLastError(error);
    return value;
}

int pthread_setspecific(pthread_key_t key, const void* value) {
    return FlsSetValue(key, const_cast<void*>(value)) != 0 ? 0 : ENOMEM;
}

int pthread_once(pthread_once_t* once, void (*function)()) {
    enum : long { Untouched = PTHREAD_ONCE_INIT, UnderWay, Done };
    const std::atomic_ref<pthread_once_t> state(*once);
    pthread_once_t seen = Untouched;
    if (state.compare_exchange_strong(seen, UnderWay)) {
        function();
        state = Done;
    }
    while (state != Done) Wait();
    return 0;
}

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t*) {
    *mutex = 0;
    return 0;
}

int pthread_mutex_destroy(pthread_mutex_t*) {
    return 0;
}

// Every mutex may be locked again by the thread that has it.
int pthread_mutex_lock(pthread_mutex_t* mutex) {
    const std::atomic_ref<pthread_mutex_t> state(*mutex);
    const DWORD thisThread = GetCurrentThreadId();
    for (pthread_mutex_t seen = state;; seen = state) {
        if (seen > 0 && static_cast<DWORD>(seen) == thisThread) {
            state = seen + onceLocked;
            return 0;
        }
        if (seen <= 0 && state.compare_exchange_strong(seen, onceLocked + thisThread)) return 0;
        Wait();
    }
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) {
    const std::atomic_ref<pthread_mutex_t> state(*mutex);
    const pthread_mutex_t less = state - onceLocked;
    state = less < onceLocked ? 0 : less;
    return 0;
}

// May return early, as everywhere: whoever waits looks again.
int pthread_cond_wait(pthread_cond_t*, pthread_mutex_t* mutex) {
    pthread_mutex_unlock(mutex);
    Wait();
    return pthread_mutex_lock(mutex);
}

int pthread_cond_broadcast(pthread_cond_t*) {
    return 0;
}

int sched_yield() {
    SwitchToThread();
    return 0;
}

int nanosleep(const timespec* time, timespec*) {
    constexpr long nanosecondsPerMillisecond = 1'000'000;
    const long left = (time->tv_nsec + nanosecondsPerMillisecond - 1) / nanosecondsPerMillisecond;
    Sleep(static_cast<DWORD>(time->tv_sec) * 1000 + static_cast<DWORD>(left));
    return 0;
}

int clock_gettime(clockid_t clock, timespec* time) {
    constexpr std::int64_t unitsPerSecond = 10'000'000, nanosecondsPerUnit = 100;
    std::int64_t units = 0;
    if (clock == CLOCK_REALTIME) {
        constexpr std::int64_t secondsFrom1601To1970 = 11'644'473'600;
        FILETIME now;
        GetSystemTimeAsFileTime(&now);
        units = (static_cast<std::int64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime) -
                secondsFrom1601To1970 * unitsPerSecond;
    } else {
        LARGE_INTEGER count, countsPerSecond;
        QueryPerformanceCounter(&count);
        QueryPerformanceFrequency(&countsPerSecond);
        const std::int64_t frequency = countsPerSecond.QuadPart;
        units = count.QuadPart / frequency * unitsPerSecond + count.QuadPart % frequency * unitsPerSecond / frequency;
    }
    time->tv_sec = units / unitsPerSecond;
    time->tv_nsec = static_cast<long>(units % unitsPerSecond * nanosecondsPerUnit);
    return 0;
}
}
