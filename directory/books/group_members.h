// Who the members of a group are: looked for in the group's own file, then beside it, then in the whole profile.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "books/session.h"

struct GroupMembers {
    std::vector<CardReference> cards;
    size_t missingCount = 0;  // those that are on no card of the profile
};

// The direct members, groups among them as groups, in the order of the card. A member that is not found is reported
// and left out; one that is named twice is there once.
GroupMembers DirectMembers(Session& session, std::uint32_t node, const CardReference& group);

// The persons in a group and in the groups in it, to any depth, each once, in the order of first mention. Groups may
// contain themselves and each other.
std::vector<CardReference> AllPersons(Session& session, std::uint32_t node, const CardReference& group);
