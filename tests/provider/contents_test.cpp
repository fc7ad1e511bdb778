// Address books, containers and contents tables of the built provider, from files that each test writes.
#include <gtest/gtest.h>

#include "card_text.h"
#include "provider_client.h"
#include "text/code_pages.h"

namespace {

std::string Names(const std::vector<Values>& rows) {
    std::string names;
    for (const Values& row : rows) names += row.at(PR_DISPLAY_NAME) + "|";
    return names;
}

TEST(Hierarchy, ListsFilesAndFoldersByName) {
    ContactsFolderForTest contacts;
    contacts.Write("private.VCF", CardOf({"FN:P"}));
    contacts.Write("Company/boss.vcf", CardOf({"FN:Boss"}));
    contacts.Write("Company/Sales/East/a.vcf", CardOf({"FN:A"}));
    contacts.Write("Company/Sales/b.vcf", CardOf({"FN:B2"}) + CardOf({"FN:B1"}));
    contacts.Write("Company/Sales/a.vcf", CardOf({"FN:First"}));
    contacts.Write("notes.txt", "x");
    contacts.Write(".hidden.vcf", CardOf({"FN:H"}));
    std::filesystem::create_directories(contacts.Contacts() / "Empty");
    Caller caller;
    const std::vector<Values> books = caller.ListBooks();
    ASSERT_EQ(Names(books), "Company|Empty|private|");
    const Values& company = books[0];
    EXPECT_EQ(company.at(PR_OBJECT_TYPE), "4");
    EXPECT_EQ(company.at(PR_SERVICE_NAME), "VCARD");
    EXPECT_EQ(company.at(PR_VOK_PROVIDER_VALUE), "0");
    EXPECT_EQ(Names(caller.ListContents(company.at(PR_ENTRYID))), "Boss|");
    const std::vector<Values> containers = caller.ListContainers(company.at(PR_ENTRYID));
    ASSERT_EQ(Names(containers), "Sales|");
    EXPECT_EQ(Names(caller.ListContents(containers[0].at(PR_ENTRYID))), "First|B2|B1|");
    const std::vector<Values> below = caller.ListContainers(containers[0].at(PR_ENTRYID));
    EXPECT_EQ(Names(below), "East|");
    // What comes and goes is seen at the next listing, and an identifier stays the same.
    contacts.Write("New.vcf", CardOf({"FN:N"}));
    const std::vector<Values> later = caller.ListBooks();
    EXPECT_EQ(Names(later), "Company|Empty|New|private|");
    EXPECT_EQ(later[0].at(PR_ENTRYID), company.at(PR_ENTRYID));
}

#ifndef _WIN32
TEST(Hierarchy, LinksThatLeadBackEnd) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/Sub/a.vcf", CardOf({"FN:A"}));
    std::filesystem::create_directory_symlink(contacts.Contacts() / "Book", contacts.Contacts() / "Book/Sub/loop");
    Caller caller;
    const std::vector<Values> containers = caller.ListContainers(caller.BookId());
    ASSERT_EQ(Names(containers), "Sub|");
    EXPECT_TRUE(caller.ListContainers(containers[0].at(PR_ENTRYID)).empty());
    EXPECT_NE(contacts.Diagnostics().find("leads back"), std::string::npos);
}
#endif

TEST(Hierarchy, MissingContactsFolderIsSaidAndEmpty) {
    ContactsFolderForTest contacts;
    std::filesystem::remove(contacts.Contacts());
    Caller caller;
    EXPECT_TRUE(caller.ListBooks().empty());
    EXPECT_NE(contacts.Diagnostics().find("no such folder"), std::string::npos);
    contacts.Write("a.vcf", CardOf({"FN:A"}));
    EXPECT_EQ(Names(caller.ListBooks()), "a|");
}

// The columns business, home, primary, extended, "-" for a missing one.
std::string Places(const Values& row) {
    std::string places;
    for (const ULONG tag : {PR_BUSINESS_FAX_NUMBER, PR_HOME_FAX_NUMBER, PR_PRIMARY_FAX_NUMBER, PR_VOK_EXTENDED_FAX})
        places += (row.contains(tag) ? row.at(tag) : "-") + " ";
    return places;
}

TEST(Contents, NumbersTakeTheirPlacesByStyle) {
    struct Placing {
        std::initializer_list<std::string> lines;
        const char* plain;
        const char* primarySecondary;
        bool allPlaced;  // in the plain style
    };
    const Placing placings[] = {
        {{}, "- - - - ", "- - - - ", true},
        {{"TEL;TYPE=FAX,HOME:h", "TEL;TYPE=FAX,WORK:w", "TEL;TYPE=FAX:p"}, "w h p - ", "p w - h ", true},
        {{"TEL;TYPE=FAX,WORK:w1", "TEL;TYPE=FAX,WORK,PREF:w2"}, "w2 - w1 - ", "w2 w1 - - ", true},
        {{"TEL;TYPE=FAX,OTHER:o"}, "- - o - ", "o - - - ", true},
        {{"TEL;TYPE=FAX:p1", "TEL;TYPE=FAX:p2", "TEL;TYPE=FAX,HOME:h"}, "- h p1 p2 ", "p1 p2 - h ", true},
        {{"TEL;TYPE=FAX:p1", "TEL;TYPE=FAX,PREF:p2", "TEL;TYPE=FAX:p3", "TEL;TYPE=FAX:p4"},
         "- - p2 p1 ",
         "p2 p1 - p3 ",
         false},
    };
    for (const Placing& placing : placings) {
        ContactsFolderForTest contacts;
        std::string card = "BEGIN:VCARD\nFN:A\n";
        for (const std::string& line : placing.lines) card += line + "\n";
        contacts.Write("plain.vcf", card + "END:VCARD\n");
        Caller caller;
        EXPECT_EQ(Places(caller.ListBook().at(0)), placing.plain);
        EXPECT_EQ(caller.Style(caller.BookId()), 0);
        EXPECT_EQ(contacts.Diagnostics().empty(), placing.allPlaced) << contacts.Diagnostics();
        contacts.Write("plain.ini", "# how this book shows its people\nStyle = Primary-Secondary\n");
        EXPECT_EQ(caller.Style(caller.BookId()), 1);
        EXPECT_EQ(Places(caller.ListBook().at(0)), placing.primarySecondary);
    }
}

TEST(Contents, FaxEntriesCarryTheNumberInTheAddress) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/addressbook.ini", "style = fax-entries\n");
    contacts.Write("Book/Sub/a.vcf", CardOf({"FN:Ann Lee", "TEL;TYPE=FAX,HOME:1", "TEL;TYPE=FAX,WORK:22",
                                             "TEL;TYPE=FAX:3", "TEL;TYPE=FAX,OTHER:4", "TEL;TYPE=FAX,OTHER:5"}) +
                                         CardOf({"FN:Ben", "EMAIL:ben@example.com"}));
    Caller caller;
    const std::string sub = caller.ListContainers(caller.BookId()).at(0).at(PR_ENTRYID);
    EXPECT_EQ(caller.Style(sub), 4);
    const std::vector<Values> rows = caller.ListContents(sub);
    EXPECT_EQ(Names(rows),
              "Ann Lee (Home Fax)|Ann Lee (Business Fax)|Ann Lee|Ann Lee (Other Fax)|"
              "Ann Lee (Other Fax)|Ben|");
    EXPECT_EQ(rows[1].at(PR_ADDRTYPE), "FAX");
    EXPECT_EQ(rows[1].at(PR_EMAIL_ADDRESS), "Ann Lee@22");
    static constexpr PropTagArray<1> tag = {.aulPropTag = {PR_ORIGINAL_DISPLAY_NAME}};
    EXPECT_EQ(caller.GetProps(rows[1].at(PR_ENTRYID), tag.Get()).at(PR_ORIGINAL_DISPLAY_NAME), "Ann Lee");
    EXPECT_EQ(rows[5].at(PR_ADDRTYPE), "SMTP");
    EXPECT_FALSE(rows[5].contains(PR_ORIGINAL_DISPLAY_NAME));
    EXPECT_TRUE(contacts.Diagnostics().empty()) << contacts.Diagnostics();
}

TEST(Contents, SettingsThatCannotBeReadAreNamed) {
    ContactsFolderForTest contacts;
    contacts.Write("a.vcf", CardOf({"FN:A"}));
    contacts.Write("a.ini", "style = fan\xC2\x9B[1mcy\ncolour = red\n[what]\n");
    Caller caller;
    EXPECT_EQ(caller.Style(caller.BookId()), 0);
    for (const char* place : {"a.ini:1: unknown style fan [1mcy", "a.ini:2: ", "a.ini:3: "})
        EXPECT_NE(contacts.Diagnostics().find(place), std::string::npos) << place;
}

TEST(Contents, AFileIsReadAgainWhenItChanged) {
    ContactsFolderForTest contacts;
    contacts.Write("a.vcf", CardOf({"FN:Ann", "TEL;TYPE=FAX:1"}) + CardOf({"FN:Ben", "UID:ben", "TEL;TYPE=FAX:2"}));
    Caller caller;
    const std::vector<Values> before = caller.ListBook();
    contacts.Write("a.vcf", CardOf({"FN:Ben", "UID:ben", "TEL;TYPE=FAX:3"}));
    EXPECT_EQ(Names(caller.ListBook()), "Ben|");
    // An identifier goes with its card, wherever the card stands now.
    static constexpr PropTagArray<1> tag = {.aulPropTag = {PR_PRIMARY_FAX_NUMBER}};
    EXPECT_EQ(caller.GetProps(before[1].at(PR_ENTRYID), tag.Get()).at(PR_PRIMARY_FAX_NUMBER), "3");
    try {
        caller.GetProps(before[0].at(PR_ENTRYID), tag.Get());
        ADD_FAILURE() << "a card that is gone was opened";
    } catch (const CallFailed& failed) {
        EXPECT_EQ(failed.result, MAPI_E_NOT_FOUND);
    }
    std::filesystem::remove(contacts.Contacts() / "a.vcf");
    EXPECT_TRUE(caller.ListBooks().empty());
}

TEST(Contents, TextIsInTheActiveCodePage) {
    const std::string name = "J\xC3\xB6rg \xE5\xAE\x89\xE8\x97\xA4";  // a Western and two Japanese letters
    ContactsFolderForTest contacts;
    contacts.Write("a.vcf", CardOf({"FN:" + name}));
    Caller caller;
    const std::string shown = caller.ListBook().at(0).at(PR_DISPLAY_NAME);
    EXPECT_EQ(shown, InActiveCodePage(name));
    // Converting back and forth once more changes nothing: no byte is left that is no character.
    EXPECT_EQ(InActiveCodePage(FromActiveCodePage(shown)), shown);
    switch (GetACP()) {
        case 1252:
            EXPECT_EQ(shown, "J\xF6rg ??");
            break;
        case 932:
            EXPECT_TRUE(shown.ends_with("rg \x88\xC0\x93\xA1")) << shown;
            break;
        case CP_UTF8:
            EXPECT_EQ(shown, name);
            break;
        default:
            break;
    }
}

TEST(Contents, EmptyTextsAreNotMissing) {
    ContactsFolderForTest contacts;
    contacts.Write("a.vcf", CardOf({"FN:A"}));
    Caller caller;
    const Values row = caller.ListBook().at(0);
    for (const ULONG tag : {PR_COMMENT, PR_COMPANY_NAME, PR_DEPARTMENT_NAME}) EXPECT_EQ(row.at(tag), "");
}

}  // namespace
