// Indexes of threads and fibers can be counted by taking all that are left only.
#include "support/process_resources.h"

#include <ostream>

#ifdef _WIN32

#include <windows.h>

#include <tlhelp32.h>

#include <bit>
#include <vector>

namespace {

template <class Allocate, class Free>
size_t CountFree(Allocate allocate, Free free, DWORD none) {
    std::vector<DWORD> indexes;
    indexes.reserve(8192);
    for (DWORD index = allocate(); index != none; index = allocate()) indexes.push_back(index);
    for (const DWORD index : indexes) free(index);
    return indexes.size();
}

// From the table of all handles of the system: Wine does not count those of one process.
size_t CountHandles() {
    struct Handle {
        void* object;
        ULONG_PTR process;
        ULONG_PTR value;
        ULONG more[4];
    };
    struct Handles {
        ULONG_PTR count;
        ULONG_PTR reserved;
        Handle entries[1];
    };
    using QueryFunction = LONG WINAPI(ULONG kind, void* answer, ULONG size, ULONG* answerSize);
    constexpr ULONG extendedHandleInformation = 64;
    const auto query =
        std::bit_cast<QueryFunction*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "NtQuerySystemInformation"));
    static std::vector<ULONG_PTR> memory(1 << 20);
    ULONG size = 0;
    if (query(extendedHandleInformation, memory.data(), static_cast<ULONG>(memory.size() * sizeof memory[0]), &size) <
        0)
        return 0;
    const auto* const handles = reinterpret_cast<const Handles*>(memory.data());
    size_t count = 0;
    for (ULONG_PTR i = 0; i < handles->count; ++i) count += handles->entries[i].process == GetCurrentProcessId();
    return count;
}

size_t CountModules() {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, 0);
    MODULEENTRY32 module = {};
    module.dwSize = sizeof module;
    size_t count = 0;
    for (BOOL more = Module32First(snapshot, &module); more; more = Module32Next(snapshot, &module)) ++count;
    CloseHandle(snapshot);
    return count;
}

size_t CountHeapBytes() {
    HANDLE heaps[64];
    const DWORD heapCount = GetProcessHeaps(64, heaps);
    size_t bytes = 0;
    for (DWORD i = 0; i < heapCount; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heaps[i], &entry))
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

// What Windows gives as PrivateUsage and Wine does not: all committed memory that is no module's and shared with
// nobody.
size_t CountPrivateBytes() {
    size_t bytes = 0;
    const char* address = nullptr;
    MEMORY_BASIC_INFORMATION region;
    for (; VirtualQuery(address, &region, sizeof region) != 0; address += region.RegionSize)
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
    return bytes;
}

}  // namespace

ProcessResources CountProcessResources() {
    ProcessResources resources;
    resources.threadIndexes = CountFree(TlsAlloc, TlsFree, TLS_OUT_OF_INDEXES);
    resources.fiberIndexes = CountFree([] { return FlsAlloc(nullptr); }, FlsFree, FLS_OUT_OF_INDEXES);
    resources.handles = CountHandles();
    resources.gdiObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    resources.userObjects = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    resources.modules = CountModules();
    resources.heapBytes = CountHeapBytes();
    resources.privateBytes = CountPrivateBytes();
    return resources;
}

#else

#include <link.h>
#include <malloc.h>

#include <filesystem>

ProcessResources CountProcessResources() {
    ProcessResources resources;
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    resources.handles = static_cast<size_t>(std::distance(begin(descriptors), end(descriptors)));
    dl_iterate_phdr([](dl_phdr_info*, size_t, void* count) { return ++*static_cast<size_t*>(count), 0; },
                    &resources.modules);
    const struct mallinfo2 heap = mallinfo2();
    resources.heapBytes = heap.uordblks + heap.hblkhd;
    return resources;
}

#endif

std::ostream& operator<<(std::ostream& out, const ProcessResources& resources) {
    return out << resources.threadIndexes << " thread and " << resources.fiberIndexes << " fiber indexes free, "
               << resources.handles << " handles, " << resources.gdiObjects << " GDI and " << resources.userObjects
               << " USER objects, " << resources.modules << " modules, " << resources.heapBytes << " bytes in heaps, "
               << resources.privateBytes << " private bytes";
}
