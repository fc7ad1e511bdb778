// One set after another while little is looked for; once that has cost as much as putting all addresses in one order,
// in that order.
#include "session/card_search.h"

#include <algorithm>
#include <tuple>

CardSearch::CardSearch(Session& session, const std::vector<std::uint32_t>& files, bool withAddresses) {
    for (const std::uint32_t file : files) {
        std::shared_ptr<const CardSet> cards = session.ReadFile(file, {.addresses = withAddresses});
        if (cards->Addresses().empty()) continue;
        addressCount_ += cards->Addresses().size();
        sets_.push_back({std::move(cards), file});
    }
}

std::vector<CardReference> CardSearch::Find(std::string_view address) {
    if (index_.empty() && sets_.size() > 1 && (setsLookedAt_ += sets_.size()) > addressCount_) MakeIndex();
    std::vector<CardReference> found;
    if (!index_.empty()) {
        auto place =
            std::lower_bound(index_.begin(), index_.end(), address,
                             [](const Place& known, std::string_view sought) { return known.address < sought; });
        for (; place != index_.end() && place->address == address; ++place)
            found.push_back({sets_[place->set].cards, sets_[place->set].file, place->card});
        return found;
    }
    for (const FileCards& set : sets_)
        for (const CardSet::Address& known : set.cards->Find(address))
            found.push_back({set.cards, set.file, known.card});
    return found;
}

void CardSearch::MakeIndex() {
    index_.reserve(addressCount_);
    for (std::uint32_t set = 0; set < sets_.size(); ++set)
        for (const CardSet::Address& known : sets_[set].cards->Addresses())
            index_.push_back({sets_[set].cards->Text(known.address), set, known.card});
    std::ranges::sort(index_, {}, [](const Place& place) { return std::tie(place.address, place.set, place.card); });
}
