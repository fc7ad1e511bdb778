// What lies among the address files and is no file, cannot be reached, or claims more than there can be: it is named,
// keeps nobody waiting and costs no other file anything.
#include <gtest/gtest.h>

#include <fstream>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#endif

#include "card_text.h"
#include "guard.h"
#include "provider_client.h"

namespace fs = std::filesystem;

namespace {

std::string Names(const std::vector<Values>& rows) {
    std::string names;
    for (const Values& row : rows) names += row.at(PR_DISPLAY_NAME) + "|";
    return names;
}

void ExpectSaid(const ContactsFolderForTest& contacts, const std::string& what) {
    EXPECT_NE(contacts.Diagnostics().find(what), std::string::npos) << what << "\nin\n" << contacts.Diagnostics();
}

// A fault is a result code to callers; its text is for whoever looks for it.
TEST(SpecialFiles, AFaultIsSaidWithItsText) {
    ContactsFolderForTest contacts;
    const auto answer = [](const std::string& fault) {
        const ULONG before = UnreadCount();
        const HRESULT result = Guarded([&]() -> HRESULT { throw std::runtime_error(fault); });
        EXPECT_EQ(UnreadCount(), before + 1);
        return result;
    };
    EXPECT_EQ(answer("such a table was never there"), MAPI_E_CALL_FAILED);
    EXPECT_EQ(Guarded([]() -> HRESULT { throw Failure(MAPI_E_NOT_FOUND); }), MAPI_E_NOT_FOUND);
    ExpectSaid(contacts, "QDXL7RA.DLL: an answer cannot be made (such a table was never there); ");
    for (int i = 0; i < 200; ++i) answer(std::string(100'000, 'x'));
    EXPECT_LT(contacts.Diagnostics().size(), 100'000U);
    ExpectSaid(contacts, "more answers cannot be made");
}

constexpr char noFile[] = ": this is a pipe, a socket or a device, and no file; ";

#ifdef _WIN32

// Whoever opens such a name in any folder opens the device. Only a path of this form makes a file of it.
TEST(SpecialFiles, NamesOfDevicesAreNotOpened) {
    constexpr const char* names[] = {"NUL.vcf", "con.csv", "COM1.vcf", "lpt9 .x.vcf"};
    ContactsFolderForTest contacts;
    contacts.Write("Book/good.vcf", CardOf({"FN:Good"}));
    for (const char* const name : names) {
        const fs::path path = L"\\\\?\\" + (contacts.Contacts() / "Book" / name).native();
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE) << name;
        CloseHandle(file);
    }
    Caller caller;
    EXPECT_EQ(Names(caller.ListBook("Book")), "Good|");
    for (const char* const name : names) ExpectSaid(contacts, name + std::string(noFile));
    for (const char* const name : names) fs::remove(L"\\\\?\\" + (contacts.Contacts() / "Book" / name).native());
}

#else

// Of more bytes than any file of cards may have, without taking room on the disk.
void WriteHuge(ContactsFolderForTest& contacts, const std::string& file) {
    contacts.Write(file, "");
    fs::resize_file(contacts.Contacts() / file, std::uintmax_t{100} << 30);
}

TEST(SpecialFiles, AFileThatClaimsTooMuchHidesNoOther) {
    ContactsFolderForTest contacts;
    WriteHuge(contacts, "Book/a.vcf");
    WriteHuge(contacts, "Book/b.csv");
    contacts.Write("Book/good.vcf", CardOf({"FN:Good"}));
    contacts.Write("Other.vcf", CardOf({"FN:Other"}));
    Caller caller;
    const auto unreadIn = [&](const std::string& book) {
        const ULONG before = caller.Library().CountUnread();
        caller.ListBook(book);
        return caller.Library().CountUnread() - before;
    };
    EXPECT_EQ(Names(caller.ListBook("Book")), "Good|");
    for (const char* const name : {"a.vcf", "b.csv"}) ExpectSaid(contacts, name + std::string(": file is too large; "));
    EXPECT_EQ(unreadIn("Book"), 2U);
    EXPECT_EQ(unreadIn("Other"), 0U);
}

// Whom a group names may stand in a file that cannot be read.
TEST(SpecialFiles, NoFaxGoesToHalfAGroup) {
    const std::string card = "\r\nTEL;TYPE=FAX:1\r\nCATEGORIES:Club";
    ContactsFolderForTest contacts;
    contacts.Write("Book/addressbook.ini", "categories = groups");
    contacts.Write("Book/good.vcf", CardOf({"FN:Ann", "UID:ann" + card}) + CardOf({"FN:Ben", "UID:ben" + card}) +
                                        CardOf({"KIND:group", "FN:Whole", "MEMBER:ann", "MEMBER:ben"}, "4.0") +
                                        CardOf({"KIND:group", "FN:Half", "MEMBER:ann", "MEMBER:cleo"}, "4.0"));
    Caller caller;
    const std::vector<Values> rows = caller.ListBook("Book");
    ASSERT_EQ(Names(rows), "Ann|Ben|Whole|Half|Club|");
    const auto expand = [&](size_t row) {
        try {
            return Names(caller.Expand(rows[row].at(PR_ENTRYID)));
        } catch (const CallFailed& failed) {
            EXPECT_EQ(failed.result, MAPI_E_UNABLE_TO_COMPLETE);
            return std::string("nobody");
        }
    };
    EXPECT_EQ(expand(2) + expand(3) + expand(4), "Ann|Ben|Ann|Ann|Ben|");
    WriteHuge(contacts, "Book/huge.vcf");
    EXPECT_EQ(expand(2), "Ann|Ben|");
    EXPECT_EQ(expand(3), "nobody");
    EXPECT_EQ(expand(4), "nobody");
    for (const char* const name : {"Half", "Club"})
        ExpectSaid(contacts, "the group \"" + std::string(name) + "\" may have members in what cannot be read");
}

void MakePipe(const fs::path& path) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0) << path;
}

void MakeSocket(const fs::path& path) {
    // Addresses of sockets are short.
    const fs::path before = fs::current_path();
    fs::current_path(path.parent_path());
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.filename().string().copy(address.sun_path, sizeof address.sun_path - 1);
    const int made = socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(bind(made, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(made);
    fs::current_path(before);
}

TEST(SpecialFiles, AreNotOpenedInAFolder) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/good.vcf", CardOf({"FN:Good"}));
    const fs::path book = contacts.Contacts() / "Book";
    MakePipe(book / "pipe.vcf");
    MakePipe(book / "pipe.csv");
    MakePipe(book / "addressbook.ini");
    MakeSocket(book / "socket.vcf");
    fs::create_symlink("pipe.vcf", book / "link.vcf");
    fs::create_symlink("/dev/zero", book / "endless.vcf");
    fs::create_symlink("/dev/zero", book / "endless.csv");
    Caller caller;
    EXPECT_EQ(Names(caller.ListBook("Book")), "Good|");
    for (const char* const name : {"pipe.vcf", "pipe.csv", "socket.vcf", "link.vcf", "endless.vcf", "endless.csv"})
        ExpectSaid(contacts, name + std::string(noFile));
    ExpectSaid(contacts, "addressbook.ini: settings cannot be read");
}

TEST(SpecialFiles, AreNotOpenedAsAnAddressBook) {
    ContactsFolderForTest contacts;
    MakePipe(contacts.Contacts() / "pipe.vcf");
    MakePipe(contacts.Contacts() / "pipe.ini");
    MakePipe(contacts.Contacts() / "pipe");
    {
        Caller caller;
        EXPECT_EQ(Names(caller.ListBook("pipe")), "");
    }
    ExpectSaid(contacts, std::string("pipe.vcf") + noFile);
    ExpectSaid(contacts, "pipe.ini: settings cannot be read");
    SetVariable("FAXBOOK_CONTACTS", (contacts.Contacts() / "pipe").string());
    Caller caller;
    EXPECT_EQ(Names(caller.ListBooks()), "");
    ExpectSaid(contacts, "pipe: neither a folder nor an address file");
}

TEST(SpecialFiles, LinksThatLeadNowhereAreNamed) {
    ContactsFolderForTest contacts;
    fs::create_symlink("away", contacts.Contacts() / "Share");
    fs::create_symlink("Loop", contacts.Contacts() / "Loop");
    contacts.Write("Book/good.vcf", CardOf({"FN:Good"}));
    fs::create_symlink("away.ini", contacts.Contacts() / "Book/addressbook.ini");
    Caller caller;
    EXPECT_EQ(Names(caller.ListBooks()), "Book|");
    EXPECT_EQ(Names(caller.ListBook("Book")), "Good|");
    for (const char* const name : {"Share", "Loop"})
        ExpectSaid(contacts, name + std::string(": folder cannot be read"));
    ExpectSaid(contacts, "addressbook.ini: settings cannot be read");
}

#endif

}  // namespace
