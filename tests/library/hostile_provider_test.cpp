// Providers that answer what no provider should: wrong counts, broken rows, values of any size. What can be read is
// there, and nothing else is touched.
#include "support/library_test.h"

namespace {

class HostileProviderTest : public LibraryTest {};

// All tables are read by the same rules; each case is tried on each.
TEST_F(HostileProviderTest, CountsAndRowSetsMayLie) {
    struct {
        const char* what;
        size_t rows;
        std::optional<ULONG> statedCount;
        std::vector<ULONG> batches;
        size_t read;
        unsigned queries;
    } const cases[] = {
        {"nothing although counted", 3, 3, {0}, 0, 1},
        {"nothing after the first row set", 4, 4, {2, 0, 2}, 2, 2},
        {"fewer at a time than asked for", 3, 3, {1, 1, 1}, 3, 3},
        {"fewer than counted", 3, 10, {}, 3, 2},
        {"more than counted, given when asked for less", 5, 2, {5}, 5, 1},
        {"more than counted, never given", 5, 2, {}, 2, 1},
        {"more than are left", 4, 3, {2, 2}, 4, 2},
        {"no count", 3, 0, {}, 0, 0},
        {"the largest count", 3, 0xFFFFFFFF, {}, 3, 2},
        {"more than a batch, all at once", 10003, std::nullopt, {10003}, 10003, 1},
        {"more than a batch, with more to come", 12000, std::nullopt, {10003}, 12000, 2},
        {"more than asked for, again and again", 9, 6, {5, 0xFFFFFFFF}, 9, 2},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        const auto lie = [&](Table& table, const Row& row) {
            table = {std::vector<Row>(each.rows, row), each.statedCount, each.batches};
        };
        script_.entries.clear();
        lie(script_.entries[""].hierarchy, ContainerRow("b", "Book"));
        session_ = Open();
        script_.Forget();
        uint32_t count = 0;
        EXPECT_EQ(library_.GetAddressBookList(session_, 0, nullptr, &count, nullptr), each.read == 0 ? 0 : 1);
        EXPECT_EQ(count, each.read);
        EXPECT_EQ(script_.CountOf("QueryRows"), each.queries);

        script_.entries[""].hierarchy = {{ContainerRow("b", "Book")}, {}, {}};
        lie(script_.entries["b"].hierarchy, ContainerRow("", "Container"));
        lie(script_.entries["b"].contents, PersonRow("p", "Ada"));
        const AddressBookEntry book = ListBooks(session_)[0].entry;
        EXPECT_EQ(ListBooks(session_, book).size(), each.read);
        EXPECT_EQ(ListDestinations(session_, book).size(), each.read);

        script_.entries["b"].contents = {{GroupRow("g", "Group")}, {}, {}};
        script_.entries["g"] = {.type = MAPI_DISTLIST};
        lie(script_.entries["g"].contents, PersonRow("p", "Ada"));
        const DestinationEntry group = ListDestinations(session_, book)[0].entry;
        uint32_t size = 0;
        EXPECT_EQ(library_.GetDestinationDetails(session_, group, &size, nullptr), 1);
        EXPECT_EQ(size, each.read == 0 ? 0 : each.read * 5 - 2);
        Close(session_);
    }
}

// A row that cannot be understood is skipped or read as far as it goes.
TEST_F(HostileProviderTest, RowsMayBeBroken) {
    const Row whole = PersonRow("p", "Ada", {Text(PR_PRIMARY_FAX_NUMBER, "1")});
    const auto changed = [&](auto change) {
        Row row = whole;
        change(row);
        return row;
    };
    struct {
        Row row;
        const char* name;  // null: no record
        const char* number;
    } const cases[] = {
        {changed([](Row& row) { row.length = 0; }), nullptr, nullptr},
        {changed([](Row& row) { row.length = 2; }), nullptr, nullptr},
        {changed([](Row& row) { row.length = 3; }), "Ada", ""},
        {changed([](Row& row) { row.length = 5; }), "Ada", "1"},
        {changed([](Row& row) { row.withoutValues = true; }), nullptr, nullptr},
        // The object type counts under any tag, other values under their own tag only.
        {changed([](Row& row) { row.values[2].tag = CHANGE_PROP_TYPE(PR_OBJECT_TYPE, PT_ERROR); }), "Ada", "1"},
        {changed([](Row& row) { row.values[0] = Number(CHANGE_PROP_TYPE(PR_DISPLAY_NAME, PT_LONG), -1); }), "", "1"},
        {changed([](Row& row) { row.values[3] = Number(CHANGE_PROP_TYPE(PR_PRIMARY_FAX_NUMBER, PT_I2), 7); }), "Ada",
         ""},
        {changed([](Row& row) { row.asGiven = true; }), "Ada", ""},
        {changed([](Row& row) { row.values[0].isNull = row.values[3].isNull = true; }), "", ""},
        {changed([](Row& row) { row.values[1].isNull = true; }), "Ada", "1"},
        {changed([](Row& row) { row.values[1] = {.tag = PR_ENTRYID, .number = 100, .isNull = true}; }), "Ada", "1"},
        {changed([](Row& row) { row.values[1] = Missing(PR_ENTRYID); }), "Ada", "1"},
    };
    for (const HRESULT style : {0, 4})
        for (const auto& each : cases) {
            SCOPED_TRACE(&each - cases);
            const auto records = DestinationsOf({each.row, PersonRow("q", "Next")}, style);
            ASSERT_EQ(records.size(), each.name == nullptr ? 1u : 2u);
            EXPECT_STREQ(records.back().name, "Next");
            if (each.name == nullptr) continue;
            EXPECT_STREQ(records[0].name, each.name);
            EXPECT_STREQ(records[0].faxNumber, each.number);
            EXPECT_EQ(Details(session_, records[0].entry).find("Next"), std::string::npos);
        }
    // The same rows as address books and containers.
    for (const auto& each : cases) {
        script_.entries[""].hierarchy.rows = {each.row, ContainerRow("b", "Book")};
        script_.entries["b"].hierarchy.rows = {each.row};
        const auto books = ListBooks(session_);
        ASSERT_EQ(books.size(), 2u);
        const bool named = each.row.length.value_or(6) > 0 && !each.row.withoutValues && each.name == nullptr;
        EXPECT_STREQ(books[0].name, named ? "Ada" : each.name == nullptr ? "" : each.name);
        EXPECT_EQ(ListBooks(session_, books[1].entry).size(), 1u);
    }
}

TEST_F(HostileProviderTest, RecipientsMayBeBroken) {
    const std::vector<Value> numbers{Text(PR_PRIMARY_FAX_NUMBER, "1"), Text(PR_ADDRTYPE, "SMTP")};
    std::vector<Row> members(5, PersonRow("m", "Ada", numbers));
    members[0].withoutValues = true;
    members[1].length = 0;
    members[2].length = 1;
    members[3].length = 5;
    members[4].values[0].isNull = true;
    script_.entries["g"] = {.type = MAPI_DISTLIST, .properties = {Identifier("g")}};
    for (size_t i = 0; i < members.size(); ++i) {
        script_.entries["g"].members.push_back("m" + std::to_string(i));
        script_.entries["m" + std::to_string(i)].properties = members[i];
    }
    script_.entries["g"].members.push_back("unknown");
    for (const HRESULT style : {0, 4}) {
        const DestinationEntry group = DestinationsOf({GroupRow("g", "Group")}, style)[0].entry;
        std::string seen;
        std::vector<GroupMemberRecord> records(6, Untouched<GroupMemberRecord>());
        const RecordListDescriptor descriptor{0, {}, records.data()};
        uint32_t count = 6;
        EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, group, &count, &descriptor), 1);
        for (const GroupMemberRecord& record : records)
            if (record.contentsStyle == static_cast<uint32_t>(style))
                seen += std::string(record.name) + ':' + record.businessFax + ' ';
        EXPECT_EQ(seen, style == 4 ? "Ada:1 :1 " : ": : Ada: Ada:1 :1 : ");
    }
    // Entries that never had values.
    script_.entries["g"].members = {"", "m3", ""};
    const std::vector<GroupMemberRecord> found =
        ListMembers(session_, DestinationsOf({GroupRow("g", "Group")})[0].entry);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_STREQ(found[1].name, "Ada");
    // The group's own entry with fewer values than asked for, and with none behind the count.
    for (const ULONG length : {0u, 1u, 2u}) {
        script_.entries["g"].properties.length = length;
        uint32_t count = 0;
        const DestinationEntry group = DestinationsOf({GroupRow("g", "Group")})[0].entry;
        EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, group, &count, nullptr), 1);
    }
    script_.entries["g"].properties.withoutValues = true;
    uint32_t count = 3;
    const DestinationEntry group = DestinationsOf({GroupRow("g", "Group")})[0].entry;
    EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, group, &count, nullptr), 1);
    EXPECT_EQ(count, 3u);
}

// The array of a second read that is shorter than asked for, or only claims to have values.
TEST_F(HostileProviderTest, PropertyArraysMayBeBroken) {
    Row properties{Text(PR_COMPANY_NAME, "C"), Text(PR_BODY, "Body"), Text(PR_COMMENT, "Comment")};
    const auto companyOf = [&](const Row& row) {
        script_.entries["p"] = {.type = MAPI_MAILUSER, .properties = row};
        const auto records = DestinationsOf({PersonRow("p", "Ada", {Text(PR_PRIMARY_FAX_NUMBER, "1")})});
        return std::string(records[0].company) + ':' + records[0].comment;
    };
    properties.length = 0;
    EXPECT_EQ(companyOf(properties), ":");
    properties.length = 1;
    EXPECT_EQ(companyOf(properties), "C:");
    properties.length = 3;
    EXPECT_EQ(companyOf(properties), "C:Comment");
    properties.withoutValues = true;
    EXPECT_EQ(companyOf(properties), ":");
}

TEST_F(HostileProviderTest, ValuesMayBeOfAnySize) {
    const std::string largeId(1 << 20, '\xFE');
    const std::string largeText(10 << 20, 'x');
    script_.entries[largeId].contents.rows = {PersonRow(largeId, largeText, {Text(PR_PRIMARY_FAX_NUMBER, largeText)})};
    script_.entries[""].hierarchy.rows = {ContainerRow(largeId, largeText)};
    session_ = Open();
    const auto books = ListBooks(session_);
    EXPECT_TRUE(SameBytes(books[0], ExpectedBook(books[0], largeText.substr(0, 259), "", 0)));
    EXPECT_TRUE(ListBooks(session_, books[0].entry).empty());
    const auto records = ListDestinations(session_, books[0].entry);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_STREQ(records[0].name, largeText.substr(0, 85).c_str());
    EXPECT_EQ(Details(session_, records[0].entry), largeText + "\r\n" + largeText + " [Business]");
}

// Whatever type is told, what opens is asked for its tables, but for a person, whose object has none.
TEST_F(HostileProviderTest, ObjectsMayBeOfAnotherType) {
    DestinationsOf({GroupRow("g", "Group")});
    AddContainer("b", "c", "Container");
    AddContainer("c", "d", "Below");
    script_.entries["g"] = {.type = MAPI_DISTLIST};
    script_.entries["g"].contents.rows = {PersonRow("p", "Ada")};
    for (const ULONG type : {ULONG{0}, ULONG{2}, ULONG{3}, MAPI_ABCONT, ULONG{5}, MAPI_MAILUSER, ULONG{0xFFFFFFFF}}) {
        const bool opens = type != MAPI_MAILUSER;
        for (const char* id : {"b", "c", "g"}) script_.entries[id].type = type;
        if (opens) script_.entries[""].type = type;
        AddressBookEntry book = ListBooks(session_)[0].entry;
        EXPECT_EQ(ListBooks(session_, book).size(), opens ? 2u : 0u);
        EXPECT_EQ(ListDestinations(session_, book).size(), opens ? 1u : 0u);
        script_.entries["b"].type = MAPI_ABCONT;
        const DestinationEntry group = ListDestinations(session_, book)[0].entry;
        EXPECT_EQ(Details(session_, group), opens ? "Ada" : "");
        book = ListBooks(session_)[0].entry;
        EXPECT_EQ(ListBooks(session_, book).size(), opens ? 2u : 1u);
    }
    script_.entries[""].type = MAPI_MAILUSER;
    uint32_t count = 0;
    EXPECT_EQ(library_.GetAddressBookList(session_, 0, nullptr, &count, nullptr), 0);
}

// A session without one of its two objects is none.
TEST_F(HostileProviderTest, BothSessionObjectsAreNeeded) {
    for (const bool addressBook : {true, false}) {
        script_.opensAddressBook = addressBook;
        script_.opensSupport = !addressBook;
        EXPECT_EQ(library_.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
        EXPECT_EQ(library_.GetLastVOKError(nullptr), E_FAIL);
        EXPECT_EQ(script_.Imbalance(), "");
    }
}

}  // namespace
