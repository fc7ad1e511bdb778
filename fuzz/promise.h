// What a fuzz target promises.
#pragma once

#include <cstdio>
#include <cstdlib>

// Ends the program where a promise is broken: a fuzzer reports that with the input.
inline void Promise(bool isKept, const char* promise) {
    if (isKept) return;
    std::fprintf(stderr, "broken: %s\n", promise);
    std::abort();
}
