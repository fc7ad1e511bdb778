// What library_bench asks of its provider beyond the provider's own entry points.
#pragma once

#include "mapi/mapi_types.h"

// The one address book that the provider shows. Set before a session is opened.
struct BenchBook {
    ULONG rows = 0;                // of the contents table
    HRESULT contentsStyle = S_OK;  // 4: every person is a fax entry, which is opened for its plain name
    ULONG containers = 0;          // below the address book, in all
    ULONG branching = 1;           // how many of them a container holds, as long as there are
    ULONG members = 0;             // of every group
    unsigned long long calls = 0;  // made of the provider's objects so far
};

extern "C" {
using GetBenchBookFunction = BenchBook*();
// The prebuilt rows that every contents table repeats. Valid until the book's style changes.
using GetBenchBatchFunction = const SRowSet*();
}
