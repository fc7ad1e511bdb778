// Finding members and walking nested groups, without recursion: groups nest as deep as their authors like.
#include "books/group_members.h"

#include <set>
#include <unordered_map>
#include <utility>

#include "text/code_pages.h"

namespace {

using FileAndCard = std::pair<std::uint32_t, std::uint32_t>;

FileAndCard PlaceOf(const CardReference& card) {
    return {card.file, card.card};
}

// Each file is looked at once for each expansion, and the whole profile is listed only when a nearer file lacks a
// member.
class MemberFinder {
  public:
    MemberFinder(Session& session, std::uint32_t node) : session_(session), node_(node) {}

    GroupMembers FindMembers(const CardReference& group);

  private:
    struct Look {
        std::shared_ptr<const CardSet> cards;
        bool withAddresses = false;
    };

    std::optional<CardReference> FindPlace(const CardPlace& place);
    std::optional<CardReference> Find(std::uint32_t ownFile, std::string_view address);
    std::optional<CardReference> FindIn(const std::vector<std::uint32_t>& files, std::string_view address);
    std::optional<CardReference> FindInFile(std::uint32_t file, std::string_view address);
    const std::shared_ptr<const CardSet>& Cards(std::uint32_t file, bool withAddresses);

    Session& session_;
    std::uint32_t node_;
    std::optional<std::vector<std::uint32_t>> near_;
    std::optional<std::vector<std::uint32_t>> all_;
    std::unordered_map<std::uint32_t, Look> read_;
};

GroupMembers MemberFinder::FindMembers(const CardReference& group) {
    GroupMembers members;
    std::set<FileAndCard> seen;
    for (const Member& member : group.cards->Members(group.Get())) {
        const char* const address = group.cards->Text(member.address);
        const std::optional<CardReference> card =
            member.address == 0 ? FindPlace(member.place) : Find(group.file, address);
        if (card) {
            if (seen.insert(PlaceOf(*card)).second) members.cards.push_back(*card);
        } else if (member.address != 0) {
            ++members.missingCount;
            session_.Messages().Report(session_.FilePath(group.file), member.line,
                                       "member " + FromActiveCodePage(address) + " of the group \"" +
                                           FromActiveCodePage(group.cards->Text(group.Get().name)) +
                                           "\" is on no card of this profile",
                                       "it was left out; add the card or remove the line");
        }
    }
    return members;
}

// A card that has left its file has left the category, too.
std::optional<CardReference> MemberFinder::FindPlace(const CardPlace& place) {
    Cards(place.file, false);
    return session_.FindCard({EntryId::Kind::Person, node_, place.file, place.card, 0, place.identity});
}

std::optional<CardReference> MemberFinder::Find(std::uint32_t ownFile, std::string_view address) {
    if (auto card = FindInFile(ownFile, address)) return card;
    if (!near_) near_ = session_.ListFiles(node_);
    if (auto card = FindIn(*near_, address)) return card;
    if (!all_) {
        all_.emplace();
        for (const std::uint32_t book : session_.ListAllBooks()) {
            const std::vector<std::uint32_t> files = session_.ListFiles(book);
            all_->insert(all_->end(), files.begin(), files.end());
        }
    }
    return FindIn(*all_, address);
}

std::optional<CardReference> MemberFinder::FindIn(const std::vector<std::uint32_t>& files, std::string_view address) {
    for (const std::uint32_t file : files)
        if (auto card = FindInFile(file, address)) return card;
    return std::nullopt;
}

std::optional<CardReference> MemberFinder::FindInFile(std::uint32_t file, std::string_view address) {
    const std::shared_ptr<const CardSet>& cards = Cards(file, IsMailOrTelephoneAddress(address));
    const std::optional<std::uint32_t> card = cards->Find(address);
    if (!card) return std::nullopt;
    return CardReference{cards, file, *card};
}

const std::shared_ptr<const CardSet>& MemberFinder::Cards(std::uint32_t file, bool withAddresses) {
    Look& look = read_[file];
    if (!look.cards || (withAddresses && !look.withAddresses))
        look = {session_.ReadFile(file, {.addresses = withAddresses}), withAddresses};
    return look.cards;
}

}  // namespace

GroupMembers DirectMembers(Session& session, std::uint32_t node, const CardReference& group) {
    return MemberFinder(session, node).FindMembers(group);
}

std::vector<CardReference> AllPersons(Session& session, std::uint32_t node, const CardReference& group) {
    struct OpenGroup {
        std::vector<CardReference> members;
        size_t next = 0;
    };
    MemberFinder finder(session, node);
    std::vector<CardReference> persons;
    std::set<FileAndCard> seen = {PlaceOf(group)};
    std::vector<OpenGroup> open;
    open.push_back({finder.FindMembers(group).cards});
    while (!open.empty()) {
        OpenGroup& current = open.back();
        if (current.next == current.members.size()) {
            open.pop_back();
            continue;
        }
        CardReference member = std::move(current.members[current.next++]);
        if (!seen.insert(PlaceOf(member)).second) continue;
        if (member.Get().isGroup)
            open.push_back({finder.FindMembers(member).cards});
        else
            persons.push_back(std::move(member));
    }
    return persons;
}
