// What this process has of what a program can run out of.
#pragma once

#include <cstddef>
#include <iosfwd>

// Of kinds that a system does not have, or does not tell of, there are 0.
struct ProcessResources {
    size_t threadIndexes = 0;  // that are still free, of TlsAlloc
    size_t fiberIndexes = 0;   // that are still free, of FlsAlloc
    size_t handles = 0;        // descriptors on the host
    size_t gdiObjects = 0;
    size_t userObjects = 0;
    size_t modules = 0;
    size_t heapBytes = 0;     // that are allocated, in all heaps
    size_t privateBytes = 0;  // of the process's own memory, heaps included, in whole pages
};

ProcessResources CountProcessResources();

std::ostream& operator<<(std::ostream& out, const ProcessResources& resources);
