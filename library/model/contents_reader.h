// Reading one address book's contents table into a destination list.
#pragma once

#include "frame/session.h"

// Reads the destinations of the address book with that identifier into the empty list, in table order. What cannot be
// read is missing; an address book that cannot be opened has none. Sets the context's contents style. Throws
// std::bad_alloc.
void ReadContainerContents(QueryContext& context, const EntryId* containerId, DestinationList& list);
