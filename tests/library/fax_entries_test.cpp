// Address books of contents style 4, in which each fax number of a contact is an entry of its own.
#include "support/library_test.h"

namespace {

class FaxEntriesTest : public LibraryTest {};

TEST_F(FaxEntriesTest, TakesTheNumberOutOfTheAddress) {
    struct {
        const char* displayName;
        const char* plainName;
        const char* address;
        const char* name;
        const char* number;
        const char* label;  // tells which field the number went to: the details text shows it
    } const cases[] = {
        {"Ada Byron (Business Fax)", "Ada Byron", "Ada Byron@+1 555 0100", "Ada Byron", "+1 555 0100", "[Business]"},
        {"Ada Byron (Home Fax)", "Ada Byron", "Ada Byron@2", "Ada Byron", "2", "[Home]"},
        {"Ada Byron (Other Fax)", "Ada Byron", "Ada Byron@3", "Ada Byron", "3", "[Other]"},
        // No suffix: the primary number.
        {"Ada Byron", "Ada Byron", "Ada Byron@4", "Ada Byron", "4", "[Business]"},
        {"Ada (HOME FAX)", "Ada", "Ada@5", "Ada", "5", "[Business]"},
        {"Ada (Other Fax) ", "Ada", "Ada@6", "Ada", "6", "[Business]"},
        {"Ada (Other Fax", "Ada", "Ada@7", "Ada", "7", "[Business]"},
        {"(Home Fax)", "", "@8", "", "8", "[Home]"},
        {"", "Ada", "Ada@9", "Ada", "9", "[Business]"},
        // The length of the plain name decides, not what the address holds.
        {"Ada (Home Fax)", "Bob", "Ada@10", "Bob", "10", "[Home]"},
        {"Ada (Home Fax)", "", "Ada@11", "", "da@11", "[Home]"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.address);
        script_.entries["p"] = {.type = MAPI_MAILUSER, .properties = {Text(PR_ORIGINAL_DISPLAY_NAME, each.plainName)}};
        // The table's other numbers do not count.
        const auto records = DestinationsOf(
            {PersonRow("p", each.displayName,
                       {Text(PR_ADDRTYPE, "FAX"), Text(PR_EMAIL_ADDRESS, each.address), Text(PR_COMPANY_NAME, "C"),
                        Text(PR_DEPARTMENT_NAME, ""), Text(PR_COMMENT, ""), Text(PR_HOME_FAX_NUMBER, "no"),
                        Text(PR_VOK_HOME_FAX_NOTE, "no"), Text(PR_VOK_EXTENDED_FAX, "no")})},
            4);
        ASSERT_EQ(records.size(), 1u);
        DestinationRecord expected = ExpectedPerson(records[0].entry, each.name, each.number);
        Put(expected.company, "C");
        EXPECT_TRUE(SameBytes(records[0], expected));
        const std::string begin = *each.name == '\0' ? "" : std::string(each.name) + "\r\n";
        EXPECT_EQ(Details(session_, records[0].entry), begin + "C\r\n" + each.number + ' ' + each.label);
        EXPECT_NE(script_.CallsOf({"GetProps"}).find("p.GetProps([3A13001E], 0)"), std::string::npos);
    }
}

// An address that holds no number after the plain name leaves a person without one, under the plain name.
TEST_F(FaxEntriesTest, AnAddressWithoutANumberGivesNone) {
    for (const char* address : {"Ada@", "Ada", "A", ""}) {
        script_.entries["p"] = {.type = MAPI_MAILUSER, .properties = {Text(PR_ORIGINAL_DISPLAY_NAME, "Ada")}};
        const auto records = DestinationsOf(
            {PersonRow("p", "Ada (Home Fax)", {Text(PR_ADDRTYPE, "FAX"), Text(PR_EMAIL_ADDRESS, address)})}, 4);
        ASSERT_EQ(records.size(), 1u);
        EXPECT_TRUE(SameBytes(records[0], ExpectedNameOnly(records[0].entry, "Ada"))) << address;
    }
}

// Without the entry there is no telling where the number begins, and the name stays as it is.
TEST_F(FaxEntriesTest, AnEntryThatCannotBeReadGivesNoNumber) {
    const std::vector<Value> values{Text(PR_ADDRTYPE, "FAX"), Text(PR_EMAIL_ADDRESS, "Ada@1"),
                                    Text(PR_COMPANY_NAME, ""), Text(PR_DEPARTMENT_NAME, ""), Text(PR_COMMENT, "")};
    struct {
        const char* id;
        std::vector<Fault> faults;
    } const cases[] = {
        {"unknown", {}},
        {"", {}},
        {"p", {{"OpenEntry", 3, S_OK, false}}},
        {"p", {{"OpenEntry", 3, E_FAIL, true}}},
        {"p", {{"GetProps", 1, S_OK, false}}},
        {"p", {{"GetProps", 1, E_FAIL, true}}},
    };
    script_.entries["p"] = {.type = MAPI_MAILUSER, .properties = {Text(PR_ORIGINAL_DISPLAY_NAME, "Ada")}};
    DestinationsOf({}, 4);
    for (const auto& each : cases) {
        script_.Forget();
        script_.faults = each.faults;
        const auto records = DestinationsOf({PersonRow(each.id, "Ada (Home Fax)", values)}, 4);
        ASSERT_EQ(records.size(), 1u);
        EXPECT_TRUE(SameBytes(records[0], ExpectedNameOnly(records[0].entry, "Ada (Home Fax)"))) << &each - cases;
        EXPECT_EQ(script_.Imbalance().find("property array"), std::string::npos);
    }
}

// A value that the entry lacks is an empty plain name.
TEST_F(FaxEntriesTest, AMissingPlainNameEmptiesTheName) {
    for (const Row& properties : {Row(), Row{Number(CHANGE_PROP_TYPE(PR_ORIGINAL_DISPLAY_NAME, PT_LONG), 3)},
                                  Row{{.tag = PR_ORIGINAL_DISPLAY_NAME, .isNull = true}}}) {
        script_.entries["p"] = {.type = MAPI_MAILUSER, .properties = properties};
        const auto records =
            DestinationsOf({PersonRow("p", "Ada", {Text(PR_ADDRTYPE, "FAX"), Text(PR_EMAIL_ADDRESS, "@12")})}, 4);
        ASSERT_EQ(records.size(), 1u);
        EXPECT_STREQ(records[0].name, "");
        EXPECT_STREQ(records[0].faxNumber, "12");
    }
}

TEST_F(FaxEntriesTest, ReadsOtherAddressTypesFromTheirColumns) {
    const std::vector<Value> all{Text(PR_PRIMARY_FAX_NUMBER, "p"),  Text(PR_BUSINESS_FAX_NUMBER, "b"),
                                 Text(PR_HOME_FAX_NUMBER, "h"),     Text(PR_VOK_BUSINESS_FAX_NOTE, "no"),
                                 Text(PR_VOK_HOME_FAX_ATTR1, "no"), Text(PR_VOK_EXTENDED_FAX, "no")};
    struct {
        std::vector<Value> more;
        const char* numbers;
    } const cases[] = {
        {{Text(PR_ADDRTYPE, "SMTP")}, "b h p "},
        {{Text(PR_ADDRTYPE, "")}, "b h p "},
        {{}, "b h p "},
        {{Text(PR_ADDRTYPE, "SMTP"), Text(PR_ORIGINAL_DISPLAY_NAME, "Ada")}, "p "},
        {{Text(PR_ORIGINAL_DISPLAY_NAME, "Ada")}, "p "},
        {{Text(PR_ADDRTYPE, "EX")}, "p "},
        {{Text(PR_ADDRTYPE, "fax")}, "p "},
        {{Text(PR_ADDRTYPE, "smtp")}, "p "},
    };
    for (const auto& each : cases) {
        std::vector<Value> values = all;
        values.insert(values.end(), each.more.begin(), each.more.end());
        std::string numbers;
        for (const DestinationRecord& record : DestinationsOf({PersonRow("p", "Ada (Other Fax)", values)}, 4)) {
            EXPECT_TRUE(SameBytes(record, ExpectedPerson(record.entry, "Ada (Other Fax)", record.faxNumber)));
            numbers += std::string(record.faxNumber) + ' ';
        }
        EXPECT_EQ(numbers, each.numbers) << &each - cases;
    }
}

// The style stays with the session until another table gives one.
TEST_F(FaxEntriesTest, KeepsTheStyleUntilAnotherTableIsOpened) {
    const std::vector<Value> values{Text(PR_ADDRTYPE, "EX"), Text(PR_PRIMARY_FAX_NUMBER, "p"),
                                    Text(PR_HOME_FAX_NUMBER, "h")};
    struct {
        HRESULT result;
        size_t records;
    } const cases[] = {{4, 1}, {E_FAIL, 0}, {0, 2}, {5, 2}, {4, 1}};
    for (const auto& [result, records] : cases)
        EXPECT_EQ(DestinationsOf({PersonRow("p", "Ada", values)}, result).size(), records);
}

}  // namespace
