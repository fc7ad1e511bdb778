// faxbook details, faxbook group.
#include <algorithm>
#include <functional>

#include "client/books.h"
#include "client/library_session.h"
#include "client/name_lists.h"
#include "client/record_text.h"
#include "commands/command_failure.h"
#include "commands/commands.h"
#include "text/characters.h"

namespace {

struct Destination {
    std::string name;
    bool isGroup;
    DestinationEntry entry;
};

// Each destination once, although a person has a record for every number.
std::vector<Destination> ReadDestinations(LibrarySession& session, const Book& book, Console& console) {
    console.Reading(PathText(book));
    std::vector<Destination> destinations;
    session.ForEachDestination(book.entry, [&](const DestinationRecord& record) {
        console.CountOne();
        if (!destinations.empty() && destinations.back().entry == record.entry) return;
        destinations.push_back({FieldText(record.name), record.type == DESTINATION_GROUP, record.entry});
    });
    return destinations;
}

// All destinations of the name: those with exactly these letters, or else those that differ in case only.
std::vector<Destination> FindDestinations(const std::vector<Destination>& destinations, const Book& book,
                                          const std::string& wanted) {
    const std::string name = AsCodePageHasIt(wanted);
    const std::u32string folded = FoldCase(name);
    const std::function<bool(const Destination&)> ways[] = {
        [&](const Destination& destination) { return destination.name == name; },
        [&](const Destination& destination) { return FoldCase(destination.name) == folded; },
    };
    std::vector<Destination> found;
    for (const auto& matches : ways) {
        if (found.empty()) std::ranges::copy_if(destinations, std::back_inserter(found), matches);
    }
    if (!found.empty()) return found;

    std::vector<std::string> names;
    std::ranges::transform(destinations, std::back_inserter(names), &Destination::name);
    const std::vector<std::string> nearNames = NearNames(name, names);
    throw CommandFailure("there is no destination \"" + wanted + "\" in " + PathText(book) + "; " +
                         (nearNames.empty()
                              ? "\"faxbook destinations\" lists the " + std::to_string(names.size()) + " that it has"
                              : "near it: " + JoinNames(nearNames)));
}

std::string WithLineFeeds(std::string text) {
    std::erase(text, '\r');
    return text;
}

}  // namespace

namespace commands {

void ShowDetails(const CommandContext& context, const std::string& book, const std::string& name) {
    const Library library;
    LibrarySession session(library, context.profile);
    const Books books = ReadBooks(session);
    const Book& found = FindBook(books, book);
    Table table = context.MakeTable({{"name"}, {"type"}, {"details", Column::Kind::Block}});
    for (const Destination& destination :
         FindDestinations(ReadDestinations(session, found, context.console), found, name)) {
        table.AddRow({destination.name, destination.isGroup ? "group" : "person",
                      WithLineFeeds(FromActiveCodePage(session.Details(destination.entry)))});
    }
    table.Finish();
}

void ListGroupMembers(const CommandContext& context, const std::string& book, const std::string& group) {
    const Library library;
    LibrarySession session(library, context.profile);
    const Books books = ReadBooks(session);
    const Book& found = FindBook(books, book);
    std::vector<Destination> groups = FindDestinations(ReadDestinations(session, found, context.console), found, group);
    std::erase_if(groups, [](const Destination& destination) { return !destination.isGroup; });
    if (groups.empty()) {
        throw CommandFailure("\"" + group + "\" in " + PathText(found) +
                             " is a person, not a group; \"faxbook details\" shows a person");
    }
    if (groups.size() > 1) {
        context.console.Note(std::to_string(groups.size()) + " groups in " + PathText(found) + " are called \"" +
                             group + "\"; the members of all of them follow");
    }
    constexpr auto text = Column::Kind::Text;
    constexpr auto telephone = Column::Kind::Telephone;
    constexpr auto hide = Column::WhenEmpty::Hide;
    Table table = context.MakeTable({{"name"},
                                     {"company", text, hide},
                                     {"department", text, hide},
                                     {"fax", telephone},
                                     {"fax_attr1", text, hide},
                                     {"fax_attr2", text, hide},
                                     {"fax_attr3", text, hide},
                                     {"home_fax", telephone, hide},
                                     {"home_fax_attr1", text, hide},
                                     {"home_fax_attr2", text, hide},
                                     {"home_fax_attr3", text, hide},
                                     {"extended_fax", telephone, hide},
                                     {"extended_fax_attr1", text, hide},
                                     {"extended_fax_attr2", text, hide}});
    for (const Destination& destination : groups) {
        const ExpandedGroup members = session.Members(destination.entry);
        for (const GroupMemberRecord& record : members.records) {
            table.AddRow({FieldText(record.name), FieldText(record.company), FieldText(record.department),
                          FieldText(record.businessFax), FieldText(record.businessFaxAttr1),
                          FieldText(record.businessFaxAttr2), FieldText(record.businessFaxAttr3),
                          FieldText(record.homeFax), FieldText(record.homeFaxAttr1), FieldText(record.homeFaxAttr2),
                          FieldText(record.homeFaxAttr3), FieldText(record.extendedFax),
                          FieldText(record.extendedFaxAttr1), FieldText(record.extendedFaxAttr2)});
        }
        if (members.records.empty()) {
            context.console.Note("\"" + group + "\" in " + PathText(found) + " has " +
                                 (members.recipientCount == 0 ? "no members"
                                                              : std::to_string(members.recipientCount) +
                                                                    " members, none of them with a fax number"));
        }
    }
    table.Finish();
}

}  // namespace commands
