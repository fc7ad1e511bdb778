// Texts that are longer than their fields, in whatever code page is in force: the program is run in several.
#include "support/library_test.h"

namespace {

std::string Repeat(const std::string& text, size_t times) {
    std::string all;
    while (times-- > 0) all += text;
    return all;
}

struct CutCase {
    std::string text;
    size_t kept;  // of the first 85 bytes
};

// What TruncateText must keep of a text when 85 bytes fit.
std::vector<CutCase> CasesOf(UINT codePage) {
    const std::string letters(84, 'a');
    std::vector<CutCase> cases{{letters + "b", 85}, {letters + "bc", 85}, {letters, 84}, {std::string(100, 'z'), 85}};
    const auto add = [&](std::vector<CutCase> more) { cases.insert(cases.end(), more.begin(), more.end()); };
    switch (codePage) {
        case 932:
            add({
                {letters + "\x82\xA0"
                           "b",
                 84},
                {letters.substr(1) + "\x82\xA0"
                                     "b",
                 85},
                {letters.substr(1) + "\x82\xA0", 85},
                // The second byte of this character lies in the range of first bytes.
                {Repeat("\x88\x9F", 50), 84},
                {"a" + Repeat("\x88\x9F", 50), 85},
                {"ab" + Repeat("\x88\x9F", 50), 84},
                // Second bytes that are ASCII letters.
                {letters + "\x83\x5C"
                           "b",
                 84},
                // One-byte katakana.
                {Repeat("\xB1", 100), 85},
                {Repeat("\xB1", 83) + "\xE0\x40"
                                      "b",
                 85},
                {Repeat("\xB1", 84) + "\xFC\x4B"
                                      "b",
                 84},
            });
            break;
        case CP_UTF8:
            add({
                {letters + "\xC3\xA9"
                           "b",
                 84},
                {letters.substr(1) + "\xC3\xA9"
                                     "b",
                 85},
                {letters.substr(1) + "\xE3\x81\x82"
                                     "b",
                 83},
                {letters.substr(2) + "\xE3\x81\x82"
                                     "b",
                 85},
                {letters + "\xE3\x81\x82", 84},
                {letters.substr(2) + "\xF0\x9F\x93\xA0"
                                     "b",
                 82},
                {letters.substr(3) + "\xF0\x9F\x93\xA0"
                                     "b",
                 85},
                {Repeat("\xC3\xA9", 50), 84},
                {Repeat("\xE3\x81\x82", 30), 84},
            });
            break;
        default:
            // One byte a character.
            add({{Repeat("\xE9", 100), 85},
                 {letters + "\x82\xA0"
                            "b",
                  85}});
    }
    return cases;
}

class TruncationTest : public LibraryTest {};

TEST_F(TruncationTest, NamesKeepWholeCharacters) {
    for (const CutCase& each : CasesOf(GetACP())) {
        const auto records = DestinationsOf({PersonRow("p", each.text), GroupRow("g", each.text)});
        ASSERT_EQ(records.size(), 2u);
        EXPECT_TRUE(SameBytes(records[0], ExpectedNameOnly(records[0].entry, each.text.substr(0, each.kept))));
        EXPECT_TRUE(SameBytes(records[1], ExpectedGroup(records[1].entry, each.text.substr(0, each.kept))));
        // The details are not cut.
        EXPECT_EQ(Details(session_, records[0].entry), each.text + "\r\nNo Fax Number");
    }
}

// Bytes that are no text in the code page are cut somewhere, and nothing else happens.
TEST_F(TruncationTest, SurvivesBytesThatAreNoText) {
    for (const char byte : {'\x80', '\xA0', '\xE0', '\xF4', '\xFF', '\x9F'}) {
        for (const size_t letters : {0u, 82u, 83u, 84u}) {
            const std::string text = std::string(letters, 'a') + std::string(90, byte);
            const std::string name = DestinationsOf({PersonRow("p", text)})[0].name;
            EXPECT_EQ(name, text.substr(0, name.size()));
            EXPECT_GE(name.size(), 82u);
            EXPECT_LE(name.size(), 85u);
        }
    }
}

// A text one byte longer than its field, whose last character of two bytes crosses the limit, and what is left of it.
struct Crossing {
    std::string text, whole, asItFalls;
};
Crossing CrossAt(size_t limit) {
    const std::string character = GetACP() == CP_UTF8 ? "\xC3\xA9" : "\x83\x5C";
    const std::string letters(limit - 1, 'x');
    const bool oneByte = GetACP() != CP_UTF8 && GetACP() != 932;
    return {letters + character, oneByte ? letters + character[0] : letters, letters + character[0]};
}

TEST_F(TruncationTest, FieldsOfDestinationsAreCutAtTheirLimits) {
    const Crossing number = CrossAt(45), extended = CrossAt(120), company = CrossAt(40), note = CrossAt(30),
                   comment = CrossAt(255), attribute = CrossAt(20), extra = CrossAt(85), extraShort = CrossAt(40);
    const auto records = DestinationsOf(
        {PersonRow("p", "Ada",
                   {Text(PR_BUSINESS_FAX_NUMBER, number.text), Text(PR_VOK_BUSINESS_FAX_NOTE, note.text),
                    Text(PR_VOK_BUSINESS_FAX_ATTR1, attribute.text), Text(PR_VOK_BUSINESS_FAX_ATTR2, attribute.text),
                    Text(PR_VOK_BUSINESS_FAX_ATTR3, attribute.text), Text(PR_PRIMARY_FAX_NUMBER, std::string(46, '1')),
                    Text(PR_VOK_EXTENDED_FAX, extended.text), Text(PR_COMPANY_NAME, company.text),
                    Text(PR_DEPARTMENT_NAME, company.text), Text(PR_COMMENT, comment.text),
                    Text(PR_VOK_EXTRA_TEXT, extra.text), Text(PR_VOK_EXTRA_SHORT_TEXT, extraShort.text)})});
    ASSERT_EQ(records.size(), 3u);
    DestinationRecord expected = ExpectedPerson(records[0].entry, "Ada", "");
    Put(expected.company, company.whole);
    Put(expected.department, company.whole);
    Put(expected.comment, comment.whole);
    Put(expected.extraText, extra.asItFalls);
    Put(expected.extraShortText, extraShort.asItFalls);
    DestinationRecord business = expected, primary = expected, longer = expected;
    Put(business.faxNumber, number.whole);
    Put(business.faxNote, note.whole);
    for (char* attr : {business.faxAttr1, business.faxAttr2, business.faxAttr3})
        std::memcpy(attr, attribute.asItFalls.c_str(), 21);
    Put(primary.faxNumber, std::string(45, '1'));
    Put(longer.faxNumber, extended.whole);
    longer.extendedFaxValue1 = longer.extendedFaxValue2 = 0;
    EXPECT_TRUE(SameBytes(records[0], business));
    EXPECT_TRUE(SameBytes(records[1], primary));
    EXPECT_TRUE(SameBytes(records[2], longer));
}

TEST_F(TruncationTest, FieldsOfMembersKeepWholeCharacters) {
    const Crossing name = CrossAt(85), number = CrossAt(45), extended = CrossAt(120), company = CrossAt(40),
                   attribute = CrossAt(20);
    script_.entries["g"] = {.type = MAPI_DISTLIST, .properties = {Identifier("g")}, .members = {"m"}};
    script_.entries["m"].properties =
        PersonRow("m", name.text,
                  {Text(PR_BUSINESS_FAX_NUMBER, number.text), Text(PR_HOME_FAX_NUMBER, number.text),
                   Text(PR_VOK_BUSINESS_FAX_ATTR1, attribute.text), Text(PR_VOK_HOME_FAX_ATTR3, attribute.text),
                   Text(PR_VOK_EXTENDED_FAX, extended.text), Text(PR_VOK_EXTENDED_FAX_ATTR2, attribute.text),
                   Text(PR_COMPANY_NAME, company.text), Text(PR_DEPARTMENT_NAME, company.text)});
    const DestinationEntry group = DestinationsOf({GroupRow("g", "G")})[0].entry;
    const auto records = ListMembers(session_, group);
    ASSERT_EQ(records.size(), 1u);
    GroupMemberRecord expected = ExpectedMember(0, name.whole, number.whole);
    Put(expected.homeFax, number.whole);
    Put(expected.businessFaxAttr1, attribute.whole);
    Put(expected.homeFaxAttr3, attribute.whole);
    Put(expected.extendedFax, extended.whole);
    Put(expected.extendedFaxAttr2, attribute.whole);
    Put(expected.company, company.whole);
    Put(expected.department, company.whole);
    EXPECT_TRUE(SameBytes(records[0], expected));
}

}  // namespace
