// Turns card drafts into records: the name that a card goes by, its fax numbers, its members.
#include "vcard/card_set.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "diagnostics.h"
#include "text/ascii.h"
#include "text/code_pages.h"
#include "vcard/card_reader.h"

class CardSetBuilder final : public CardReceiver {
  public:
    CardSetBuilder(const std::filesystem::path& path, bool keepAddresses, size_t fileSize, Diagnostics& diagnostics)
        : path_(path), keepAddresses_(keepAddresses), diagnostics_(diagnostics), set_(std::make_shared<CardSet>()) {
        set_->hasAddresses_ = keepAddresses;
        // Room that is not used costs next to nothing; growing copies everything.
        set_->text_.reserve(fileSize / 2);
        set_->cards_.reserve(fileSize / 300);
        set_->text_.push_back('\0');
    }

    void Receive(CardDraft& draft) override;
    void Report(size_t line, std::string_view what, std::string_view advice) override {
        diagnostics_.Report(path_, line, what, advice);
    }

    std::shared_ptr<const CardSet> Finish();

  private:
    TextPosition Keep(std::string_view utf8);
    void KeepAddress(std::string_view address) {
        set_->addresses_.push_back({Keep(address), static_cast<std::uint32_t>(set_->cards_.size())});
    }
    void AddFaxNumbers(CardDraft& draft, Card& card);
    void AddAddresses(const CardDraft& draft);

    const std::filesystem::path& path_;
    bool keepAddresses_;
    Diagnostics& diagnostics_;
    std::shared_ptr<CardSet> set_;
    std::set<std::pair<FaxKind, std::string_view>> numbersOfCard_;
    bool inOrder_ = true;
};

namespace {

std::uint32_t Narrow(size_t value) {
    if (value > UINT32_MAX) throw std::length_error("file too large");
    return static_cast<std::uint32_t>(value);
}

// The name that a card goes by; empty when nothing in it could be one.
std::string_view NameOf(const CardDraft& draft) {
    for (const std::string* name : {&draft.formattedName, &draft.nameFromParts, &draft.company, &draft.nickname})
        if (!name->empty()) return *name;
    if (!draft.emails.IsEmpty()) return draft.emails.begin()->text;
    for (const Telephone& telephone : draft.telephones)
        if (!telephone.number.empty()) return telephone.number;
    return {};
}

}  // namespace

std::string NormalisedAddress(std::string_view address) {
    address = Trimmed(address);
    if (StartsWithIgnoringCase(address, "tel:")) {
        std::string number = "tel:";
        const std::string_view subscriber = address.substr(4, address.find(';') - 4);
        std::copy_if(subscriber.begin(), subscriber.end(), std::back_inserter(number),
                     [](char c) { return (c >= '0' && c <= '9') || c == '+'; });
        return number;
    }
    if (StartsWithIgnoringCase(address, "mailto:")) return LowerCased(address.substr(0, address.find('?')));
    if (StartsWithIgnoringCase(address, "urn:uuid:")) address.remove_prefix(9);
    return LowerCased(address);
}

bool IsMailOrTelephoneAddress(std::string_view normalised) {
    return normalised.starts_with("mailto:") || normalised.starts_with("tel:");
}

TextPosition CardSetBuilder::Keep(std::string_view utf8) {
    if (utf8.empty()) return 0;
    std::string& text = set_->text_;
    const TextPosition position = Narrow(text.size());
    AppendInActiveCodePage(utf8, text);
    text.push_back('\0');
    return position;
}

void CardSetBuilder::Receive(CardDraft& draft) {
    const std::string_view name = NameOf(draft);
    if (name.empty()) {
        Report(draft.line, "card without name, organisation, e-mail address or number",
               "it was left out; give it a name (FN)");
        return;
    }
    Card card{};
    card.line = Narrow(draft.line);
    card.isGroup = draft.isGroup;
    card.name = Keep(name);
    card.company = Keep(draft.company);
    card.department = Keep(draft.department);
    card.comment = Keep(draft.note);
    if (!draft.emails.IsEmpty()) card.email = Keep(draft.emails.begin()->text);
    AddFaxNumbers(draft, card);
    if (!draft.uid.empty()) {
        KeepAddress(NormalisedAddress(draft.uid));
        card.uid = set_->addresses_.back().address;
    }
    if (keepAddresses_) AddAddresses(draft);
    card.firstMember = Narrow(set_->members_.size());
    for (const LinedText& member : draft.members)
        set_->members_.push_back({Keep(NormalisedAddress(member.text)), Narrow(member.line)});
    card.memberCount = Narrow(set_->members_.size()) - card.firstMember;
    inOrder_ = inOrder_ && (set_->cards_.empty() || set_->cards_.back().line < card.line);
    set_->cards_.push_back(card);
}

void CardSetBuilder::AddFaxNumbers(CardDraft& draft, Card& card) {
    card.firstFaxNumber = Narrow(set_->faxNumbers_.size());
    numbersOfCard_.clear();
    for (const Telephone& telephone : draft.telephones) {
        const FaxKind kind = JudgeTelephone(telephone.facts).kind;
        if (kind == FaxKind::None || telephone.number.empty()) continue;
        // The same number of the same kind twice is one number: exporters repeat themselves.
        if (!numbersOfCard_.emplace(kind, telephone.number).second) continue;
        set_->faxNumbers_.push_back({Keep(telephone.number), Narrow(telephone.line), kind, telephone.facts.preference});
    }
    card.faxNumberCount = Narrow(set_->faxNumbers_.size()) - card.firstFaxNumber;
}

void CardSetBuilder::AddAddresses(const CardDraft& draft) {
    for (const LinedText& email : draft.emails) KeepAddress(NormalisedAddress("mailto:" + email.text));
    for (const Telephone& telephone : draft.telephones) KeepAddress(NormalisedAddress("tel:" + telephone.number));
}

std::shared_ptr<const CardSet> CardSetBuilder::Finish() {
    CardSet& set = *set_;
    if (!inOrder_) {
        // Cards inside others came first: back to the order of the file, and with them what points at them.
        std::vector<std::uint32_t> order(set.cards_.size());
        for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
        std::sort(order.begin(), order.end(),
                  [&](std::uint32_t a, std::uint32_t b) { return set.cards_[a].line < set.cards_[b].line; });
        std::vector<Card> cards;
        std::vector<std::uint32_t> newPlace(order.size());
        for (const std::uint32_t old : order) {
            newPlace[old] = static_cast<std::uint32_t>(cards.size());
            cards.push_back(set.cards_[old]);
        }
        set.cards_ = std::move(cards);
        for (CardSet::Address& address : set.addresses_) address.card = newPlace[address.card];
    }
    return set_;
}

std::shared_ptr<const CardSet> CardSet::Read(const std::filesystem::path& path, std::istream& text, size_t size,
                                             bool keepAddresses, Diagnostics& diagnostics) {
    CardSetBuilder builder(path, keepAddresses, size, diagnostics);
    ReadCards(text, builder);
    return builder.Finish();
}

std::optional<std::uint32_t> CardSet::Find(std::string_view address) const {
    const auto text = [this](const Address& known) { return std::string_view(Text(known.address)); };
    if (!addressesSorted_) {
        // Of cards with the same address the first in the file is found.
        std::sort(addresses_.begin(), addresses_.end(), [&](const Address& a, const Address& b) {
            const int order = text(a).compare(text(b));
            return order != 0 ? order < 0 : a.card < b.card;
        });
        addressesSorted_ = true;
    }
    const auto found =
        std::lower_bound(addresses_.begin(), addresses_.end(), address,
                         [&](const Address& known, std::string_view wanted) { return text(known) < wanted; });
    if (found == addresses_.end() || text(*found) != address) return std::nullopt;
    return found->card;
}
