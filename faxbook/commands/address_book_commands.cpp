// faxbook books, faxbook destinations.
#include <algorithm>

#include "client/books.h"
#include "client/library_session.h"
#include "client/record_text.h"
#include "commands/commands.h"
#include "text/characters.h"

namespace commands {

void ListBooks(const CommandContext& context) {
    const Library library;
    LibrarySession session(library, context.profile);
    const Books books = ReadBooks(session);
    Table table =
        context.MakeTable({{"path"}, {"name"}, {"kind"}, {"service"}, {"provider_value", Column::Kind::Number}});
    for (const Book& book : books) {
        table.AddRow({PathText(book), book.name, book.isContainer ? "container" : "address book", book.serviceName,
                      std::to_string(book.providerValue)});
    }
    table.Finish();
    if (books.empty()) {
        context.console.Note(
            "the profile has no address books; put address files or folders of them into its contacts folder");
    }
}

void ListDestinations(const CommandContext& context, const std::string& book, const std::string& searchWord) {
    const Library library;
    LibrarySession session(library, context.profile);
    const Books books = ReadBooks(session);
    const Book& found = FindBook(books, book);
    const std::u32string folded = FoldCase(AsCodePageHasIt(searchWord));
    constexpr auto hide = Column::WhenEmpty::Hide;
    Table table = context.MakeTable({{"name"},
                                     {"type"},
                                     {"number", Column::Kind::Telephone},
                                     {"company", Column::Kind::Text, hide},
                                     {"department", Column::Kind::Text, hide},
                                     {"note", Column::Kind::Remark, hide},
                                     {"comment", Column::Kind::Remark, hide}});
    context.console.Reading(PathText(found));
    session.ForEachDestination(found.entry, [&](const DestinationRecord& record) {
        context.console.CountOne();
        const std::string cells[] = {
            FieldText(record.name),       record.type == DESTINATION_GROUP ? "group" : "person",
            FieldText(record.faxNumber),  FieldText(record.company),
            FieldText(record.department), FieldText(record.faxNote),
            FieldText(record.comment)};
        const auto matches = [&](const std::string& cell) { return ContainsFolded(cell, folded); };
        if (!folded.empty() && std::ranges::none_of(cells, matches)) return;
        table.AddRow({cells[0], cells[1], cells[2], cells[3], cells[4], cells[5], cells[6]});
    });
    table.Finish();
    if (table.RowCount() == 0) {
        context.console.Note("no destinations in " + PathText(found) +
                             (searchWord.empty() ? "" : " with \"" + searchWord + "\""));
    }
}

}  // namespace commands
