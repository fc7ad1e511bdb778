// The query behind GetAddressBookList: the address-book tree, counted or written as records.
#pragma once

#include "frame/session.h"
#include "qdxl7rc.h"

// Lists the address books, read afresh when neither parentEntry nor records are given, or all containers below the
// address book that parentEntry names. Counts into `count` without records; else `count` is the capacity. False when
// there are no address books or the records do not fit. Throws std::bad_alloc.
bool ListAddressBooks(QueryContext& context, uint32_t reserved, const void* parentEntry, uint32_t& count,
                      const RecordListDescriptor* records);
