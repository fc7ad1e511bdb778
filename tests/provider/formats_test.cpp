// Files as the disk has them: of every format and encoding, damaged, changing and gone.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include <thread>
#ifndef _WIN32
#include <unistd.h>
#endif

#include "card_text.h"
#include "provider_client.h"
#include "text/code_pages.h"

namespace {

std::string NamesAndNumbers(const std::vector<Values>& rows) {
    std::string seen;
    for (const Values& row : rows) {
        seen += FromActiveCodePage(row.at(PR_DISPLAY_NAME));
        for (const ULONG tag : {PR_BUSINESS_FAX_NUMBER, PR_PRIMARY_FAX_NUMBER})
            if (row.contains(tag)) seen += " " + row.at(tag);
        seen += "|";
    }
    return seen;
}

// What a name looks like in the active code page, back in UTF-8.
std::string Shown(const std::string& utf8) {
    return FromActiveCodePage(InActiveCodePage(utf8));
}

std::string Utf16Of(std::string_view ascii, bool bigEndian, bool withMark) {
    std::string bytes;
    const auto add = [&](unsigned unit) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    };
    if (withMark) add(0xFEFF);
    for (const char c : ascii) add(static_cast<unsigned char>(c));
    return bytes;
}

TEST(Formats, EveryFormatIsABookInEveryEncoding) {
    const std::string card = CardOf({"FN:Ann", "TEL;TYPE=WORK,FAX:1"});
    const std::string csv = "Name;Business Fax\r\nAnn;1\r\n";
    const std::string ldif = "dn: cn=Ann\r\nobjectClass: person\r\ncn: Ann\r\nfacsimileTelephoneNumber: 1\r\n";
    for (const auto& [ending, text] : {std::pair(".vcf", card), std::pair(".CSV", csv), std::pair(".ldif", ldif),
                                       std::pair(".LDI", ldif), std::pair(".ldf", ldif)}) {
        ContactsFolderForTest contacts;
        contacts.Write(std::string("1") + ending, text);
        contacts.Write(std::string("2") + ending, "\xEF\xBB\xBF" + text);
        contacts.Write(std::string("3") + ending, Utf16Of(text, false, true));
        contacts.Write(std::string("4") + ending, Utf16Of(text, true, true));
        contacts.Write(std::string("5") + ending, Utf16Of(text, false, false));
        Caller caller;
        ASSERT_EQ(caller.ListBooks().size(), 5U);
        for (const char* name : {"1", "2", "3", "4", "5"})
            EXPECT_EQ(NamesAndNumbers(caller.ListBook(name)), "Ann 1|") << name << ending;
        EXPECT_EQ(contacts.Diagnostics(), "");
    }
    ContactsFolderForTest contacts;
    contacts.Write("Book/a.vcf", card);
    contacts.Write("Book/b.csv", csv);
    contacts.Write("Book/c.txt", card);
    contacts.Write("Book/d.ldif", ldif);
    Caller caller;
    EXPECT_EQ(NamesAndNumbers(caller.ListBook()), "Ann 1|Ann 1|Ann 1|");
}

TEST(Formats, TheGuessOfACharsetCanBeSet) {
    const std::string name = "Соколова";  // in windows-1251 these are also letters of windows-1252
    const std::string bytes = "\xD1\xEE\xEA\xEE\xEB\xEE\xE2\xE0";
    for (const auto& [file, text] :
         {std::pair("a.vcf", CardOf({"FN:" + bytes})), std::pair("a.csv", "Name,Fax\n" + bytes + ",\n"),
          std::pair("a.ldif", "dn: uid=1\nobjectClass: person\ncn: " + bytes + "\n")}) {
        ContactsFolderForTest contacts;
        contacts.Write(file, text);
        contacts.Write("a.ini", "charset = windows-1252\n");
        Caller caller;
        EXPECT_NE(NamesAndNumbers(caller.ListBook()), Shown(name) + "|");
        contacts.Write("a.ini", "charset = windows-1251\n");
        EXPECT_EQ(NamesAndNumbers(caller.ListBook()), Shown(name) + "|");
        EXPECT_EQ(contacts.Diagnostics(), "");
        // Without the setting it is guessed, and said.
        contacts.Write("a.ini", "");
        EXPECT_EQ(NamesAndNumbers(caller.ListBook()), Shown(name) + "|");
        EXPECT_NE(contacts.Diagnostics().find("windows-1251"), std::string::npos) << contacts.Diagnostics();
    }
}

TEST(Formats, CategoriesAreGroupsWhereTheBookAsksForThem) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/a.vcf", CardOf({"FN:Ann", "TEL;TYPE=FAX,WORK:1", "CATEGORIES:Club,Friends"}) +
                                     CardOf({"FN:Ben", "TEL;TYPE=FAX,WORK:2", "CATEGORIES:club"}) +
                                     CardOf({"FN:Cleo"}));
    contacts.Write("Book/b.csv", "Name,Business Fax,Categories\nDora,4,Friends\n");
    Caller caller;
    EXPECT_EQ(NamesAndNumbers(caller.ListBook()), "Ann 1|Ben 2|Cleo|Dora 4|");
    contacts.Write("Book/addressbook.ini", "categories = groups\n");
    std::vector<Values> rows = caller.ListBook();
    ASSERT_EQ(NamesAndNumbers(rows), "Ann 1|Ben 2|Cleo|Dora 4|Club|Friends|");
    EXPECT_EQ(rows[4].at(PR_OBJECT_TYPE), "8");
    EXPECT_EQ(NamesAndNumbers(caller.ListContents(rows[4].at(PR_ENTRYID))), "Ann 1|Ben 2|");
    EXPECT_EQ(NamesAndNumbers(caller.Expand(rows[5].at(PR_ENTRYID))), "Ann 1|Dora 4|");
    // A card that leaves its file leaves the group; the group's identifier stays good.
    contacts.Write("Book/b.csv", "Name,Business Fax,Categories\nDora,4,\n");
    EXPECT_EQ(NamesAndNumbers(caller.ListBook()), "Ann 1|Ben 2|Cleo|Dora 4|Club|Friends|");
    EXPECT_EQ(NamesAndNumbers(caller.Expand(rows[5].at(PR_ENTRYID))), "Ann 1|");
    EXPECT_EQ(contacts.Diagnostics(), "");
}

TEST(Formats, AGroupIsSentToThePreferredNumberOfAMember) {
    struct Recipient {
        std::initializer_list<std::string> lines;
        const char* places;  // business, home, primary
    };
    const Recipient recipients[] = {
        {{"TEL;TYPE=FAX,WORK:1", "TEL;TYPE=FAX,WORK:2"}, "1 - - "},
        {{"TEL;TYPE=FAX,HOME:1", "TEL;TYPE=FAX,OTHER:2"}, "- 1 - "},
        {{"TEL;TYPE=FAX,OTHER:1", "TEL;TYPE=FAX,OTHER:2"}, "- - 1 "},
        {{"TEL;TYPE=FAX,WORK:1", "TEL;TYPE=FAX:2"}, "1 - 2 "},
    };
    for (const Recipient& recipient : recipients) {
        ContactsFolderForTest contacts;
        std::string card = "BEGIN:VCARD\nFN:A\nUID:a\n";
        for (const std::string& line : recipient.lines) card += line + "\n";
        contacts.Write("a.vcf", card + "END:VCARD\n" + CardOf({"KIND:group", "FN:G", "MEMBER:a"}, "4.0"));
        Caller caller;
        const Values member = caller.Expand(caller.ListBook().at(1).at(PR_ENTRYID)).at(0);
        std::string places;
        for (const ULONG tag : {PR_BUSINESS_FAX_NUMBER, PR_HOME_FAX_NUMBER, PR_PRIMARY_FAX_NUMBER})
            places += (member.contains(tag) ? member.at(tag) : "-") + " ";
        EXPECT_EQ(places, recipient.places);
    }
}

TEST(Formats, EmptyDamagedAndVanishedFilesCostNothingElse) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/a.vcf", "");
    contacts.Write("Book/b.csv", "");
    contacts.Write("Book/c.vcf", std::string(100000, '\0'));
    contacts.Write("Book/d.csv", std::string("\xFF\xFE\x00", 3));
    contacts.Write("Book/e.vcf", CardOf({"FN:Ann", "TEL;TYPE=FAX,WORK:1"}));
    std::filesystem::create_directories(contacts.Contacts() / "Book" / "folder.vcf");
    Caller caller;
    EXPECT_EQ(NamesAndNumbers(caller.ListBook("Book")), "Ann 1|");
    const std::string id = caller.BookId("Book");
    std::filesystem::remove_all(contacts.Contacts() / "Book");
    EXPECT_EQ(NamesAndNumbers(caller.ListContents(id)), "");
    EXPECT_NE(contacts.Diagnostics().find("folder cannot be read"), std::string::npos) << contacts.Diagnostics();
    contacts.Write("Book/e.vcf", CardOf({"FN:Ben"}));
    EXPECT_EQ(NamesAndNumbers(caller.ListContents(id)), "Ben|");
}

// Whatever a listing meets while a program writes, it ends, and the next one after the last change sees it all.
TEST(Formats, AFileMayChangeBetweenAnyTwoCalls) {
    ContactsFolderForTest contacts;
    const std::filesystem::path file = contacts.Contacts() / "a.vcf";
    contacts.Write("a.vcf", CardOf({"FN:0"}));
    Caller caller;
    const std::string id = caller.BookId();
    for (int count = 1; count <= 20; ++count) {
        std::ofstream(file, std::ios::binary | std::ios::app) << CardOf({"FN:" + std::to_string(count)});
        EXPECT_EQ(caller.ListContents(id).size(), static_cast<size_t>(count) + 1);
    }
    std::filesystem::resize_file(file, std::filesystem::file_size(file) - 5);
    EXPECT_EQ(caller.ListContents(id).size(), 21U);
    EXPECT_NE(contacts.Diagnostics().find("without END:VCARD"), std::string::npos);
}

// Two changes within one step of the file system's time: neither the time nor the size tells.
TEST(Formats, ChangesOfOneMomentAreSeen) {
    std::filesystem::file_time_type moment, seen;
    do {
        ContactsFolderForTest contacts;
        const std::filesystem::path file = contacts.Contacts() / "a.vcf";
        contacts.Write("a.vcf", CardOf({"FN:Ann"}));
        moment = std::filesystem::last_write_time(file);
        Caller caller;
        EXPECT_EQ(NamesAndNumbers(caller.ListBook()), "Ann|");
        seen = std::filesystem::file_time_type::clock::now();
        contacts.Write("a.vcf", CardOf({"FN:Ben"}));
        std::filesystem::last_write_time(file, moment);
        // The step was over before the first listing where the machine was busy: that says nothing.
        if (seen - moment < std::chrono::seconds(1)) {
            EXPECT_EQ(NamesAndNumbers(caller.ListBook()), "Ben|");
        }
    } while (seen - moment >= std::chrono::seconds(1));
}

// A listing that meets a file half-written shows cards of it or none, and complains at the worst.
TEST(Formats, AFileMayChangeWhileItIsRead) {
    ContactsFolderForTest contacts;
    std::string text;
    for (int count = 0; count < 20000; ++count)
        text += CardOf({"FN:Ann", "TEL;TYPE=FAX,WORK:" + std::to_string(count)});
    contacts.Write("a.vcf", text);
    Caller caller;
    const std::string id = caller.BookId();
    std::atomic<bool> stop = false;
    std::thread writer([&] {
        for (size_t round = 1; !stop; ++round)
            contacts.Write("a.vcf", text.substr(0, text.size() * 97 / 100 / (round % 7 + 1)));
    });
    for (int round = 0; round < 15; ++round)
        for (const Values& row : caller.ListContents(id))
            EXPECT_TRUE(std::string("Ann").starts_with(row.at(PR_DISPLAY_NAME)));
    stop = true;
    writer.join();
    contacts.Write("a.vcf", text);
    EXPECT_EQ(caller.ListContents(id).size(), 20000U);
}

#ifndef _WIN32
// The superuser may read everything: while this lives, the process is nobody.
class WithoutRights {
  public:
    WithoutRights() : user_(geteuid()) {
        if (user_ == 0 && seteuid(65534) != 0) throw std::runtime_error("cannot give up the superuser's rights");
    }
    ~WithoutRights() {
        if (user_ == 0 && seteuid(user_) != 0) std::abort();
    }

  private:
    uid_t user_;
};

TEST(Formats, WhatMayNotBeReadIsNamed) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/a.vcf", CardOf({"FN:Ann"}));
    contacts.Write("Book/b.vcf", CardOf({"FN:Ben"}));
    contacts.Write("Shut/c.vcf", CardOf({"FN:Cleo"}));
    std::filesystem::permissions(contacts.Contacts() / "Book/a.vcf", std::filesystem::perms::none);
    std::filesystem::permissions(contacts.Contacts() / "Shut", std::filesystem::perms::none);
    // The diagnostics are written beside the contacts.
    std::filesystem::permissions(contacts.Contacts().parent_path(), std::filesystem::perms::all);
    Caller caller;
    {
        const WithoutRights asNobody;
        EXPECT_EQ(NamesAndNumbers(caller.ListBook("Book")), "Ben|");
        EXPECT_EQ(NamesAndNumbers(caller.ListBook("Shut")), "");
    }
    std::filesystem::permissions(contacts.Contacts() / "Shut", std::filesystem::perms::all);
    EXPECT_NE(contacts.Diagnostics().find("a.vcf: file cannot be read"), std::string::npos);
    EXPECT_NE(contacts.Diagnostics().find("Shut: folder cannot be read"), std::string::npos);
}
#endif

}  // namespace
