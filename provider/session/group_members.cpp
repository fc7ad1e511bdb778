// Finding members and walking nested groups, without recursion: groups nest as deep as their authors like.
#include "session/group_members.h"

#include <algorithm>
#include <set>
#include <span>
#include <tuple>

#include "cards/card_identity.h"
#include "session/categories.h"
#include "text/byte_escapes.h"
#include "text/code_pages.h"

namespace {

using Place = std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>;  // file, edition, card

Place PlaceOf(const CardReference& card) {
    return {card.file, card.cards->Edition(), card.card};
}

// Whether a fax goes to the same numbers, whichever of the cards is meant.
bool HaveSameNumbers(const CardReference& a, const CardReference& b) {
    if (PlaceOf(a) == PlaceOf(b)) return true;
    const auto value = [](const CardReference& card) {
        return [&card](const FaxNumber& number) {
            return std::tuple(std::string_view(card.cards->Text(number.number)), number.kind, number.preference);
        };
    };
    return !a.Get().isGroup && !b.Get().isGroup &&
           std::ranges::equal(a.cards->FaxNumbers(a.Get()), b.cards->FaxNumbers(b.Get()), {}, value(a), value(b));
}

}  // namespace

GroupMembers MemberFinder::FindMembers(std::uint32_t node, const CardReference& group) {
    GroupMembers members;
    const std::span<const FileCards> sources = group.cards->Sources();
    for (const Member& member : group.cards->Members(group.Get())) {
        if (sources.empty())
            AddMember(node, group, member, members);
        else
            members.cards.push_back(
                {sources[member.place.source].cards, sources[member.place.source].file, member.place.card});
    }
    std::set<Place> seen;
    std::erase_if(members.cards, [&](const CardReference& card) { return !seen.insert(PlaceOf(card)).second; });
    return members;
}

void MemberFinder::AddMember(std::uint32_t node, const CardReference& group, const Member& member,
                             GroupMembers& members) {
    const char* const address = group.cards->Text(member.address);
    const Answer& answer = Find(node, group.file, address);
    if (answer.card && !answer.other) return members.cards.push_back(*answer.card);
    ++members.missingCount;
    const std::string memberText = WithLetters(FromActiveCodePage(address));
    const std::string groupName = FromActiveCodePage(group.cards->Text(group.Get().name));
    const std::filesystem::path& file = session_.FilePath(group.file);
    if (!answer.card)
        session_.Messages().Report(file, member.line, "member {} of the group \"{}\" is on no card of this profile",
                                   "it was left out; add the card or remove the line", {memberText, groupName});
    else
        session_.Messages().Report(file, member.line,
                                   "member {} of the group \"{}\" is on more than one card, and they have not the same "
                                   "fax numbers: {} and {}",
                                   "it was left out; give each card an identifier (UID) of its own and name that",
                                   {memberText, groupName, MessageName::Whole(PositionOf(*answer.card)),
                                    MessageName::Whole(PositionOf(*answer.other))});
}

std::string MemberFinder::PositionOf(const CardReference& card) const {
    return Utf8Of(session_.FilePath(card.file)) + ":" + std::to_string(card.Get().line);
}

const MemberFinder::Answer& MemberFinder::Find(std::uint32_t node, std::uint32_t ownFile, std::string_view address) {
    if (node != node_) near_ = {};
    node_ = node;
    const Answer& own = FindIn(own_[ownFile], address, [&] { return std::vector{ownFile}; });
    if (own.card) return own;
    const Answer& beside =
        FindIn(near_, address, [&] { return session_.ListFiles(node, session_.ReadSettings(node)); });
    if (beside.card) return beside;
    return FindIn(all_, address, [&] { return ListAllFiles(); });
}

// Looked for once in the same files, whichever groups name it: there may be as many groups as cards that answer.
template <typename ListFiles>
const MemberFinder::Answer& MemberFinder::FindIn(Scope& scope, std::string_view address, ListFiles&& listFiles) {
    const auto [position, isNew] = scope.answers.try_emplace(std::string(address));
    Answer& answer = position->second;
    if (!isNew || !NamesSomething(address)) return answer;
    const bool withAddresses = IsMailOrTelephoneAddress(address);
    std::optional<CardSearch>& search = scope.searches[withAddresses];
    if (!search) search.emplace(session_, listFiles(), withAddresses);
    for (const CardReference& card : search->Find(address)) {
        if (!answer.card)
            answer.card = card;
        else if (!answer.other && !HaveSameNumbers(*answer.card, card))
            answer.other = card;
    }
    return answer;
}

std::vector<std::uint32_t> MemberFinder::ListAllFiles() {
    std::vector<std::uint32_t> all;
    for (const std::uint32_t book : session_.ListAllBooks()) {
        const std::vector<std::uint32_t> files = session_.ListFiles(book, session_.ReadSettings(book));
        all.insert(all.end(), files.begin(), files.end());
    }
    return all;
}

std::optional<FoundEntry> FindGroupAnew(Session& session, const EntryId& id, std::string_view name) {
    if (id.file >= session.FileCount()) return std::nullopt;
    const std::optional<FoundEntry> before = session.FindEntry(id);
    if (const std::optional<std::uint32_t> node = session.NodeOfCategoryGroups(id.file)) {
        const BookSettings& settings = session.ReadSettings(*node);
        MakeCategoryGroups(
            session, *node,
            settings.ShowsCategories() ? session.ListFiles(*node, settings) : std::vector<std::uint32_t>());
    } else {
        session.ReadFile(id.file);
    }
    std::optional<FoundEntry> now = session.FindEntryOrReport(id, name);
    if (before && now &&
        !AreAlike(*before->card.cards, before->card.Get(), *now->card.cards, now->card.Get(), session.Number()))
        session.Messages().Report(session.FilePath(id.file), now->card.Get().line,
                                  "the group \"{}\" was changed after the address book was listed",
                                  "a fax goes to the members that it has now; list the address book again to see them",
                                  {FromActiveCodePage(now->card.cards->Text(now->card.Get().name))});
    return now;
}

GroupMembers AllPersons(Session& session, std::uint32_t node, const CardReference& group) {
    struct OpenGroup {
        std::vector<CardReference> members;
        size_t next = 0;
    };
    MemberFinder finder(session);
    GroupMembers persons;
    std::set<Place> seen = {PlaceOf(group)};
    std::vector<OpenGroup> open;
    const auto openGroup = [&](const CardReference& opened) {
        GroupMembers members = finder.FindMembers(node, opened);
        persons.missingCount += members.missingCount;
        open.push_back({std::move(members.cards)});
    };
    openGroup(group);
    while (!open.empty()) {
        OpenGroup& current = open.back();
        if (current.next == current.members.size()) {
            open.pop_back();
            continue;
        }
        CardReference member = std::move(current.members[current.next++]);
        if (!seen.insert(PlaceOf(member)).second) continue;
        if (member.Get().isGroup)
            openGroup(member);
        else
            persons.cards.push_back(std::move(member));
    }
    return persons;
}
