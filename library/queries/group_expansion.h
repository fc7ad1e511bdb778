// The query behind GetDestinationsInGroup: the members of a distribution list as fax destinations.
#pragma once

#include "frame/session.h"
#include "qdxl7rc.h"

// Without records stores the number of recipients of the expanded group in `count`; else writes one record for each fax
// destination, of which there is room for `count`. A group that cannot be expanded, and a handle that names no
// destination, give nothing. False when the records do not fit. Throws std::bad_alloc.
bool ExpandGroup(const QueryContext& context, uint32_t reserved, void* group, uint32_t& count,
                 const RecordListDescriptor* records);
