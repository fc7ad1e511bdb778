// What library_bench asks of its provider beyond the provider's own entry points.
#pragma once

#include "provider/mapi_types.h"

extern "C" {
// The number of rows of the one address book.
using SetBenchRowsFunction = void(ULONG rowCount);
// The prebuilt rows that every batch consists of.
using GetBenchBatchFunction = const SRowSet*();
}
