// The query behind GetDestinationList: the destinations of one address book, counted or written as records.
#pragma once

#include "frame/session.h"
#include "qdxl7rc.h"

// Reads the destinations of an address book or container afresh and adds the number of their records to `count`. False,
// and nothing done, when the entry is a destination. Throws std::bad_alloc; then there is no destination list.
bool CountDestinations(QueryContext& context, const void* addressBookEntry, uint32_t& count);

// Writes the destinations that were read last into the caller's records, of whose addresses there are `capacity`. False
// when they do not fit.
bool FillDestinations(const QueryContext& context, uint32_t capacity, const RecordListDescriptor& records);
