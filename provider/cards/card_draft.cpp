// What is the same for a card of any format.
#include "cards/card_draft.h"

#include <algorithm>
#include <tuple>

void CardDraft::Clear() {
    line = 0;
    isGroup = false;
    for (std::string* text : {&formattedName, &nameFromParts, &nickname, &company, &department, &note, &uid})
        text->clear();
    emails.Clear();
    telephones.Clear();
    members.Clear();
    categories.Clear();
}

void ListFaxNumbers(const CardDraft& card, std::vector<FaxNumberOfCard>& numbers) {
    numbers.clear();
    for (const Telephone& telephone : card.telephones) {
        const FaxKind kind = JudgeTelephone(telephone.facts).kind;
        const bool isNumber = !telephone.number.empty() && telephone.number.size() <= longestNumber;
        if (kind != FaxKind::None && isNumber) numbers.push_back({kind, &telephone});
    }
    if (numbers.size() < 2) return;
    const auto value = [](const FaxNumberOfCard& number) {
        return std::tuple(number.kind, std::string_view(number.telephone->number));
    };
    const auto place = [](const FaxNumberOfCard& number) { return number.telephone; };
    std::ranges::sort(numbers, {}, [&](const FaxNumberOfCard& number) {
        return std::tuple_cat(value(number), std::tuple(place(number)));
    });
    const auto isSame = [&](const FaxNumberOfCard& a, const FaxNumberOfCard& b) { return value(a) == value(b); };
    numbers.erase(std::unique(numbers.begin(), numbers.end(), isSame), numbers.end());
    std::ranges::sort(numbers, {}, place);
}

std::string_view NameOf(const CardDraft& card) {
    for (const std::string* name : {&card.formattedName, &card.nameFromParts, &card.company, &card.nickname})
        if (!name->empty()) return *name;
    if (!card.emails.IsEmpty()) return card.emails.begin()->text;
    for (const Telephone& telephone : card.telephones)
        if (!telephone.number.empty()) return telephone.number;
    return {};
}
