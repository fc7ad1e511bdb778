// Reading the direct members of a distribution list.
#pragma once

#include "frame/session.h"

// The members of a distribution list of the context's destination list: CDistributionListDetails::CDetails in row
// order, read when they are first asked for and then kept. What cannot be read is missing and is not tried again.
// Throws std::bad_alloc; then nothing is kept.
const CObList& ReadMembers(QueryContext& context, CDistributionListDetails& list);
