// GetDestinationList: reading contents tables, and one record for each fax number of a person and each group.
#include "support/library_test.h"

namespace {

class DestinationListTest : public LibraryTest {
  protected:
    int32_t Fill(std::vector<DestinationRecord*> addresses, uint32_t capacity) {
        const RecordListDescriptor descriptor{-1, {}, addresses.empty() ? nullptr : addresses.data()};
        uint32_t count = capacity;
        const int32_t result = library_.GetDestinationList(session_, 0xFFFFFFFF, Book(), &count, &descriptor);
        EXPECT_EQ(count, capacity);
        return result;
    }
    AddressBookEntry Book() {
        auto record = Untouched<AddressBookRecord>();
        uint32_t one = 1;
        const RecordListDescriptor descriptor{sizeof record, {}, &record};
        library_.GetAddressBookList(session_, 0, nullptr, &one, &descriptor);
        return record.entry;
    }
};

// Every property that a person can have, each with a text of its own.
std::vector<Value> FullPerson() {
    return {Text(PR_BUSINESS_FAX_NUMBER, "b"),
            Text(PR_VOK_BUSINESS_FAX_ATTR1, "b1"),
            Text(PR_VOK_BUSINESS_FAX_ATTR2, "b2"),
            Text(PR_VOK_BUSINESS_FAX_ATTR3, "b3"),
            Text(PR_VOK_BUSINESS_FAX_NOTE, "bn"),
            Text(PR_HOME_FAX_NUMBER, "h"),
            Text(PR_VOK_HOME_FAX_ATTR1, "h1"),
            Text(PR_VOK_HOME_FAX_ATTR2, "h2"),
            Text(PR_VOK_HOME_FAX_ATTR3, "h3"),
            Text(PR_VOK_HOME_FAX_NOTE, "hn"),
            Text(PR_PRIMARY_FAX_NUMBER, "p"),
            Text(PR_VOK_EXTENDED_FAX, "e"),
            Text(PR_VOK_EXTENDED_FAX_ATTR1, "e1"),
            Text(PR_VOK_EXTENDED_FAX_ATTR2, "e2"),
            Text(PR_VOK_EXTENDED_FAX_NOTE, "en"),
            Number(PR_VOK_EXTENDED_FAX_VALUE1, -2),
            Number(PR_VOK_EXTENDED_FAX_VALUE2, 513),
            Text(PR_COMPANY_NAME, "company"),
            Text(PR_DEPARTMENT_NAME, "department"),
            Text(PR_COMMENT, "comment"),
            Text(PR_VOK_EXTRA_TEXT, "extra"),
            Text(PR_VOK_EXTRA_SHORT_TEXT, "short"),
            Text(PR_ORIGINAL_DISPLAY_NAME, "ignored"),
            Text(PR_EMAIL_ADDRESS, "ignored@1"),
            Text(PR_ADDRTYPE, "FAX")};
}

DestinationRecord ExpectedSlot(DestinationEntry entry, const char* number, const char* note, const char* attr1,
                               const char* attr2, const char* attr3) {
    DestinationRecord record = ExpectedPerson(entry, "Ada", number);
    Put(record.company, "company");
    Put(record.department, "department");
    Put(record.comment, "comment");
    Put(record.extraText, "extra");
    Put(record.extraShortText, "short");
    Put(record.faxNote, note);
    Put(record.faxAttr1, attr1);
    Put(record.faxAttr2, attr2);
    Put(record.faxAttr3, attr3);
    return record;
}

TEST_F(DestinationListTest, GivesOneRecordForEachNumberOfAPerson) {
    // The suffix of the name means nothing but in fax entries.
    const auto records =
        DestinationsOf({PersonRow("p", "Ada", FullPerson()), GroupRow("g", "Group", FullPerson()),
                        ContainerRow("c", "neither person nor group"), PersonRow("q", "Eve (Other Fax)"),
                        PersonRow("r", "Ida", {Text(PR_HOME_FAX_NUMBER, "1")})},
                       1);
    ASSERT_EQ(records.size(), 7u);
    const DestinationEntry ada = records[0].entry;
    EXPECT_TRUE(SameBytes(records[0], ExpectedSlot(ada, "b", "bn", "b1", "b2", "b3")));
    EXPECT_TRUE(SameBytes(records[1], ExpectedSlot(ada, "h", "hn", "h1", "h2", "h3")));
    EXPECT_TRUE(SameBytes(records[2], ExpectedSlot(ada, "p", "", "", "", "")));
    DestinationRecord extended = ExpectedSlot(ada, "e", "en", "e1", "e2", "");
    extended.extendedFaxValue1 = 0xFFFE;
    extended.extendedFaxValue2 = 513;
    EXPECT_TRUE(SameBytes(records[3], extended));
    DestinationRecord group = ExpectedGroup(records[4].entry, "Group");
    Put(group.comment, "comment");
    Put(group.extraText, "extra");
    EXPECT_TRUE(SameBytes(records[4], group));
    EXPECT_TRUE(SameBytes(records[5], ExpectedNameOnly(records[5].entry, "Eve (Other Fax)")));
    EXPECT_TRUE(SameBytes(records[6], ExpectedPerson(records[6].entry, "Ida", "1")));
    EXPECT_TRUE(ada != records[4].entry && ada != records[5].entry && records[5].entry != records[6].entry);
}

TEST_F(DestinationListTest, CountsByAddingAndFillsByCapacity) {
    DestinationsOf({PersonRow("p", "Ada", FullPerson()), GroupRow("g", "Group")});
    uint32_t count = 2;
    EXPECT_EQ(library_.GetDestinationList(session_, 1, Book(), &count, nullptr), 1);
    EXPECT_EQ(count, 7u);
    script_.Forget();

    std::vector<DestinationRecord> records(6, Untouched<DestinationRecord>());
    std::vector<DestinationRecord*> addresses{&records[5], &records[0], &records[3], &records[1], &records[4]};
    EXPECT_EQ(Fill(addresses, 5), 1);
    EXPECT_STREQ(records[5].faxNumber, "b");
    EXPECT_STREQ(records[1].faxNumber, "e");
    EXPECT_EQ(records[4].type, DESTINATION_GROUP);
    EXPECT_TRUE(SameBytes(records[2], Untouched<DestinationRecord>()));

    // The fill ends at the capacity, whatever lies behind it, and at a null address.
    for (const bool byCapacity : {true, false}) {
        records.assign(6, Untouched<DestinationRecord>());
        addresses = {&records[0], &records[1], byCapacity ? &records[2] : nullptr, &records[3], &records[4]};
        EXPECT_EQ(Fill(addresses, byCapacity ? 2 : 5), 0);
        EXPECT_STREQ(records[1].faxNumber, "h");
        EXPECT_TRUE(SameBytes(records[2], Untouched<DestinationRecord>()));
        EXPECT_TRUE(SameBytes(records[3], Untouched<DestinationRecord>()));
    }
    addresses = {&records[0]};
    EXPECT_EQ(Fill({}, 5), 0);
    EXPECT_EQ(Fill(addresses, 0), 0);
    EXPECT_EQ(script_.callCount, 0u) << "a fill asked the provider";
}

TEST_F(DestinationListTest, FillsNothingWithoutAList) {
    AddContainer("", "b", "Book");
    session_ = Open();
    ListBooks(session_);
    auto record = Untouched<DestinationRecord>();
    EXPECT_EQ(Fill({&record}, 1), 1);
    EXPECT_TRUE(ListDestinations(session_, Book()).empty());
    EXPECT_EQ(Fill({&record}, 1), 1);
    EXPECT_EQ(Fill({}, 0), 1);
    EXPECT_TRUE(SameBytes(record, Untouched<DestinationRecord>()));
}

TEST_F(DestinationListTest, ReadsContentsTablesAsAgreed) {
    DestinationsOf({PersonRow("p", "Ada", FullPerson()), GroupRow("g", "Group")}, 3);
    std::string text;
    for (const std::string& call : script_.calls) text += call + '\n';
    text.erase(0, text.find("addressBook.OpenEntry(b, null, 0)"));
    EXPECT_EQ(text,
              "addressBook.OpenEntry(b, null, 0)\n"
              "b.GetContentsTable(0)\n"
              "b.contents.SetColumns([3001001E 0FFF0102 0FFE0003 3002001E 3A23001E 3A25001E 5805001E 5806001E "
              "5804001E 5808001E 3A24001E 5802001E 5803001E 5801001E 5807001E 3004001E 3A13001E 3003001E 3A16001E "
              "3A18001E 5809001E 580A001E 580B0002 580C0002 580E001E 580F001E 5810001E 5811001E], 0)\n"
              "b.contents.SeekRow(0, 0, null)\n"
              "b.contents.GetRowCount(0)\n"
              "b.contents.QueryRows(2, 0)\n"
              "VOKFreeProws()\n"
              "b.contents.Release()\n"
              "b.Release()\n");
}

// What the table cannot deliver is read from the entry, and then wins over what the table had.
TEST_F(DestinationListTest, ReadsMissingPropertiesFromTheEntry) {
    script_.entries["p"] = {
        .type = MAPI_MAILUSER,
        .properties = {Text(PR_COMPANY_NAME, "C"), Text(PR_BODY, "Body"), Text(PR_VOK_EXTRA_SHORT_TEXT, "S")}};
    script_.entries["q"] = script_.entries["p"];
    script_.entries["q"].properties.values.push_back(Text(PR_COMMENT, "Comment"));
    struct {
        const char* id;
        std::vector<Value> table;
        const char *company, *department, *comment, *extraText, *extraShortText;
    } const cases[] = {
        // The entry lacks the department and the extra text; they become empty.
        {"p",
         {Missing(PR_COMPANY_NAME), Text(PR_DEPARTMENT_NAME, "D"), Text(PR_COMMENT, "T"), Text(PR_VOK_EXTRA_TEXT, "X")},
         "C",
         "",
         "Body",
         "",
         "S"},
        {"q",
         {Missing(PR_COMMENT), Text(PR_COMPANY_NAME, "T"), Text(PR_DEPARTMENT_NAME, "D")},
         "C",
         "",
         "Comment",
         "",
         "S"},
        {"q",
         {Missing(PR_DEPARTMENT_NAME), Text(PR_COMPANY_NAME, "T"), Text(PR_COMMENT, "T")},
         "C",
         "",
         "Comment",
         "",
         "S"},
        // Other missing values, and other types, are no reason to open the entry.
        {"p",
         {Missing(PR_VOK_EXTRA_SHORT_TEXT), Text(PR_COMPANY_NAME, "T"), Text(PR_COMMENT, ""),
          Number(CHANGE_PROP_TYPE(PR_DEPARTMENT_NAME, PT_LONG), 1)},
         "T",
         "",
         "",
         "",
         ""},
        // Nothing to open: what the table has stays.
        {"unknown",
         {Missing(PR_COMPANY_NAME), Text(PR_DEPARTMENT_NAME, "D"), Text(PR_VOK_EXTRA_TEXT, "X")},
         "",
         "D",
         "",
         "X",
         ""},
        {"", {Missing(PR_COMPANY_NAME), Text(PR_DEPARTMENT_NAME, "D")}, "", "D", "", "", ""},
    };
    for (const auto& each : cases) {
        std::vector<Value> values = each.table;
        values.push_back(Text(PR_PRIMARY_FAX_NUMBER, "1"));
        script_.Forget();
        const auto records = DestinationsOf({PersonRow(each.id, "Ada", values)});
        ASSERT_EQ(records.size(), 1u);
        DestinationRecord expected = ExpectedPerson(records[0].entry, "Ada", "1");
        Put(expected.company, each.company);
        Put(expected.department, each.department);
        Put(expected.comment, each.comment);
        Put(expected.extraText, each.extraText);
        Put(expected.extraShortText, each.extraShortText);
        EXPECT_TRUE(SameBytes(records[0], expected)) << "case " << &each - cases;
        const std::string wanted =
            each.id + std::string(".GetProps([3A16001E 3A18001E 3004001E 1000001E 5809001E 580A001E], 0)\n");
        EXPECT_EQ(script_.CallsOf({"GetProps"}), std::string(each.company) == "C" ? wanted : "");
        EXPECT_EQ(script_.CountOf("OpenEntry"), 2u + (std::string(each.company) == "C" || *each.id == 'u'));
    }
}

// The array goes back before its entry, and both before the next row is looked at.
TEST_F(DestinationListTest, GivesBackWhatItReadFromTheEntry) {
    script_.entries["p"] = {.type = MAPI_MAILUSER};
    DestinationsOf({PersonRow("p", "Ada", {Missing(PR_COMMENT)}), PersonRow("q", "Eve", {Missing(PR_COMMENT)})});
    const std::string calls = script_.CallsOf({"OpenEntry", "FreeProperties", "Release"});
    EXPECT_NE(calls.find("addressBook.OpenEntry(p, null, 0)\n"
                         "support.FreeProperties()\n"
                         "p.Release()\n"
                         "addressBook.OpenEntry(q, null, 0)\n"),
              std::string::npos)
        << calls;
}

TEST_F(DestinationListTest, ReadsLargeTablesInEqualBatches) {
    script_.keepsCalls = false;
    std::vector<Row> rows(24999, PersonRow("p", "Ada"));
    rows.push_back(PersonRow("p", "Ida", {Text(PR_PRIMARY_FAX_NUMBER, "1")}));
    const auto records = DestinationsOf(std::move(rows));
    ASSERT_EQ(records.size(), 25000u);
    EXPECT_TRUE(SameBytes(records[24999], ExpectedPerson(records[24999].entry, "Ida", "1")));
    EXPECT_TRUE(SameBytes(records[10000], ExpectedNameOnly(records[10000].entry, "Ada")));
    EXPECT_EQ(script_.CountOf("QueryRows"), 4u);  // one of them for the address books
}

TEST_F(DestinationListTest, ListsAnyContainerAndForgetsTheListBefore) {
    AddContainer("", "b", "Book");
    AddContainer("b", "c", "Container");
    script_.entries["c"].contents.rows = {PersonRow("p", "Ada"), PersonRow("q", "Eve")};
    script_.entries["b"].contents.rows = {PersonRow("r", "Ida")};
    session_ = Open();
    const AddressBookEntry book = ListBooks(session_)[0].entry;
    const AddressBookEntry container = ListBooks(session_, book)[0].entry;
    EXPECT_EQ(ListDestinations(session_, container).size(), 2u);
    EXPECT_STREQ(ListDestinations(session_, book)[0].name, "Ida");
    // One that cannot be opened has no destinations.
    script_.entries.erase("c");
    EXPECT_TRUE(ListDestinations(session_, container).empty());
    // Each session has its own.
    SessionHandle* const other = Open();
    EXPECT_EQ(ListDestinations(session_, book).size(), 1u);
    EXPECT_EQ(ListDestinations(other, ListBooks(other)[0].entry).size(), 1u);
    EXPECT_EQ(Fill({}, 0), 0);
}

// A handle of the other family is recognised.
TEST_F(DestinationListTest, HandlesOfTheWrongFamilyDoNoHarm) {
    script_.entries["g"] = {.type = MAPI_DISTLIST, .members = {"p"}};
    const auto records = DestinationsOf({PersonRow("p", "Ada", FullPerson()), GroupRow("g", "Group")});
    AddContainer("b", "c", "Container");
    const AddressBookEntry book = ListBooks(session_)[0].entry;
    const AddressBookEntry container = ListBooks(session_, book)[0].entry;
    script_.Forget();
    for (const DestinationEntry destination : {records[0].entry, records[4].entry}) {
        const auto wrong = reinterpret_cast<AddressBookEntry>(destination);
        uint32_t count = 5;
        EXPECT_EQ(library_.GetDestinationList(session_, 0, wrong, &count, nullptr), 0);
        EXPECT_EQ(library_.GetAddressBookList(session_, 0, wrong, &count, nullptr), 1);
        EXPECT_EQ(count, 5u);
    }
    for (const AddressBookEntry address : {book, container}) {
        const auto wrong = reinterpret_cast<DestinationEntry>(address);
        uint32_t count = 5;
        EXPECT_EQ(library_.GetDestinationDetails(session_, wrong, &count, nullptr), 0);
        EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, wrong, &count, nullptr), 1);
        EXPECT_EQ(count, 5u);
    }
    EXPECT_EQ(script_.callCount, 0u);
    EXPECT_EQ(Details(session_, records[4].entry), "") << "the destinations did not outlive the attempts";
}

}  // namespace
