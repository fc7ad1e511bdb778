// Looks at everything that a set of cards gives out.
#include "card_checks.h"

#include "cards/card_identity.h"

void ReportCounter::Take(const Message& message) {
    ++count_;
    const ToldMessage told = FillIn(message);
    Promise(!told.what.empty() && !told.advice.empty(), "a report says what is wrong and what to do");
    Promise(IsUtf8(told.what) && IsUtf8(told.advice), "a report is UTF-8");
    Promise(told.what.size() + told.advice.size() < 1024, "a report is short, however long its names are");
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
        if (card.uid != 0) Promise(!cards.Find(checkText(card.uid)).empty(), "a card is found by its identifier");
        for (const FaxNumber& number : cards.FaxNumbers(card)) {
            Promise(!checkText(number.number).empty(), "a fax number is not empty");
            Promise(number.kind != FaxKind::None, "a fax number has a kind");
        }
        for (const Member& member : cards.Members(card)) {
            for (const CardSet::Address& found : cards.Find(checkText(member.address)))
                Promise(found.card < cards.Cards().size(), "a member that is found is a card");
        }
        const std::uint64_t identity = IdentityOf(cards, card, 0);
        Promise(!cards.FindIdentity(identity, 0).empty(), "a card is found by what it is known by");
        for (const FaxNumber& number : cards.FaxNumbers(card))
            Promise(!cards.FindIdentity(IdentityOf(identity, cards, number, 0), 0).empty(), "and so is its number");
    }
    for (const Category& category : cards.Categories()) {
        checkText(category.name);
        Promise(category.card < cards.Cards().size(), "a category is that of a card");
    }
}

void CheckAreEqual(const CardSet& left, const CardSet& right) {
    Promise(HashCards(left, 0) == HashCards(right, 0) && left.NamelessCount() == right.NamelessCount(),
            "the same text gives the same cards");
}

void CheckLastIsGood(const CardSet& cards) {
    Promise(!cards.Cards().empty(), "a good card behind any text is read");
    const Card& last = cards.Cards().back();
    Promise(std::string_view(cards.Text(last.name)) == "Good" && !last.isGroup, "a good card keeps its name");
    Promise(last.faxNumberCount == 1 && std::string_view(cards.Text(cards.FaxNumbers(last)[0].number)) == "+1 555 0100",
            "a good card keeps its fax number");
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
