// Groups as callers expand them and list their members.
#include <gtest/gtest.h>

#include "card_text.h"
#include "provider_client.h"

namespace {

std::string Person(const std::string& name) {
    return CardOf({"FN:" + name, "UID:urn:uuid:" + name, "TEL;TYPE=FAX,WORK:1" + name, "EMAIL:" + name + "@example.com",
                   "TEL:+1 555 " + std::to_string(name.front() % 10)});
}

std::string Group(const std::string& name, std::initializer_list<std::string> members) {
    std::string text = "BEGIN:VCARD\nVERSION:4.0\nKIND:group\nFN:" + name + "\nUID:" + name + "\n";
    for (const std::string& member : members) text += "MEMBER:" + member + "\n";
    return text + "END:VCARD\n";
}

std::string IdOf(const std::vector<Values>& rows, const std::string& name) {
    for (const Values& row : rows)
        if (row.at(PR_DISPLAY_NAME) == name) return row.at(PR_ENTRYID);
    return {};
}

std::string Names(const std::vector<Values>& rows) {
    std::string names;
    for (const Values& row : rows) names += (row.contains(PR_DISPLAY_NAME) ? row.at(PR_DISPLAY_NAME) : "-") + "|";
    return names;
}

TEST(Groups, AreExpandedOnceAndInOrder) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/groups.vcf",
                   Group("Loop", {"urn:uuid:Loop", "Back"}) + Group("Back", {"Loop", "urn:uuid:Ann"}) +
                       Group("All", {"Cleo", "Inner", "urn:uuid:Ann", "nobody", "CLEO"}) +
                       Group("Inner", {"urn:uuid:Ben", "Cleo", "Deep"}) + Group("Deep", {"far"}) +
                       Group("Written", {"mailto:ben@EXAMPLE.com", "tel:+1-555-5", "mailto:x@y"}) + Group("Empty", {}));
    contacts.Write("Book/people.vcf", Person("Ann") + Person("Ben"));
    contacts.Write("Other/Sub/far.vcf", Person("far"));
    contacts.Write("Book/apple.vcf",
                   "BEGIN:VCARD\nVERSION:3.0\nX-ADDRESSBOOKSERVER-KIND:group\nFN:Apple\n"
                   "X-ADDRESSBOOKSERVER-MEMBER:urn:uuid:ben\nEND:VCARD\n" +
                       Person("Cleo"));
    Caller caller;
    const std::vector<Values> rows = caller.ListBook("Book");
    EXPECT_EQ(rows.at(0).at(PR_OBJECT_TYPE), "8");
    EXPECT_EQ(Names(caller.Expand(IdOf(rows, "All"))), "Cleo|Ben|far|Ann|");
    EXPECT_EQ(Names(caller.Expand(IdOf(rows, "Loop"))), "Ann|");
    EXPECT_EQ(Names(caller.Expand(IdOf(rows, "Written"))), "Ben|Ann|");
    EXPECT_EQ(Names(caller.Expand(IdOf(rows, "Apple"))), "Ben|");
    EXPECT_EQ(Names(caller.Expand(IdOf(rows, "Empty"))), "");
    EXPECT_EQ(caller.Expand(IdOf(rows, "Apple")).at(0).at(PR_BUSINESS_FAX_NUMBER), "1Ben");
    EXPECT_NE(contacts.Diagnostics().find("groups.vcf:25: member nobody of the group \"All\""), std::string::npos)
        << contacts.Diagnostics();
    // The contents of a group are its direct members, groups as groups.
    const std::vector<Values> members = caller.ListContents(IdOf(rows, "All"));
    EXPECT_EQ(Names(members), "Cleo|Inner|Ann|");
    EXPECT_EQ(members.at(1).at(PR_OBJECT_TYPE), "8");
}

TEST(Groups, NestDeeply) {
    constexpr int depth = 20000;
    ContactsFolderForTest contacts;
    std::string text = Person("End");
    for (int i = 0; i < depth; ++i)
        text += Group("G" + std::to_string(i), {i == 0 ? "End" : "G" + std::to_string(i - 1)});
    contacts.Write("deep.vcf", text);
    Caller caller;
    const std::vector<Values> rows = caller.ListBook();
    EXPECT_EQ(Names(caller.Expand(rows.back().at(PR_ENTRYID))), "End|");
}

TEST(Groups, InABookOfFaxEntriesEveryNumberIsARecipient) {
    ContactsFolderForTest contacts;
    contacts.Write("a.ini", "style=fax-entries");
    contacts.Write("a.vcf", CardOf({"FN:Two", "UID:two", "TEL;TYPE=FAX,WORK:1", "TEL;TYPE=FAX,HOME:2"}) +
                                CardOf({"FN:None", "UID:none"}) + Group("G", {"none", "two"}));
    Caller caller;
    const std::vector<Values> members = caller.Expand(IdOf(caller.ListBook(), "G"));
    EXPECT_EQ(Names(members), "Two (Business Fax)|Two (Home Fax)|");
    EXPECT_EQ(members.at(1).at(PR_ADDRTYPE), "FAX");
    EXPECT_EQ(members.at(1).at(PR_ORIGINAL_DISPLAY_NAME), "Two");
    EXPECT_EQ(members.at(1).at(PR_EMAIL_ADDRESS), "Two@2");
    EXPECT_NE(contacts.Diagnostics().find("\"None\" is a member of a group and has no fax number"), std::string::npos);
}

TEST(Groups, RecipientsFromElsewhereStayAsTheyAre) {
    ContactsFolderForTest contacts;
    contacts.Write("a.vcf", Person("Ann"));
    Caller caller;
    ADRLIST* list = nullptr;
    ASSERT_EQ(caller.Support().AllocateAddressList(sizeof(ADRLIST) + sizeof(ADRENTRY), &list), S_OK);
    void* memory = nullptr;
    ASSERT_EQ(caller.Library().AllocateBuffer(2 * sizeof(SPropValue), &memory), S_OK);
    auto* const values = static_cast<SPropValue*>(memory);
    char name[] = "Stranger";
    BYTE id[] = {1, 2, 3};
    values[0] = {PR_DISPLAY_NAME, 0, {.lpszA = name}};
    values[1] = {PR_ENTRYID, 0, {.bin = {sizeof id, id}}};
    list->cEntries = 2;
    list->aEntries[0] = {0, 2, values};
    list->aEntries[1] = {0, 0, nullptr};
    ASSERT_EQ(caller.Support().ExpandRecipients(0, &list), S_OK);
    ASSERT_EQ(list->cEntries, 2U);
    static constexpr PropTagArray<2> tags = {.aulPropTag = {PR_PRIMARY_FAX_NUMBER, PR_DISPLAY_NAME}};
    ASSERT_EQ(caller.AddressBook().PrepareRecips(0, tags.Get(), list), S_OK);
    const ADRENTRY& stranger = list->aEntries[0];
    ASSERT_EQ(stranger.cValues, 2U);
    EXPECT_EQ(stranger.rgPropVals[0].ulPropTag, CHANGE_PROP_TYPE(PR_PRIMARY_FAX_NUMBER, PT_ERROR));
    EXPECT_EQ(stranger.rgPropVals[0].Value.err, MAPI_E_NOT_FOUND);
    EXPECT_STREQ(stranger.rgPropVals[1].Value.lpszA, "Stranger");
    EXPECT_EQ(list->aEntries[1].cValues, 2U);
    EXPECT_EQ(caller.Support().FreeAddressList(list), S_OK);
}

// Whatever letters the code page lacks: members of one file in groups of another, by names in any spelling.
TEST(Groups, OfDirectoriesAreExpandedByTheNamesOfTheirEntries) {
    ContactsFolderForTest contacts;
    const auto person = [](const std::string& name, const std::string& number) {
        return "dn: cn=" + name + ",ou=人,o=x\nobjectClass: person\ncn: " + number + "\nfax: " + number + "\n\n";
    };
    contacts.Write("Book/people.ldif", person("花子", "1") + person("太郎", "2") + person("Lee\\, Ann", "3"));
    contacts.Write("Book/groups.ldif",
                   "dn: cn=All\nobjectClass: groupOfNames\ncn: All\nmember: cn=Inner\n"
                   "member: cn=Lee\\2C ann,OU=人, o=X\nmember: cn=三郎,ou=人,o=x\n\n"
                   "dn: cn=Inner\nobjectClass: groupOfUniqueNames\ncn: Inner\nuniqueMember: cn=All\n"
                   "uniqueMember: cn=\\E5\\A4\\AA郎,ou=人,o=x#'01'B\n");
    Caller caller;
    const std::vector<Values> rows = caller.ListBook();
    EXPECT_EQ(Names(caller.Expand(IdOf(rows, "All"))), "2|3|");
    EXPECT_EQ(Names(caller.ListContents(IdOf(rows, "Inner"))), "All|2|");
    EXPECT_NE(contacts.Diagnostics().find("groups.ldif:6: member cn=三郎,ou=人,o=x of the group \"All\" is on no card"),
              std::string::npos)
        << contacts.Diagnostics();
}

}  // namespace
