// Places the numbers of every card once more and looks at what is left.
#include "session/unplaced_numbers.h"

#include "session/fax_places.h"
#include "text/code_pages.h"

size_t ReportUnplacedNumbers(Session& session, std::uint32_t file, const CardSet& cards, ContentsStyle style) {
    size_t count = 0;
    MessagePass pass(session.Messages());
    if (style == ContentsStyle::FaxEntries) return count;
    for (const Card& card : cards.Cards()) {
        if (card.isGroup || card.faxNumberCount < 2) continue;
        const std::span<const FaxNumber> numbers = cards.FaxNumbers(card);
        const FaxPlaces places = PlaceFaxNumbers(numbers, style);
        for (const FaxNumber& number : numbers) {
            if (places.Contains(number)) continue;
            ++count;
            session.Messages().Report(
                session.FilePath(file), number.line,
                "the fax number {} of \"{}\" finds no place in this style of address book",
                "set style = fax-entries to list every number",
                {FromActiveCodePage(cards.Text(number.number)), FromActiveCodePage(cards.Text(card.name))});
        }
    }
    pass.Finish();
    return count;
}
