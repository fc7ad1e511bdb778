// Who the members of a group are: looked for in the group's own file, then beside it, then in the whole profile.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/card_search.h"
#include "session/session.h"

struct GroupMembers {
    std::vector<CardReference> cards;
    size_t missingCount = 0;  // those that are on no card of the profile, or on more than one
};

// The group that an identifier names, after what it is made of was read anew. Where no group is it now, or more than
// one, that is reported with the name, and so is that it was changed: a category, and a group with an identifier (UID)
// of its own, stays itself with other members.
std::optional<FoundEntry> FindGroupAnew(Session& session, const EntryId& id, std::string_view name);

// Finds the members of one group or of many: the files as they are when they are first looked at, the whole profile
// only when nearer files lack a member.
class MemberFinder {
  public:
    explicit MemberFinder(Session& session) : session_(session) {}

    // The direct members of a group that the node lists, groups among them as groups, in the order of the card; one
    // that is named twice is there once. A member is reported and left out when it is not found, or when cards with
    // other fax numbers answer to its name, too.
    GroupMembers FindMembers(std::uint32_t node, const CardReference& group);

  private:
    // The card that an address means; also another one that it could mean.
    struct Answer {
        std::optional<CardReference> card;
        std::optional<CardReference> other;
    };
    // Some files, and what their cards answer to.
    struct Scope {
        std::array<std::optional<CardSearch>, 2> searches;  // for identifiers, and for addresses
        std::map<std::string, Answer, std::less<>> answers;
    };

    void AddMember(std::uint32_t node, const CardReference& group, const Member& member, GroupMembers& members);
    // From the nearest place where a card answers to the address.
    const Answer& Find(std::uint32_t node, std::uint32_t ownFile, std::string_view address);
    template <typename ListFiles>
    const Answer& FindIn(Scope& scope, std::string_view address, ListFiles&& listFiles);
    std::vector<std::uint32_t> ListAllFiles();
    std::string PositionOf(const CardReference& card) const;

    Session& session_;
    std::optional<std::uint32_t> node_;   // that was asked for last
    std::map<std::uint32_t, Scope> own_;  // a group's own file
    Scope near_;                          // the node
    Scope all_;                           // the profile
};

// The persons in a group and in the groups in it, to any depth, each once, in the order of first mention. Groups may
// contain themselves and each other.
GroupMembers AllPersons(Session& session, std::uint32_t node, const CardReference& group);
