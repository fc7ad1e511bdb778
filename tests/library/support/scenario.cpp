// The data of the scenario and its steps, each of which goes on from what the earlier ones found.
#include "support/scenario.h"

const char* const undisturbedScenario =
    "open: opened\n"
    "books: 2\n"
    "book list: Plain/VCARD/7 Faxes//0 \n"
    "containers: 3\n"
    "container list: A A1<A B \n"
    "destinations 0: 4\n"
    "destination list 0: Ada:1:Company:Comment Ada:2:Company:Comment Eve: group G \n"
    "details 0: Ada|Company|Dept|1 [Business]|Comment\n"
    "details 1: Ada|Company|Dept|1 [Business]|Comment\n"
    "details 2: Eve|No Fax Number\n"
    "details 3: Member|Inner\n"
    "recipients: 2\n"
    "members: One:11 Two:22 \n"
    "destinations 1: 3\n"
    "destination list 1: Ida:3:: Fay:4:: group H \n"
    "details 0: Ida|3 [Home]\n"
    "details 1: Fay|4 [Business]\n"
    "details 2: \n"
    "recipients: 2\n"
    "members: Uma:5 Two:22 \n"
    "profile: created\n"
    "administration: shown\n";

void MakeScenario() {
    Script& script = TheScript();
    AddContainer("", "plain", "Plain", {Text(PR_SERVICE_NAME, "VCARD"), Number(PR_VOK_PROVIDER_VALUE, 7)});
    AddContainer("", "faxes", "Faxes");
    AddContainer("plain", "a", "A");
    AddContainer("plain", "b", "B");
    AddContainer("a", "a1", "A1");

    script.entries["plain"].contents.rows = {
        PersonRow("ada", "Ada",
                  {Missing(PR_COMPANY_NAME), Text(PR_BUSINESS_FAX_NUMBER, "1"), Text(PR_HOME_FAX_NUMBER, "2")}),
        PersonRow("eve", "Eve", {Text(PR_COMPANY_NAME, ""), Text(PR_DEPARTMENT_NAME, ""), Text(PR_COMMENT, "")}),
        GroupRow("g", "G")};
    script.entries["ada"] = {
        .type = MAPI_MAILUSER,
        .properties = {Text(PR_COMPANY_NAME, "Company"), Text(PR_DEPARTMENT_NAME, "Dept"), Text(PR_BODY, "Comment")}};
    script.entries["g"] = {.type = MAPI_DISTLIST,
                           .properties = {Identifier("g"), Number(PR_RECIPIENT_TYPE, 0), Text(PR_DISPLAY_NAME, "G")},
                           .members = {"one", "two"}};
    script.entries["g"].contents.rows = {GroupRow("i", "Inner"), PersonRow("m", "Member")};
    script.entries["one"].properties = PersonRow("one", "One", {Text(PR_BUSINESS_FAX_NUMBER, "11")});
    script.entries["two"].properties =
        PersonRow("two", "Two", {Text(PR_ADDRTYPE, "SMTP"), Text(PR_PRIMARY_FAX_NUMBER, "22")});

    script.entries["faxes"].contentsResult = 4;
    script.entries["faxes"].contents.rows = {
        PersonRow("ida", "Ida (Home Fax)",
                  {Text(PR_ADDRTYPE, "FAX"), Text(PR_EMAIL_ADDRESS, "Ida@3"), Text(PR_COMPANY_NAME, ""),
                   Text(PR_DEPARTMENT_NAME, ""), Text(PR_COMMENT, "")}),
        PersonRow("fay", "Fay", {Text(PR_ADDRTYPE, "SMTP"), Text(PR_PRIMARY_FAX_NUMBER, "4")}), GroupRow("h", "H")};
    script.entries["ida"] = {.type = MAPI_MAILUSER, .properties = {Text(PR_ORIGINAL_DISPLAY_NAME, "Ida")}};
    script.entries["h"] = {.type = MAPI_DISTLIST,
                           .properties = {Identifier("h"), Number(PR_RECIPIENT_TYPE, 0)},
                           .members = {"uma", "two"}};
    script.entries["uma"].properties =
        PersonRow("uma", "Uma (Home Fax)",
                  {Text(PR_ADDRTYPE, "FAX"), Text(PR_ORIGINAL_DISPLAY_NAME, "Uma"), Text(PR_EMAIL_ADDRESS, "Uma@5")});
}

std::optional<std::string> MakeStep(const Step& step) {
    return step();
}

namespace {

// Makes a step and adds what it saw.
void Take(std::string& seen, const Attempt& attempt, const std::string& what, const Step& step) {
    seen += what + ": " + attempt(step).value_or("failed") + '\n';
}

}  // namespace

std::string RunSession(const LibraryUnderTest& library, const Attempt& attempt) {
    std::string seen;
    const auto take = [&](const std::string& what, const Step& step) { Take(seen, attempt, what, step); };
    SessionHandle* session = nullptr;
    uint32_t count = 0;
    const auto counted = [&](int32_t result) {
        return result == 1 ? std::optional(std::to_string(count)) : std::nullopt;
    };

    take("open", [&]() -> std::optional<std::string> {
        session = library.OpenAddressBook(nullptr, "profile", 0, nullptr, 0, nullptr);
        // A session that has no cache reads nothing; then opening again is the way out.
        const RecordListDescriptor nowhere{sizeof(AddressBookRecord), {}, nullptr};
        if (library.GetAddressBookList(session, 0, nullptr, &count, &nowhere) == 1) return "opened";
        library.CloseAddressBook(session);
        session = nullptr;
        return std::nullopt;
    });

    const auto listBooks = [&](const char* countName, const char* listName, AddressBookEntry parent,
                               std::vector<AddressBookRecord>& records) {
        take(countName, [&] {
            count = 0;
            return counted(library.GetAddressBookList(session, 0, parent, &count, nullptr));
        });
        records.assign(count, Untouched<AddressBookRecord>());
        take(listName, [&]() -> std::optional<std::string> {
            const RecordListDescriptor descriptor{sizeof(AddressBookRecord), {}, records.data()};
            if (library.GetAddressBookList(session, 0, parent, &count, &descriptor) != 1) return std::nullopt;
            std::string list;
            for (const AddressBookRecord& record : records) {
                list += record.name;
                if (record.parent != nullptr) list += '<' + std::string(record.parent->name);
                if (parent == nullptr)
                    list += '/' + std::string(record.serviceName) + '/' + std::to_string(record.providerValue);
                list += ' ';
            }
            return list;
        });
    };
    std::vector<AddressBookRecord> books, containers;
    listBooks("books", "book list", nullptr, books);
    if (!books.empty()) listBooks("containers", "container list", books[0].entry, containers);

    for (size_t book = 0; book < books.size(); ++book) {
        const std::string number = std::to_string(book);
        take("destinations " + number, [&] {
            count = 0;
            return counted(library.GetDestinationList(session, 0, books[book].entry, &count, nullptr));
        });
        std::vector<DestinationRecord> records(count, Untouched<DestinationRecord>());
        std::vector<DestinationRecord*> addresses;
        for (DestinationRecord& record : records) addresses.push_back(&record);
        take("destination list " + number, [&]() -> std::optional<std::string> {
            const RecordListDescriptor descriptor{0, {}, addresses.data()};
            if (library.GetDestinationList(session, 0, books[book].entry, &count, &descriptor) != 1)
                return std::nullopt;
            std::string list;
            for (const DestinationRecord& record : records) {
                list += (record.type == DESTINATION_GROUP ? "group " : "") + std::string(record.name);
                if (record.type == DESTINATION_PERSON) {
                    list += ':' + std::string(record.faxNumber);
                    if (*record.faxNumber != '\0') list += ':' + std::string(record.company) + ':' + record.comment;
                }
                list += ' ';
            }
            return list;
        });
        for (size_t i = 0; i < records.size(); ++i)
            take("details " + std::to_string(i), [&]() -> std::optional<std::string> {
                uint32_t size = 0;
                if (library.GetDestinationDetails(session, records[i].entry, &size, nullptr) != 1) return std::nullopt;
                std::string text(size + 1, '*');
                if (library.GetDestinationDetails(session, records[i].entry, &size, text.data()) != 1)
                    return std::nullopt;
                text.pop_back();
                for (size_t at; (at = text.find("\r\n")) != std::string::npos;) text.replace(at, 2, "|");
                return text;
            });
        if (records.empty()) continue;
        const DestinationEntry group = records.back().entry;
        take("recipients", [&] {
            count = 0;
            return counted(library.GetDestinationsInGroup(session, 0, group, &count, nullptr));
        });
        std::vector<GroupMemberRecord> members(count);
        take("members", [&]() -> std::optional<std::string> {
            const RecordListDescriptor descriptor{0, {}, members.data()};
            if (library.GetDestinationsInGroup(session, 0, group, &count, &descriptor) != 1) return std::nullopt;
            std::string list;
            for (const GroupMemberRecord& member : members)
                list += std::string(member.name) + ':' + member.businessFax + ' ';
            return list;
        });
    }
    EXPECT_EQ(library.CloseAddressBook(session), 1);
    return seen;
}

std::string RunScenario(const LibraryUnderTest& library, const Attempt& attempt) {
    std::string seen = RunSession(library, attempt);
    const auto succeeded = [](int32_t result, const char* what) {
        return result == 1 ? std::optional<std::string>(what) : std::nullopt;
    };
    Take(seen, attempt, "profile", [&] {
        const ServiceRecord services[2] = {{"VCARD", 1, {}}, {"SECOND", 0, {}}};
        return succeeded(library.CreateProfile(0, 0, "scenario", 2, services, nullptr), "created");
    });
    Take(seen, attempt, "administration",
         [&] { return succeeded(library.DisplayAdminProfiles(0, "scenario", 0, 0, nullptr), "shown"); });
    return seen;
}
