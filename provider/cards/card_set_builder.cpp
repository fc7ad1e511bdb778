// The name that a card goes by, its fax numbers, its members.
#include "cards/card_set_builder.h"

#include <algorithm>
#include <stdexcept>

#include "text/ascii.h"
#include "text/code_pages.h"

namespace {

// Bytes of UTF-8 that are kept of a text. Records take far less, and no window shows more; but a card may have a
// hundred thousand fax numbers, each an entry with all these texts.
constexpr size_t longestKeptLine = 1024;
constexpr size_t longestKeptNote = size_t{16} * 1024;

// Of an exporter's card with some numbers and addresses; those of people who write little are shorter.
constexpr size_t bytesPerCard = 250;

std::uint32_t Narrow(size_t value) {
    if (value > UINT32_MAX) throw std::length_error("file too large");
    return static_cast<std::uint32_t>(value);
}

// As far as there is memory: a file may claim any size and hold little.
template <typename List>
void MakeRoom(List& list, size_t count) {
    try {
        list.reserve(count);
    } catch (const std::bad_alloc&) {
        // Then it grows as it is filled.
    }
}

}  // namespace

CardSetBuilder::CardSetBuilder(CardSetContents contents, size_t textSize, MessageReceiver& messages)
    : contents_(contents), messages_(messages) {
    const size_t cards = textSize / bytesPerCard;
    // Room that is not used costs next to nothing; growing copies everything.
    MakeRoom(set_->text_, textSize / 2);
    MakeRoom(set_->cards_, cards);
    MakeRoom(set_->faxNumbers_, cards);
    MakeRoom(set_->addresses_, cards);
    set_->text_.push_back('\0');
}

TextPosition CardSetBuilder::Keep(std::string_view utf8) {
    if (utf8.empty()) return 0;
    const TextPosition position = Narrow(set_->text_.size());
    AppendInActiveCodePage(utf8, set_->text_);
    set_->text_.push_back('\0');
    return position;
}

TextPosition CardSetBuilder::KeepBeginning(std::string_view utf8, size_t mostBytes, std::string_view meaning,
                                           const CardDraft& draft) {
    if (utf8.size() > mostBytes)
        Report(draft.line, "the {} of \"{}\" is longer than {} bytes", "it was cut there; shorten it",
               {meaning, NameOf(draft), std::to_string(mostBytes)});
    return Keep(BeginningOf(utf8, mostBytes));
}

TextPosition CardSetBuilder::KeepActive(std::string_view text) {
    const TextPosition position = Narrow(set_->text_.size());
    set_->text_.append(text).push_back('\0');
    return position;
}

bool CardSetBuilder::KeepAddress(std::string_view address) {
    if (!NamesSomething(address)) return false;
    set_->addresses_.push_back({Keep(address), Narrow(set_->cards_.size())});
    return true;
}

void CardSetBuilder::Receive(CardDraft& draft) {
    const std::string_view name = NameOf(draft);
    if (name.empty()) {
        ++set_->namelessCount_;
        Report(draft.line, "card without name, organisation, e-mail address or number",
               "it was left out; give it a name (FN)");
        return;
    }
    Card card{};
    card.line = Narrow(draft.line);
    card.isGroup = draft.isGroup;
    card.name = KeepBeginning(name, longestKeptLine, "name", draft);
    card.company = KeepBeginning(draft.company, longestKeptLine, "company", draft);
    card.department = KeepBeginning(draft.department, longestKeptLine, "department", draft);
    card.comment = KeepBeginning(draft.note, longestKeptNote, "note", draft);
    if (!draft.emails.IsEmpty()) card.email = Keep(draft.emails.begin()->text);
    AddFaxNumbers(draft, card);
    if (!draft.uid.empty() && KeepAddress(NormalisedAddress(draft.uid))) card.uid = set_->addresses_.back().address;
    if (contents_.addresses) AddAddresses(draft);
    if (contents_.categories)
        for (const LinedText& category : draft.categories)
            set_->categories_.push_back({Keep(category.text), Narrow(set_->cards_.size())});
    card.firstMember = Narrow(set_->members_.size());
    for (const LinedText& member : draft.members)
        set_->members_.push_back({Keep(NormalisedAddress(member.text)), Narrow(member.line), {}});
    card.memberCount = Narrow(set_->members_.size()) - card.firstMember;
    inOrder_ = inOrder_ && (set_->cards_.empty() || set_->cards_.back().line < card.line);
    set_->cards_.push_back(card);
}

void CardSetBuilder::AddFaxNumbers(const CardDraft& draft, Card& card) {
    for (const Telephone& telephone : draft.telephones)
        if (telephone.number.size() > longestNumber && JudgeTelephone(telephone.facts).kind != FaxKind::None)
            Report(telephone.line, "a fax number of \"{}\" is longer than {} bytes",
                   "it was left out; correct the line", {NameOf(draft), std::to_string(longestNumber)});
    ListFaxNumbers(draft, numbersOfCard_);
    card.firstFaxNumber = Narrow(set_->faxNumbers_.size());
    for (const auto& [kind, telephone] : numbersOfCard_)
        set_->faxNumbers_.push_back(
            {Keep(telephone->number), Narrow(telephone->line), kind, telephone->facts.preference});
    card.faxNumberCount = Narrow(set_->faxNumbers_.size()) - card.firstFaxNumber;
}

void CardSetBuilder::AddAddresses(const CardDraft& draft) {
    for (const LinedText& email : draft.emails) KeepAddress(NormalisedAddress("mailto:" + email.text));
    for (const Telephone& telephone : draft.telephones) KeepAddress(NormalisedAddress("tel:" + telephone.number));
}

void CardSetBuilder::AddCategoryGroup(std::string_view name, const std::vector<CardPlace>& cards) {
    Card card{};
    card.isGroup = true;
    card.name = KeepActive(name);
    card.uid = KeepActive(LowerCased(name));
    card.firstMember = Narrow(set_->members_.size());
    for (const CardPlace& place : cards) set_->members_.push_back({0, 0, place});
    card.memberCount = Narrow(set_->members_.size()) - card.firstMember;
    set_->cards_.push_back(card);
}

// Cards inside others came first: back to the order of the file, and with them what points at them.
void CardSetBuilder::PutInOrder() {
    CardSet& set = *set_;
    std::vector<std::uint32_t> order(set.cards_.size());
    for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
    std::ranges::sort(order, {}, [&](std::uint32_t card) { return set.cards_[card].line; });
    std::vector<Card> cards;
    std::vector<std::uint32_t> newPlace(order.size());
    for (const std::uint32_t old : order) {
        newPlace[old] = static_cast<std::uint32_t>(cards.size());
        cards.push_back(set.cards_[old]);
    }
    set.cards_ = std::move(cards);
    for (CardSet::Address& address : set.addresses_) address.card = newPlace[address.card];
    for (Category& category : set.categories_) category.card = newPlace[category.card];
    std::ranges::stable_sort(set.categories_, {}, &Category::card);
}

std::shared_ptr<CardSet> CardSetBuilder::Finish(std::optional<UINT> guessedCharset) {
    if (!inOrder_) PutInOrder();
    set_->guessedCharset_ = guessedCharset;
    return set_;
}
