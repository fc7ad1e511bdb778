// GetDestinationDetails: the text of one person, and of a group's members.
#include "support/library_test.h"

namespace {

class DetailsTextTest : public LibraryTest {};

TEST_F(DetailsTextTest, ShowsAPersonLineByLine) {
    const Value business = Text(PR_BUSINESS_FAX_NUMBER, "1"), home = Text(PR_HOME_FAX_NUMBER, "2"),
                primary = Text(PR_PRIMARY_FAX_NUMBER, "3"), extended = Text(PR_VOK_EXTENDED_FAX, "4"),
                businessNote = Text(PR_VOK_BUSINESS_FAX_NOTE, "bn"), homeNote = Text(PR_VOK_HOME_FAX_NOTE, "hn"),
                company = Text(PR_COMPANY_NAME, "Company"), department = Text(PR_DEPARTMENT_NAME, "Dept"),
                comment = Text(PR_COMMENT, "Comment");
    struct {
        HRESULT style;
        std::vector<Value> values;
        const char* text;
    } const cases[] = {
        {0,
         {business, home, primary, businessNote, homeNote, company, department, comment},
         "Ada\r\nCompany\r\nDept\r\n1 [Business]\r\nbn\r\nComment"},
        {1, {business, home, primary, businessNote, homeNote}, "Ada\r\n1 [Primary]\r\nbn"},
        {0, {business, home, homeNote}, "Ada\r\n1 [Business]"},
        {0, {home, primary, homeNote}, "Ada\r\n2 [Home]\r\nhn"},
        {1, {home, primary, homeNote, comment}, "Ada\r\n2 [Secondary]\r\nhn\r\nComment"},
        {0, {primary, homeNote, businessNote}, "Ada\r\n3 [Business]"},
        {1, {primary}, "Ada\r\n3 [Primary]"},
        {2, {primary}, "Ada\r\n3 [Business]"},
        {1, {extended, businessNote, comment}, "Ada\r\nNo Fax Number\r\nComment"},
        {0, {}, "Ada\r\nNo Fax Number"},
    };
    for (const auto& each : cases) {
        const auto records = DestinationsOf({PersonRow("p", "Ada", each.values)}, each.style);
        ASSERT_FALSE(records.empty());
        EXPECT_EQ(Details(session_, records[0].entry), each.text);
        EXPECT_EQ(Details(session_, records[0].entry), each.text);
    }
    EXPECT_EQ(Details(session_, DestinationsOf({PersonRow("p", "")})[0].entry), "No Fax Number");
}

TEST_F(DetailsTextTest, CopiesOnlyWhatFits) {
    const DestinationEntry entry = DestinationsOf({PersonRow("p", "Ada")})[0].entry;
    const std::string text = "Ada\r\nNo Fax Number";
    const auto length = static_cast<uint32_t>(text.size());
    for (const uint32_t size : {length - 1, 0u, length, length + 7}) {
        std::string buffer(length + 2, '*');
        std::string expected = buffer;
        if (size >= length) expected.replace(0, length + 1, text.c_str(), length + 1);
        uint32_t given = size;
        EXPECT_EQ(library_.GetDestinationDetails(session_, entry, &given, buffer.data()), size >= length ? 1 : 0);
        EXPECT_EQ(given, size);
        EXPECT_EQ(buffer, expected);
    }
}

// The contents style belongs to the session.
TEST_F(DetailsTextTest, LabelsAreThoseOfTheSession) {
    AddContainer("", "b", "Book");
    AddContainer("", "c", "Other");
    script_.entries["b"].contents.rows = {PersonRow("p", "Ada", {Text(PR_HOME_FAX_NUMBER, "2")})};
    session_ = Open();
    const auto books = ListBooks(session_);
    const DestinationEntry ada = ListDestinations(session_, books[0].entry)[0].entry;
    EXPECT_EQ(Details(session_, ada), "Ada\r\n2 [Home]");
    SessionHandle* const other = Open();
    script_.entries["c"].contentsResult = 1;
    ListDestinations(other, ListBooks(other)[1].entry);
    EXPECT_EQ(Details(session_, ada), "Ada\r\n2 [Home]");
}

TEST_F(DetailsTextTest, ShowsTheMembersOfAGroupPersonsFirst) {
    script_.entries["g"] = {.type = MAPI_DISTLIST};
    script_.entries["g"].contents.rows = {GroupRow("x", "X"),
                                          PersonRow("a", "A"),
                                          ContainerRow("c", "C"),
                                          PersonRow("n", ""),
                                          Row{Missing(PR_DISPLAY_NAME), Number(PR_OBJECT_TYPE, MAPI_MAILUSER)},
                                          PersonRow("b", "B"),
                                          GroupRow("y", "Y")};
    const auto records =
        DestinationsOf({GroupRow("g", "Group", {Text(PR_COMMENT, "not shown")}), GroupRow("u", "Unknown")});
    script_.Forget();
    EXPECT_EQ(Details(session_, records[0].entry), "A\r\nB\r\nX\r\nY");
    EXPECT_EQ(script_.CallsOf({"OpenEntry", "GetContentsTable", "SeekRow", "GetRowCount", "QueryRows", "Release"}),
              "addressBook.OpenEntry(g, null, 0)\n"
              "g.GetContentsTable(0)\n"
              "g.contents.SeekRow(0, 0, null)\n"
              "g.contents.GetRowCount(0)\n"
              "g.contents.QueryRows(7, 0)\n"
              "g.contents.Release()\n"
              "g.Release()\n");
    EXPECT_NE(script_.CallsOf({"SetColumns"}).find("[3001001E 0FFF0102 0FFE0003 3002001E 3A23001E"), std::string::npos);

    // Nothing is read twice, not even what could not be read.
    EXPECT_EQ(Details(session_, records[1].entry), "");
    script_.Forget();
    script_.entries["u"] = script_.entries["g"];
    EXPECT_EQ(Details(session_, records[1].entry), "");
    EXPECT_EQ(Details(session_, records[0].entry), "A\r\nB\r\nX\r\nY");
    EXPECT_EQ(script_.callCount, 0u);
}

// A group's contents style is not an address book's.
TEST_F(DetailsTextTest, ReadingMembersLeavesTheStyleAlone) {
    script_.entries["g"] = {.type = MAPI_DISTLIST, .contentsResult = 1};
    const auto records =
        DestinationsOf({GroupRow("g", "Group"), PersonRow("p", "Ada", {Text(PR_HOME_FAX_NUMBER, "2")})});
    EXPECT_EQ(Details(session_, records[0].entry), "");
    EXPECT_EQ(Details(session_, records[1].entry), "Ada\r\n2 [Home]");
}

}  // namespace
