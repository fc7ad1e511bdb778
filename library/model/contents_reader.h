// Reading one address book's contents table into a destination list.
#pragma once

#include <memory>

#include "frame/session.h"

// The destinations of the address book with that identifier, in table order. What cannot be read is missing; an address
// book that cannot be opened gives an empty list. Sets the context's contents style. The list uses the given blocks.
// Throws std::bad_alloc.
std::unique_ptr<DestinationList> ReadContainerContents(QueryContext& context, const EntryId* containerId,
                                                       MemoryBlocks&& recycled);
