// Files that change while a program is open: an identifier from a listing before the change means who it meant then, or
// nobody, and that is said.
#include <gtest/gtest.h>

#include "card_text.h"
#include "mapi/result_codes.h"
#include "provider_client.h"

namespace {

std::string Join(const std::vector<Values>& recipients) {
    std::string numbers;
    for (const Values& recipient : recipients)
        for (const ULONG tag : {PR_BUSINESS_FAX_NUMBER, PR_HOME_FAX_NUMBER, PR_PRIMARY_FAX_NUMBER, PR_VOK_EXTENDED_FAX})
            if (recipient.contains(tag)) numbers += recipient.at(tag) + " ";
    return numbers;
}

// Where a fax to an entry goes: the numbers, or those behind the "@" of a fax entry; "nobody" for an entry that is not
// found.
std::string NumbersOf(Caller& caller, const std::string& entryId) {
    static constexpr PropTagArray<6> tags = {.aulPropTag = {PR_OBJECT_TYPE, PR_BUSINESS_FAX_NUMBER, PR_HOME_FAX_NUMBER,
                                                            PR_PRIMARY_FAX_NUMBER, PR_VOK_EXTENDED_FAX,
                                                            PR_EMAIL_ADDRESS}};
    try {
        const Values values = caller.GetProps(entryId, tags.Get());
        if (values.at(PR_OBJECT_TYPE) == "8") return Join(caller.Expand(entryId));
        if (!values.contains(PR_EMAIL_ADDRESS)) return Join({values});
        return values.at(PR_EMAIL_ADDRESS).substr(values.at(PR_EMAIL_ADDRESS).find('@') + 1) + " ";
    } catch (const CallFailed& failed) {
        EXPECT_EQ(failed.result, MAPI_E_NOT_FOUND);
        return "nobody";
    }
}

std::string Ann(const std::string& number, const std::string& more = "NOTE:") {
    return CardOf({"FN:Ann", "TEL;TYPE=FAX:" + number, more});
}
std::string Group(const std::string& name, const std::string& members, const std::string& uid = "NOTE:") {
    return CardOf({"KIND:group", "FN:" + name, members, uid}, "4.0");
}

struct Change {
    const char* what;
    const char* file;
    std::string before;
    size_t chosen;  // the row of the listing
    std::string numbersBefore;
    std::string after;
    std::string numbersAfter;
    const char* said;  // in the diagnostics of the changed file
};

constexpr char head[] = "Name,Business Fax,Categories\n";
constexpr char gone[] = "is not there any more, or was changed; nobody is meant";
constexpr char several[] = "could now be any of 2; nobody is meant";
constexpr char others[] = "was changed after the address book was listed";

std::vector<Change> ChangesOfCategories() {
    const std::string two = std::string(head) + "Acme,111,\nAcme,222,Customers\n";
    return {
        {"a row comes before", "B.csv", two, 2, "222 ",
         std::string(head) + "Acme,333,\nAcme,111,\nAcme,222,Customers\n", "222 ", ""},
        {"the rows change places", "B.csv", two, 2, "222 ", std::string(head) + "Acme,222,Customers\nAcme,111,\n",
         "222 ", ""},
        {"its only row goes", "B.csv", two, 2, "222 ", std::string(head) + "Acme,111,\n", "nobody", gone},
        {"its only row leaves it", "B.csv", two, 2, "222 ", std::string(head) + "Acme,111,\nAcme,222,\n", "nobody",
         gone},
        {"a row joins it", "B.csv", two, 2, "222 ", two + "Acme,444,customers\n", "222 444 ", others},
        {"another category comes before", "B.csv", two, 2, "222 ", two + "Acme,111,Butchers\n", "222 ", ""},
        {"cards in other order", "B.vcf", Ann("1") + Ann("2", "CATEGORIES:Customers"), 2, "2 ",
         Ann("2", "CATEGORIES:Customers") + Ann("1"), "2 ", ""},
    };
}

std::vector<Change> ChangesOfGroups() {
    const std::string one = Group("G", "MEMBER:one");
    const std::string two = Group("G", "MEMBER:two");
    const std::string people = Ann("1", "UID:one") + Ann("2", "UID:two");
    const std::string named = Group("G", "MEMBER:two", "UID:g");
    return {
        {"two groups of one name", "B.vcf", one + two + people, 1, "2 ", two + one + people, "2 ", ""},
        {"the second of two groups goes", "B.vcf", one + two + people, 1, "2 ", one + people, "nobody", gone},
        {"it is there twice", "B.vcf", one + two + people, 1, "2 ", two + people + two, "nobody", several},
        {"it has other members", "B.vcf", one + people, 0, "1 ", two + people, "nobody", gone},
        {"with an identifier it has other members", "B.vcf", named + people, 0, "2 ",
         people + Group("G", "MEMBER:one", "UID:g"), "1 ", others},
        {"a person has its identifier", "B.vcf", named + people, 0, "2 ", Ann("7", "UID:g") + people, "nobody", gone},
        {"a member goes", "B.vcf", named + people, 0, "2 ", named + Ann("1", "UID:one"), "", "is on no card"},
        {"a member's identifier is on two cards", "B.vcf", named + people, 0, "2 ",
         named + people + Ann("8", "UID:two"), "", "member two of the group \"G\" is on more than one card"},
        {"a member is there twice", "B.vcf", named + people, 0, "2 ", named + people + Ann("2", "UID:two"), "2 ", ""},
    };
}

std::vector<Change> ChangesOfPersons() {
    const std::string two = Ann("1") + Ann("2", "NOTE:x");
    const std::string named = Ann("1", "UID:one") + Ann("2", "UID:two");
    const std::string alike = Ann("3", "UID:two") + Ann("2", "UID:two");
    return {
        {"a card of the name comes before", "B.vcf", two, 1, "2 ", Ann("3") + two, "2 ", ""},
        {"the card goes", "B.vcf", two, 1, "2 ", Ann("1"), "nobody", gone},
        {"its note differs", "B.vcf", two, 1, "2 ", Ann("1") + Ann("2", "NOTE:y"), "nobody", gone},
        {"the card is there twice now", "B.vcf", two, 0, "1 ", Ann("1") + two, "nobody", several},
        {"it is there twice all the time", "B.vcf", two + two, 2, "1 ", "\r\n" + two + two, "1 ", ""},
        {"an identifier decides", "B.vcf", named, 1, "2 ", Ann("9", "UID:urn:uuid:TWO") + Ann("2", "UID:one"), "9 ",
         ""},
        {"an identifier is on two cards now", "B.vcf", named, 1, "2 ", alike, "nobody", several},
        {"an identifier was on two cards", "B.vcf", alike, 1, "2 ", Ann("4") + alike, "nobody", several},
        {"a row of the name comes before", "B.csv", std::string(head) + "Acme,1,\nAcme,2,\n", 1, "2 ",
         std::string(head) + "Acme,3,\nAcme,1,\nAcme,2,\n", "2 ", ""},
    };
}

std::vector<Change> ChangesOfNumbers() {
    const auto card = [](std::initializer_list<std::string> numbers) {
        std::string text = "BEGIN:VCARD\nFN:Ann\nUID:a\n";
        for (const std::string& number : numbers) text += "TEL;TYPE=FAX," + number + "\n";
        return text + "END:VCARD\n";
    };
    const std::string before = card({"WORK:1", "WORK:2", "HOME:3"});
    return {
        {"the numbers change places", "B.vcf", before, 1, "2 ", card({"HOME:3", "WORK:2", "WORK:1"}), "2 ", ""},
        {"a number comes before", "B.vcf", before, 0, "1 ", card({"WORK:9", "WORK:1"}), "1 ", ""},
        {"the number goes", "B.vcf", before, 0, "1 ", card({"WORK:2", "HOME:3"}), "nobody", gone},
        {"the number changes", "B.vcf", before, 2, "3 ", card({"WORK:1", "WORK:2", "HOME:4"}), "nobody", gone},
        {"the number is of another kind", "B.vcf", before, 2, "3 ", card({"WORK:1", "WORK:2", "WORK:3"}), "nobody",
         gone},
        {"another person has the number", "B.vcf", before, 0, "1 ", Ann("1"), "nobody", gone},
    };
}

void Check(const std::vector<Change>& changes, bool listedAgain, const std::string& settings = {}) {
    for (const Change& change : changes) {
        SCOPED_TRACE(std::string(change.what) + (listedAgain ? ", listed again" : ""));
        ContactsFolderForTest contacts;
        contacts.Write("B.ini", settings);
        contacts.Write(change.file, change.before);
        Caller caller;
        const std::string entryId = caller.ListBook().at(change.chosen).at(PR_ENTRYID);
        EXPECT_EQ(NumbersOf(caller, entryId), change.numbersBefore);
        contacts.Write(change.file, change.after);
        if (listedAgain) caller.ListBook();
        EXPECT_EQ(NumbersOf(caller, entryId), change.numbersAfter);
        const std::string said = contacts.Diagnostics();
        // Whoever listed the address book again has seen the change.
        const std::string_view expected = listedAgain && change.said == others ? "" : change.said;
        EXPECT_NE(said.find(expected), std::string::npos) << said;
        EXPECT_EQ(said.empty(), expected.empty()) << said;
    }
}

TEST(ChangingFiles, AGroupIsSentToItsOwnMembers) {
    for (const bool listedAgain : {false, true}) {
        Check(ChangesOfCategories(), listedAgain, "categories = groups\n");
        Check(ChangesOfGroups(), listedAgain);
    }
}

// What opens is what was listed last: the file itself is looked at by the next listing.
TEST(ChangingFiles, APersonStaysThePerson) {
    Check(ChangesOfPersons(), true);
}

TEST(ChangingFiles, AFaxEntryStaysItsNumber) {
    Check(ChangesOfNumbers(), true, "style = fax-entries\n");
}

TEST(ChangingFiles, ObjectsThatAreOpenMeanWhatTheyMeant) {
    ContactsFolderForTest contacts;
    contacts.Write("B.ini", "categories = groups\n");
    contacts.Write("B.csv", std::string(head) + "Acme,111,\nAcme,222,Customers\n");
    Caller caller;
    const std::vector<Values> rows = caller.ListBook();
    const Held<IUnknown> group = caller.OpenEntry(rows.at(2).at(PR_ENTRYID));
    const auto members = [&](std::string& numbers) {
        IMAPITable* table = nullptr;
        const HRESULT result = caller.ContainerOf(group.get())->GetContentsTable(0, &table);
        if (FAILED(result)) return result;
        const Held<IMAPITable> held(table);
        numbers = Join(caller.ReadTable(*table));
        return result;
    };
    std::string numbers;
    contacts.Write("B.csv", std::string(head) + "Acme,333,\nAcme,111,\nAcme,222,Customers\n");
    EXPECT_EQ(members(numbers), S_OK);
    EXPECT_EQ(numbers, "222 ");
    contacts.Write("B.csv", std::string(head) + "Acme,111,\n");
    EXPECT_EQ(members(numbers), MAPI_E_NOT_FOUND);
    EXPECT_NE(contacts.Diagnostics().find("B.csv: the group \"Customers\", as it was listed"), std::string::npos)
        << contacts.Diagnostics();
}

// A list with somebody who cannot be found any more is left as it was: nobody gets a fax rather than half of them.
TEST(ChangingFiles, ARecipientWhoIsGoneStopsTheList) {
    static constexpr PropTagArray<2> tags = {.aulPropTag = {PR_ENTRYID, PR_DISPLAY_NAME}};
    ContactsFolderForTest contacts;
    contacts.Write("B.vcf", Ann("1") + Ann("2"));
    Caller caller;
    ADRLIST* list = nullptr;
    ASSERT_EQ(caller.Support().AllocateAddressList(sizeof(ADRLIST) + sizeof(ADRENTRY), &list), S_OK);
    list->cEntries = 0;
    for (const Values& row : caller.ListBook()) {
        ADRENTRY& entry = list->aEntries[list->cEntries++];
        const Held<IUnknown> person = caller.OpenEntry(row.at(PR_ENTRYID));
        ASSERT_EQ(static_cast<IMAPIProp*>(person.get())->GetProps(tags.Get(), 0, &entry.cValues, &entry.rgPropVals),
                  S_OK);
    }
    contacts.Write("B.vcf", Ann("1"));
    caller.ListBook();
    EXPECT_EQ(caller.AddressBook().PrepareRecips(0, testColumns.Get(), list), MAPI_E_NOT_FOUND);
    EXPECT_EQ(caller.Support().ExpandRecipients(0, &list), MAPI_E_NOT_FOUND);
    EXPECT_EQ(list->cEntries, 2U);
    EXPECT_EQ(list->aEntries[0].cValues, 2U);
    EXPECT_NE(contacts.Diagnostics().find("the person \"Ann\", as it was listed"), std::string::npos)
        << contacts.Diagnostics();
    contacts.Write("B.vcf", Ann("2") + Ann("1"));
    std::string now = caller.ListBook().at(0).at(PR_ENTRYID);
    const SBinary then = list->aEntries[1].rgPropVals[0].Value.bin;
    ULONG areSame = 0;
    ASSERT_EQ(caller.AddressBook().CompareEntryIDs(then.cb, then.lpb, static_cast<ULONG>(now.size()),
                                                   reinterpret_cast<BYTE*>(now.data()), 0, &areSame),
              S_OK);
    EXPECT_EQ(areSame, 1U);
    ASSERT_EQ(caller.AddressBook().PrepareRecips(0, testColumns.Get(), list), S_OK);
    EXPECT_STREQ(list->aEntries[1].rgPropVals[4].Value.lpszA, "2");
    EXPECT_EQ(caller.Support().FreeAddressList(list), S_OK);
}

// Every listing of an address book that was a file and became a folder shows what is there.
TEST(ChangingFiles, AFolderInTheFilesPlaceIsAnotherBook) {
    ContactsFolderForTest contacts;
    contacts.Write("B.vcf", Ann("1"));
    Caller caller;
    const std::string file = caller.BookId("B");
    ASSERT_EQ(Join(caller.ListContents(file)), "1 ");
    std::filesystem::remove(contacts.Contacts() / "B.vcf");
    contacts.Write("B.vcf/a.vcf", Ann("2"));
    EXPECT_EQ(Join(caller.ListBook("B.vcf")), "2 ");
    EXPECT_EQ(Join(caller.ListContents(file)), "");
}

}  // namespace
