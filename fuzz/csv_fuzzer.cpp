// The reader of CSV exports. Beside what CheckCards looks at: every row behind the headings is a card, or is counted as
// one without a name.
#include <cstdint>
#include <string>

#include "card_checks.h"
#include "formats/csv/csv_cards.h"
#include "formats/csv/csv_reader.h"
#include "text/code_pages.h"

namespace {

size_t CountRows(std::string_view text) {
    CsvReader reader(text);
    size_t count = 0;
    size_t line = 0;
    for (CsvRow row; reader.Next(row); ++count) {
        Promise(row.line > line, "each row begins on a line of its own");
        line = row.line;
        for (const CsvField& field : row.fields) Promise(field.line >= row.line, "a field stands in its row");
    }
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const ReadingChoice choice = TakeChoice(input);
    std::string text;
    AppendRepaired(input, choice.charset.value_or(CP_UTF8), text);
    ReportCounter reports;
    CardSetBuilder builder(choice.contents, text.size(), reports);
    DraftChecker drafts(builder);
    ReadCsvCards(text, drafts);
    const std::shared_ptr<const CardSet> cards = builder.Finish(std::nullopt);
    CheckCards(*cards);
    const size_t rows = CountRows(text);
    const size_t read = cards->Cards().size() + cards->NamelessCount();
    Promise(read == 0 ? rows == 0 || reports.Count() > 0 || rows == 1 : read == rows - 1, "every row is a card");
    return 0;
}
