// Takes the place of the program's operator new, and tells by the depth of calls whose an allocation is.
#include "support/failing_allocations.h"

#include <cstdlib>
#include <new>

#include "support/library_test.h"

namespace {

unsigned remaining = 0;
bool lasts = false;
bool failed = false;

void* Allocate(std::size_t size) {
    if (exportDepth > 0 && TheScript().depth == 0) {
        if ((remaining != 0 && --remaining == 0) || (failed && lasts)) {
            failed = true;
            ++failedAllocations;
            return nullptr;
        }
    }
    return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

void FailAllocation(unsigned count, bool lasting) {
    remaining = count;
    lasts = lasting;
    failed = false;
}

bool HasAllocationFailed() {
    return failed;
}

void* operator new(std::size_t size) {
    void* memory = Allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
