// faxbook books, faxbook destinations.
#include <algorithm>
#include <ostream>

#include "books.h"
#include "characters.h"
#include "commands.h"
#include "session.h"
#include "text.h"

namespace commands {

void ListBooks(const CommandContext& context) {
    const Library library;
    Session session(library, context.profile);
    const Books books = ReadBooks(session);
    Table table({{"path"}, {"name"}, {"kind"}, {"service"}, {"provider_value", Column::Kind::Number}});
    for (const Book& book : books) {
        table.AddRow({PathText(book), book.name, book.isContainer ? "container" : "address book", book.serviceName,
                      std::to_string(book.providerValue)});
    }
    Print(table, context.format, context.out);
    if (books.empty()) {
        context.notes << "faxbook: the profile has no address books; put vCard files or folders of them into its "
                         "contacts folder\n";
    }
}

void ListDestinations(const CommandContext& context, const std::string& book, const std::string& searchWord) {
    const Library library;
    Session session(library, context.profile);
    const Books books = ReadBooks(session);
    const Book& found = FindBook(books, book);
    const std::u32string folded = FoldCase(AsCodePageHasIt(searchWord));
    constexpr auto hide = Column::WhenEmpty::Hide;
    Table table({{"name"},
                 {"type"},
                 {"number"},
                 {"company", Column::Kind::Text, hide},
                 {"department", Column::Kind::Text, hide},
                 {"note", Column::Kind::Text, hide},
                 {"comment", Column::Kind::Text, hide}});
    session.ForEachDestination(found.entry, [&](const DestinationRecord& record) {
        const std::string cells[] = {
            FieldText(record.name),       record.type == DESTINATION_GROUP ? "group" : "person",
            FieldText(record.faxNumber),  FieldText(record.company),
            FieldText(record.department), FieldText(record.faxNote),
            FieldText(record.comment)};
        const auto matches = [&](const std::string& cell) { return ContainsFolded(cell, folded); };
        if (!folded.empty() && std::ranges::none_of(cells, matches)) return;
        table.AddRow({cells[0], cells[1], cells[2], cells[3], cells[4], cells[5], cells[6]});
    });
    Print(table, context.format, context.out);
    if (table.RowCount() == 0) {
        context.notes << "faxbook: no destinations in " << PathText(found);
        if (!searchWord.empty()) context.notes << " with \"" << searchWord << '"';
        context.notes << '\n';
    }
}

}  // namespace commands
