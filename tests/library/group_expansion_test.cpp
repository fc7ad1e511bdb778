// GetDestinationsInGroup: a group's members as fax destinations.
#include "support/library_test.h"

namespace {

class GroupExpansionTest : public LibraryTest {
  protected:
    // The entry of a group "g" with these members, in an address book of the style.
    DestinationEntry MakeGroup(const std::vector<Row>& members, HRESULT style = 0) {
        Entry& group = script_.entries["g"];
        group = {.type = MAPI_DISTLIST,
                 .properties = {Identifier("g"), Text(PR_DISPLAY_NAME, "Group"), Text(PR_ADDRTYPE, "MAPIPDL"),
                                Number(PR_OBJECT_TYPE, MAPI_DISTLIST), Number(PR_RECIPIENT_TYPE, 3)}};
        for (size_t i = 0; i < members.size(); ++i) {
            const std::string id = "m" + std::to_string(i);
            group.members.push_back(id);
            script_.entries[id] = {.type = MAPI_MAILUSER, .properties = members[i]};
        }
        return DestinationsOf({GroupRow("g", "Group")}, style)[0].entry;
    }
    int32_t Fill(DestinationEntry group, std::vector<GroupMemberRecord>& records, uint32_t capacity,
                 uint32_t reserved = 0) {
        const RecordListDescriptor descriptor{3, {}, records.empty() ? nullptr : records.data()};
        uint32_t count = capacity;
        const int32_t result = library_.GetDestinationsInGroup(session_, reserved, group, &count, &descriptor);
        EXPECT_EQ(count, capacity);
        return result;
    }
};

const std::vector<Value> allNumbers{Text(PR_BUSINESS_FAX_NUMBER, "b"),      Text(PR_VOK_BUSINESS_FAX_ATTR1, "b1"),
                                    Text(PR_VOK_BUSINESS_FAX_ATTR2, "b2"),  Text(PR_VOK_BUSINESS_FAX_ATTR3, "b3"),
                                    Text(PR_VOK_BUSINESS_FAX_NOTE, "no"),   Text(PR_HOME_FAX_NUMBER, "h"),
                                    Text(PR_VOK_HOME_FAX_ATTR1, "h1"),      Text(PR_VOK_HOME_FAX_ATTR2, "h2"),
                                    Text(PR_VOK_HOME_FAX_ATTR3, "h3"),      Text(PR_VOK_HOME_FAX_NOTE, "no"),
                                    Text(PR_VOK_EXTENDED_FAX, "e"),         Text(PR_VOK_EXTENDED_FAX_ATTR1, "e1"),
                                    Text(PR_VOK_EXTENDED_FAX_ATTR2, "e2"),  Text(PR_VOK_EXTENDED_FAX_NOTE, "no"),
                                    Number(PR_VOK_EXTENDED_FAX_VALUE1, -1), Number(PR_VOK_EXTENDED_FAX_VALUE2, 2),
                                    Text(PR_VOK_EXTRA_TEXT, "no"),          Text(PR_COMMENT, "no")};

GroupMemberRecord WithAllNumbers(GroupMemberRecord record) {
    Put(record.businessFax, "b");
    Put(record.businessFaxAttr1, "b1");
    Put(record.businessFaxAttr2, "b2");
    Put(record.businessFaxAttr3, "b3");
    Put(record.homeFax, "h");
    Put(record.homeFaxAttr1, "h1");
    Put(record.homeFaxAttr2, "h2");
    Put(record.homeFaxAttr3, "h3");
    Put(record.extendedFax, "e");
    Put(record.extendedFaxAttr1, "e1");
    Put(record.extendedFaxAttr2, "e2");
    record.extendedFaxValue1 = 0xFFFF;
    record.extendedFaxValue2 = 2;
    return record;
}

TEST_F(GroupExpansionTest, GivesEachMemberOneRecordOutsideFaxEntries) {
    Row primary = PersonRow(
        "m0", "Ada", {Text(PR_PRIMARY_FAX_NUMBER, "p"), Text(PR_COMPANY_NAME, "C"), Text(PR_DEPARTMENT_NAME, "D")});
    Row full = PersonRow("m1", "Eve");
    primary.values.insert(primary.values.end(), allNumbers.begin(), allNumbers.end());
    full.values.insert(full.values.end(), allNumbers.begin(), allNumbers.end());
    for (const HRESULT style : {0, 1}) {
        const auto records = ListMembers(session_, MakeGroup({primary, full, PersonRow("m2", "Ida"), Row()}, style));
        ASSERT_EQ(records.size(), 4u);
        const auto shown = static_cast<uint32_t>(style);
        GroupMemberRecord expected = ExpectedMember(shown, "Ada", "p");
        Put(expected.company, "C");
        Put(expected.department, "D");
        EXPECT_TRUE(SameBytes(records[0], expected));
        EXPECT_TRUE(SameBytes(records[1], WithAllNumbers(ExpectedMember(shown, "Eve", ""))));
        EXPECT_TRUE(SameBytes(records[2], ExpectedMember(shown, "Ida", "")));
        EXPECT_TRUE(SameBytes(records[3], ExpectedMember(shown, "", "")));
    }
}

TEST_F(GroupExpansionTest, AsksTheProviderAsAgreed) {
    const DestinationEntry group = MakeGroup({PersonRow("m0", "Ada")});
    script_.Forget();
    uint32_t count = 99;
    EXPECT_EQ(library_.GetDestinationsInGroup(session_, 7, group, &count, nullptr), 1);
    EXPECT_EQ(count, 1u);
    std::string text;
    for (const std::string& call : script_.calls) text += call + '\n';
    const std::string expansion =
        "support.AllocateAddressList(0x18)\n"
        "addressBook.OpenEntry(g, null, 0)\n"
        "g.GetProps([0FFF0102 0C150003 3001001E 3002001E 0FFE0003], 0)\n"
        "g.Release()\n"
        "support.ExpandRecipients(0, 0xFFF0102=g 0xC150003=1 0x3001001E=\"Group\" 0x3002001E=\"MAPIPDL\" "
        "0xFFE0003=8)\n";
    EXPECT_EQ(text, expansion + "support.FreeAddressList()\n");

    std::vector<GroupMemberRecord> records(1, Untouched<GroupMemberRecord>());
    script_.Forget();
    EXPECT_EQ(Fill(group, records, 1), 1);
    text.clear();
    for (const std::string& call : script_.calls) text += call + '\n';
    EXPECT_EQ(text, expansion +
                        "addressBook.PrepareRecips(0, [3001001E 0FFF0102 0FFE0003 3002001E 3A23001E 3A25001E 5805001E "
                        "5806001E 5804001E 5808001E 3A24001E 5802001E 5803001E 5801001E 5807001E 3004001E 3A13001E "
                        "3003001E 3A16001E 3A18001E 5809001E 580A001E 580B0002 580C0002 580E001E 580F001E 5810001E "
                        "5811001E], 1 recipients)\n"
                        "support.FreeAddressList()\n");
}

TEST_F(GroupExpansionTest, ReadsFaxEntriesByTheirAddressType) {
    const Value fax = Text(PR_ADDRTYPE, "FAX"), smtp = Text(PR_ADDRTYPE, "SMTP"), other = Text(PR_ADDRTYPE, "EX"),
                original = Text(PR_ORIGINAL_DISPLAY_NAME, "Adas"), address = Text(PR_EMAIL_ADDRESS, "Adas@5"),
                primary = Text(PR_PRIMARY_FAX_NUMBER, "p"), business = Text(PR_BUSINESS_FAX_NUMBER, "b"),
                home = Text(PR_HOME_FAX_NUMBER, "h"), attribute = Text(PR_VOK_BUSINESS_FAX_ATTR1, "no");
    struct {
        std::vector<Value> values;
        const char* records;
    } const cases[] = {
        {{fax, original, address, primary, business}, "Adas:5 "},
        {{fax, original, Text(PR_EMAIL_ADDRESS, "Adas@"), primary}, ""},
        {{fax, original, Text(PR_EMAIL_ADDRESS, "A"), primary}, ""},
        {{fax, address}, ":das@5 "},
        {{smtp, primary, business, home, original}, "Ada (Home Fax):p "},
        {{smtp, business, home, attribute}, "Ada (Home Fax):b Ada (Home Fax):h "},
        {{business, home}, "Ada (Home Fax):b Ada (Home Fax):h "},
        {{smtp, home}, "Ada (Home Fax):h "},
        {{smtp, business, home, original}, ""},
        {{other, business, home}, ""},
        {{other, primary}, "Ada (Home Fax):p "},
        {{}, ""},
    };
    for (const auto& each : cases) {
        const DestinationEntry group = MakeGroup({PersonRow("m0", "Ada (Home Fax)", each.values)}, 4);
        uint32_t count = 0;
        EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, group, &count, nullptr), 1);
        EXPECT_EQ(count, 1u) << "counting counts recipients";
        std::vector<GroupMemberRecord> records(3, Untouched<GroupMemberRecord>());
        EXPECT_EQ(Fill(group, records, 3), 1);
        std::string seen;
        for (const GroupMemberRecord& record : records) {
            if (record.contentsStyle != 4) {
                EXPECT_TRUE(SameBytes(record, Untouched<GroupMemberRecord>()));
                continue;
            }
            EXPECT_TRUE(SameBytes(record, ExpectedMember(4, record.name, record.businessFax)));
            seen += std::string(record.name) + ':' + record.businessFax + ' ';
        }
        EXPECT_EQ(seen, each.records) << &each - cases;
    }
}

TEST_F(GroupExpansionTest, FillsUpToTheCapacity) {
    const std::vector<Row> members(3, PersonRow("m", "Ada"));
    const DestinationEntry group = MakeGroup(members);
    for (const uint32_t capacity : {0u, 2u, 3u}) {
        std::vector<GroupMemberRecord> records(4, Untouched<GroupMemberRecord>());
        EXPECT_EQ(Fill(group, records, capacity), capacity == 3 ? 1 : 0);
        for (uint32_t i = 0; i < 4; ++i)
            EXPECT_TRUE(
                SameBytes(records[i], i < capacity ? ExpectedMember(0, "Ada", "") : Untouched<GroupMemberRecord>()));
    }
    std::vector<GroupMemberRecord> none;
    EXPECT_EQ(Fill(group, none, 3), 0);
    std::vector<GroupMemberRecord> one(1, Untouched<GroupMemberRecord>());
    EXPECT_EQ(Fill(group, one, 1, 1), 1);
    EXPECT_TRUE(SameBytes(one[0], Untouched<GroupMemberRecord>()));
    const DestinationEntry empty = MakeGroup({});
    EXPECT_EQ(Fill(empty, none, 0), 1);
    EXPECT_EQ(ListMembers(session_, empty).size(), 0u);
}

// Whatever the provider cannot do leaves the counter and the records alone.
TEST_F(GroupExpansionTest, FailuresOfTheProviderGiveNothing) {
    struct {
        Fault fault;
        bool countsNevertheless;
    } const cases[] = {
        {{"AllocateAddressList", 1, S_OK, false}, false},
        {{"AllocateAddressList", 1, E_FAIL, true}, false},
        {{"OpenEntry", 1, S_OK, false}, false},
        {{"OpenEntry", 1, E_FAIL, true}, false},
        {{"GetProps", 1, E_FAIL, false}, false},
        {{"GetProps", 1, S_OK, false}, false},
        {{"GetProps", 1, E_FAIL, true}, true},
        {{"ExpandRecipients", 1, E_FAIL, false}, false},
        {{"ExpandRecipients", 1, E_FAIL, true}, false},
        {{"PrepareRecips", 1, E_FAIL, false}, true},
        {{"PrepareRecips", 1, E_FAIL, true}, true},
    };
    const DestinationEntry group = MakeGroup({PersonRow("m0", "Ada")});
    for (const auto& [fault, counts] : cases) {
        SCOPED_TRACE(fault.function + " " + std::to_string(fault.result) + (fault.gives ? " gives" : ""));
        script_.faults = {fault};
        script_.Forget();
        uint32_t count = 7;
        EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, group, &count, nullptr), 1);
        EXPECT_EQ(count, counts ? 1u : 7u);
        EXPECT_EQ(script_.CountOf("PrepareRecips"), 0u);
        script_.Forget();
        std::vector<GroupMemberRecord> records(1, Untouched<GroupMemberRecord>());
        EXPECT_EQ(Fill(group, records, 1), 1);
        const bool fills = fault.function == "GetProps" && fault.gives;
        EXPECT_TRUE(SameBytes(records[0], fills ? ExpectedMember(0, "Ada", "") : Untouched<GroupMemberRecord>()));
        EXPECT_EQ(script_.Imbalance().find("list"), std::string::npos);
        EXPECT_EQ(script_.Imbalance().find("array"), std::string::npos);
    }
    script_.faults.clear();
    EXPECT_EQ(ListMembers(session_, group).size(), 1u);
    uint32_t count = 7;
    const DestinationEntry closed = DestinationsOf({GroupRow("unknown", "Group"), GroupRow("", "Group")})[0].entry;
    EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, closed, &count, nullptr), 1);
    EXPECT_EQ(count, 7u);
}

// A person stands for itself, with the first of its own numbers.
TEST_F(GroupExpansionTest, APersonGivesItsOwnNumber) {
    const Value primary = Text(PR_PRIMARY_FAX_NUMBER, "p"), extended = Text(PR_VOK_EXTENDED_FAX, "e"),
                company = Text(PR_COMPANY_NAME, "C"), department = Text(PR_DEPARTMENT_NAME, "D");
    const std::vector<Value> home(allNumbers.begin() + 5, allNumbers.begin() + 9);
    const std::vector<Value> business(allNumbers.begin(), allNumbers.begin() + 4);
    struct {
        std::vector<std::vector<Value>> values;
        const char *number, *attr1, *attr2, *attr3;
    } const cases[] = {
        {{{primary, company, department}, home, business}, "p", "", "", ""},
        {{{company, department}, business, home}, "h", "h1", "h2", "h3"},
        {{{company, department, extended}, business}, "b", "b1", "b2", "b3"},
    };
    for (const auto& each : cases) {
        std::vector<Value> values;
        for (const auto& part : each.values) values.insert(values.end(), part.begin(), part.end());
        const DestinationEntry entry = DestinationsOf({PersonRow("p", "Ada", values)})[0].entry;
        script_.Forget();
        uint32_t count = 7;
        EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, entry, &count, nullptr), 1);
        EXPECT_EQ(count, 7u);
        std::vector<GroupMemberRecord> records(2, Untouched<GroupMemberRecord>());
        EXPECT_EQ(Fill(entry, records, 2), 1);
        GroupMemberRecord expected = ExpectedMember(0, "Ada", each.number);
        Put(expected.company, "C");
        Put(expected.department, "D");
        Put(expected.businessFaxAttr1, each.attr1);
        Put(expected.businessFaxAttr2, each.attr2);
        Put(expected.businessFaxAttr3, each.attr3);
        EXPECT_TRUE(SameBytes(records[0], expected));
        EXPECT_TRUE(SameBytes(records[1], Untouched<GroupMemberRecord>()));
        EXPECT_EQ(Fill(entry, records, 0), 0);
        EXPECT_EQ(script_.callCount, 0u);
    }
    std::vector<GroupMemberRecord> records(1, Untouched<GroupMemberRecord>());
    const DestinationEntry without = DestinationsOf({PersonRow("p", "Ada", {extended})})[0].entry;
    EXPECT_EQ(Fill(without, records, 1), 1);
    script_.entries["p"] = {.type = MAPI_MAILUSER, .properties = {Text(PR_ORIGINAL_DISPLAY_NAME, "Ada")}};
    const DestinationEntry other =
        DestinationsOf({PersonRow("p", "Ada (Other Fax)", {Text(PR_ADDRTYPE, "FAX"), Text(PR_EMAIL_ADDRESS, "Ada@o")})},
                       4)[0]
            .entry;
    EXPECT_TRUE(SameBytes(records[0], Untouched<GroupMemberRecord>()));
    EXPECT_EQ(Fill(other, records, 1), 1);
    EXPECT_TRUE(SameBytes(records[0], ExpectedMember(4, "Ada", "o")));
}

}  // namespace
