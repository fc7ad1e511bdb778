// Collects the members of each category over all files of a node.
#include "session/categories.h"

#include <algorithm>
#include <map>
#include <string>

#include "text/ascii.h"

namespace {

class NoMessages final : public MessageReceiver {
    void Take(const Message&) override {}
};

struct CategoryMembers {
    std::string name;  // as it is first spelled, in the active code page
    std::vector<CardPlace> cards;
};

}  // namespace

std::uint32_t MakeCategoryGroups(Session& session, std::uint32_t node, const std::vector<std::uint32_t>& files) {
    std::vector<FileCards> sources;
    sources.reserve(files.size());
    for (const std::uint32_t file : files) sources.push_back({session.ReadFile(file, {.categories = true}), file});
    if (const std::optional<std::uint32_t> known = session.CategoryGroupsOf(node))
        if (std::ranges::equal(session.ReadFile(*known)->Sources(), sources)) return *known;
    std::map<std::string, CategoryMembers> categories;
    for (std::uint32_t source = 0; source < sources.size(); ++source) {
        const CardSet& set = *sources[source].cards;
        for (const Category& category : set.Categories()) {
            const Card& card = set.Cards()[category.card];
            if (card.isGroup) continue;
            const std::string name = set.Text(category.name);
            CategoryMembers& members = categories[LowerCased(name)];
            if (members.name.empty()) members.name = name;
            members.cards.push_back({source, category.card, set.CardIdentity(category.card, session.Number())});
        }
    }
    NoMessages messages;
    CardSetBuilder groups({}, 0, messages);
    for (const auto& [folded, members] : categories) groups.AddCategoryGroup(members.name, members.cards);
    groups.SetSources(std::move(sources));
    return session.SetCategoryGroups(node, groups.Finish(std::nullopt));
}
