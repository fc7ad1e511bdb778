// The categories of an address book's cards as groups, where its settings ask for them.
#pragma once

#include <cstdint>
#include <vector>

#include "books/session.h"

// Makes a group of each category in the files, sorted by name, and gives the groups to the session. The result is their
// file; nothing when no card has a category.
std::optional<std::uint32_t> MakeCategoryGroups(Session& session, std::uint32_t node,
                                                const std::vector<std::uint32_t>& files);
