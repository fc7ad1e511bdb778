// The query behind GetDestinationDetails: the printable text of one destination.
#pragma once

#include "frame/session.h"

// Builds the text of the destination that the handle names. Without a buffer stores its length in `size`, in bytes
// without the NUL; else copies it with its NUL if `size` is at least its length. False when the handle names no
// destination or the text does not fit. Throws std::bad_alloc.
bool WriteDestinationDetails(QueryContext& context, void* entry, uint32_t& size, char* buffer);
