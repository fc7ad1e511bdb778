// The categories of an address book's cards as groups, where its settings ask for them.
#pragma once

#include <cstdint>
#include <vector>

#include "session/session.h"

// Reads the files and makes a group of each category in them, sorted by name, unless the session has these groups
// already. The result is the file of the groups, which the session holds.
std::uint32_t MakeCategoryGroups(Session& session, std::uint32_t node, const std::vector<std::uint32_t>& files);
