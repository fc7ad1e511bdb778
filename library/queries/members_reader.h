// Reading the direct members of a distribution list.
#pragma once

#include "frame/session.h"

// The members of a distribution list of any session: CDistributionListDetails::CDetails in row order, read through the
// context's session when they are first asked for and then kept with the list. What cannot be read is missing and is
// not tried again. Throws std::bad_alloc; then nothing is kept.
const CObList& ReadMembers(const QueryContext& context, CDistributionListDetails& list);
