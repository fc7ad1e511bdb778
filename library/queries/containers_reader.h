// Reading the containers below an address book, at every depth.
#pragma once

#include "frame/session.h"
#include "provider/table_cursor.h"

// The most address books that are read, and the most containers below one of them. A container that several others
// refer to is listed below each of them, so a few containers of a provider can stand for any number of places.
inline constexpr uint32_t mostContainers = 1024 * 1024;

// The hierarchy table of a container, which may be null: then there are no rows.
TableCursor ReadHierarchy(const Held<IABContainer>& container);

// Reads all containers below the address book into its `children`, depth first, unless that has been done. What cannot
// be opened or read is missing, and so is what comes after the most containers. A container that is its own ancestor is
// listed without children. Throws std::bad_alloc; then `children` is still null.
void ReadContainers(QueryContext& context, CAddressBookEntry& book);
