// As each system counts it.
#include "platform/system/heap_bytes.h"

#ifdef _WIN32
#include <windows.h>

#include <psapi.h>

size_t GetHeapBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}
#else
#include <malloc.h>

size_t GetHeapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}
#endif
