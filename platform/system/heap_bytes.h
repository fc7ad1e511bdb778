// The memory that this process has in use.
#pragma once

#include <cstddef>

// Bytes of the heap in use on the host, private bytes of the process on Windows.
size_t GetHeapBytes();
