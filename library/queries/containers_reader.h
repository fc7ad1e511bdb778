// Reading the containers below an address book, at every depth.
#pragma once

#include "frame/session.h"
#include "provider/table_cursor.h"

// The hierarchy table of a container, which may be null: then there are no rows.
TableCursor ReadHierarchy(const Held<IABContainer>& container);

// Reads all containers below the address book into its `children`, depth first, unless that has been done. What cannot
// be opened or read is missing. A container that is its own ancestor is listed without children. Throws std::bad_alloc;
// then `children` is still null.
void ReadContainers(QueryContext& context, CAddressBookEntry& book);
