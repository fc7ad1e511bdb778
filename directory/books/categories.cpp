// Collects the members of each category over all files of a node.
#include "books/categories.h"

#include <map>
#include <string>

#include "text/ascii.h"

namespace {

class NoMessages final : public MessageReceiver {
    void Report(size_t, std::string_view, std::string_view) override {}
};

struct CategoryMembers {
    std::string name;  // as it is first spelled, in the active code page
    std::vector<CardPlace> cards;
};

}  // namespace

std::optional<std::uint32_t> MakeCategoryGroups(Session& session, std::uint32_t node,
                                                const std::vector<std::uint32_t>& files) {
    std::map<std::string, CategoryMembers> categories;
    for (const std::uint32_t file : files) {
        const std::shared_ptr<const CardSet> set = session.ReadFile(file, {.categories = true});
        for (const Category& category : set->Categories()) {
            const Card& card = set->Cards()[category.card];
            if (card.isGroup) continue;
            const std::string name = set->Text(category.name);
            CategoryMembers& members = categories[LowerCased(name)];
            if (members.name.empty()) members.name = name;
            members.cards.push_back({file, category.card, IdentityOf(*set, card)});
        }
    }
    if (categories.empty()) return std::nullopt;
    NoMessages messages;
    CardSetBuilder groups({}, 0, messages);
    for (const auto& [folded, members] : categories) groups.AddCategoryGroup(members.name, members.cards);
    return session.SetCategoryGroups(node, groups.Finish(std::nullopt));
}
