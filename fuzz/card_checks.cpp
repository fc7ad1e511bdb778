// Looks at everything that a set of cards gives out.
#include "card_checks.h"

#include "text/code_pages.h"

void ReportCounter::Report(size_t, std::string_view what, std::string_view advice) {
    ++count_;
    Promise(!what.empty() && !advice.empty(), "a report says what is wrong and what to do");
    Promise(IsUtf8(what) && IsUtf8(advice), "a report is UTF-8");
}

void DraftChecker::Receive(CardDraft& card) {
    for (const std::string* text : {&card.formattedName, &card.nameFromParts, &card.nickname, &card.company,
                                    &card.department, &card.note, &card.uid})
        Promise(IsUtf8(*text), "the text of a card is UTF-8");
    for (const Telephone& telephone : card.telephones)
        Promise(IsUtf8(telephone.number) && IsUtf8(telephone.source), "the text of a telephone is UTF-8");
    for (const auto* list : {&card.emails, &card.members, &card.categories})
        for (const LinedText& text : *list) Promise(IsUtf8(text.text), "the text of a list is UTF-8");
    next_.Receive(card);
}

void CheckCards(const CardSet& cards) {
    const auto checkText = [&](TextPosition text) {
        Promise(IsUtf8(cards.Text(text)), "a text is well-formed");
        return std::string_view(cards.Text(text));
    };
    std::uint32_t line = 0;
    for (const Card& card : cards.Cards()) {
        Promise(card.line >= line, "cards are in the order of their file");
        line = card.line;
        Promise(!checkText(card.name).empty(), "a card has a name");
        for (const TextPosition text : {card.company, card.department, card.comment, card.email}) checkText(text);
        if (card.uid != 0) Promise(cards.Find(checkText(card.uid)).has_value(), "a card is found by its identifier");
        for (const FaxNumber& number : cards.FaxNumbers(card)) {
            Promise(!checkText(number.number).empty(), "a fax number is not empty");
            Promise(number.kind != FaxKind::None, "a fax number has a kind");
        }
        for (const Member& member : cards.Members(card)) {
            const std::optional<std::uint32_t> found = cards.Find(checkText(member.address));
            Promise(!found || *found < cards.Cards().size(), "a member that is found is a card");
        }
    }
    for (const Category& category : cards.Categories()) {
        checkText(category.name);
        Promise(category.card < cards.Cards().size(), "a category is that of a card");
    }
}

ReadingChoice TakeChoice(std::string_view& input) {
    constexpr UINT charsets[] = {1252, 1251, 932, 936, 950, 949, 51932, 20866, codePageIso2022Jp, CP_UTF8, 1255, 874};
    ReadingChoice choice;
    const unsigned char byte = input.empty() ? 0 : static_cast<unsigned char>(input.front());
    if (!input.empty()) input.remove_prefix(1);
    choice.contents = {.addresses = (byte & 1) != 0, .categories = (byte & 2) != 0};
    if ((byte & 4) != 0) choice.charset = charsets[(byte >> 3) % std::size(charsets)];
    return choice;
}
