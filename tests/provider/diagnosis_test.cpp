// VOKDiagnose, called as a program calls it.
#include <gtest/gtest.h>

#include <thread>

#include "card_text.h"
#include "mapi/result_codes.h"
#include "provider_client.h"

namespace {

// Writes down what it is told, and answers as the test wants.
struct Receiver {
    static HRESULT STDAPICALLTYPE OnBook(void* context, const VOKBookReport* book) {
        Receiver& self = *static_cast<Receiver*>(context);
        self.text += std::string(book->parent == book->number ? "book " : "container ") + book->name + "\n";
        EXPECT_EQ(book->head.size, sizeof *book);
        return self.bookAnswer;
    }
    static HRESULT STDAPICALLTYPE OnFile(void* context, const VOKFileReport* file) {
        Receiver& self = *static_cast<Receiver*>(context);
        self.text += file->head.status == VOK_READ_COMPLETE ? "file" : "part of file";
        for (const ULONG count :
             {file->cardCount, file->personCount, file->groupCount, file->businessCount, file->homeCount,
              file->otherCount, file->primaryCount, file->unplacedCount, file->missingMemberCount, file->namelessCount})
            self.text += " " + std::to_string(count);
        self.text += std::string(" ") + (file->guessedCharset == nullptr ? "-" : file->guessedCharset) + "\n";
        return self.fileAnswer;
    }
    static HRESULT STDAPICALLTYPE OnCard(void* context, const VOKCardReport* card) {
        Receiver& self = *static_cast<Receiver*>(context);
        self.text +=
            std::to_string(card->head.line) + " " + (card->isGroup != 0 ? "group " : "person ") + card->name + "\n";
        for (ULONG i = 0; i < card->telephoneCount; ++i) {
            const VOKTelephoneReport& telephone = *card->telephones[i];
            self.text += "  " + std::to_string(telephone.head.line) + " " + telephone.source + " " + telephone.number +
                         " [" + telephone.kind + "] [" + telephone.place + "] " + telephone.rule + "\n";
        }
        return self.cardAnswer;
    }
    static void STDAPICALLTYPE OnMessage(void* context, const VOKMessageReport* message) {
        static_cast<Receiver*>(context)->messages += std::to_string(message->head.line) + ": " + message->what + "\n";
    }

    HRESULT Diagnose(const ProviderLibrary& library, const char* profile = nullptr, const char* location = nullptr) {
        const VOKDiagnosisReceiver receiver = {sizeof receiver, this, OnBook, OnFile, OnCard, OnMessage};
        return library.Diagnose(profile, location, &receiver);
    }

    HRESULT bookAnswer = S_OK;
    HRESULT fileAnswer = S_OK;
    HRESULT cardAnswer = S_OK;
    std::string text;
    std::string messages;
};

TEST(Diagnosis, TellsOfEveryNumberAndWhy) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/Sub/a.csv", "Name,Business Fax,Phone 1 - Label,Phone 1 - Value\nEva,7,Home Fax,8\n");
    contacts.Write("Book/a.vcf", CardOf({"FN:Ann", "TEL;TYPE=VOICE:1", "item1.TEL:2", "item1.X-ABLabel:Fax Lager",
                                         "TEL;TYPE=FAX:2", "TEL;TYPE=FAX:", "TEL;TYPE=FAX:3", "TEL;TYPE=FAX:4",
                                         "TEL;TYPE=FAX,WORK:2", "TEL;VALUE=uri;TYPE=\"fax,home\":tel:+5;ext=6"}) +
                                     CardOf({"NOTE:nobody"}) + CardOf({"KIND:group", "FN:G", "MEMBER:gone"}, "4.0"));
    const ProviderLibrary library;
    Receiver receiver;
    ASSERT_EQ(receiver.Diagnose(library), S_OK);
    EXPECT_EQ(
        receiver.text,
        "book Book\n"
        "file 3 1 1 1 1 0 3 1 1 1 -\n"
        "1 person Ann\n"
        "  4 TEL;TYPE=VOICE 1 [] [] not a fax number: neither type, name nor label says fax\n"
        "  5 item1.TEL, label Fax Lager 2 [primary] [primary] primary fax number: it says fax and names no place\n"
        "  7 TEL;TYPE=FAX 2 [primary] [] left out: the card has the same number of the same kind already\n"
        "  8 TEL;TYPE=FAX  [primary] [] left out: no number stands there\n"
        "  9 TEL;TYPE=FAX 3 [primary] [extended] primary fax number: it says fax and names no place\n"
        "  10 TEL;TYPE=FAX 4 [primary] [] primary fax number: it says fax and names no place\n"
        "  11 TEL;TYPE=FAX,WORK 2 [business] [business] business fax number: it says fax, and work or business\n"
        "  12 TEL;VALUE=uri;TYPE=\"fax,home\" +5;ext=6 [home] [home] home fax number: it says fax and home\n"
        "14 person \n"
        "18 group G\n"
        "container Sub\n"
        "file 1 1 0 1 1 0 0 0 0 0 -\n"
        "2 person Eva\n"
        "  2 Business Fax 7 [business] [business] business fax number: it says fax, and work or business\n"
        "  2 Phone 1 - Value, label Home Fax 8 [home] [home] home fax number: it says fax and home\n");
    EXPECT_EQ(receiver.messages,
              "14: card without name, organisation, e-mail address or number\n"
              "22: member gone of the group \"G\" is on no card of this profile\n"
              "10: the fax number 4 of \"Ann\" finds no place in this style of address book\n");
    // Everything went to the receiver.
    EXPECT_EQ(contacts.Diagnostics(), "");
    contacts.Write("Book/addressbook.ini", "style = fax-entries\n");
    Receiver again;
    ASSERT_EQ(again.Diagnose(library, "", nullptr), S_OK);
    EXPECT_NE(again.text.find("4 [primary] [entry] primary"), std::string::npos) << again.text;
}

TEST(Diagnosis, TellsOfEntriesOfDirectories) {
    ContactsFolderForTest contacts;
    contacts.Write("a.ldif",
                   "version: 1\n\ndn: cn=Ann\nobjectClass: person\ncn: Ann\nmobile: 1\n"
                   "facsimileTelephoneNumber;x-old: 2$b4Length\nhomeFax:: Mw==\nhomeFax:< file:///4\n"
                   "proxyAddresses: FAX:Ann@5\nfaxNumber: 6\n\ndn: cn=G\nchangetype: delete\n");
    const ProviderLibrary library;
    Receiver receiver;
    ASSERT_EQ(receiver.Diagnose(library), S_OK);
    EXPECT_EQ(receiver.text,
              "book a\n"
              "file 1 1 0 1 1 0 2 0 0 0 -\n"
              "3 person Ann\n"
              "  6 mobile 1 [] [] not a fax number: neither type, name nor label says fax\n"
              "  7 facsimileTelephoneNumber;x-old, a fax at work 2 [business] [business] business fax number: it says "
              "fax, and work or "
              "business\n"
              "  8 homeFax 3 [home] [home] home fax number: it says fax and home\n"
              "  10 proxyAddresses 5 [primary] [primary] primary fax number: it says fax and names no place\n"
              "  11 faxNumber 6 [primary] [extended] primary fax number: it says fax and names no place\n");
    EXPECT_EQ(receiver.messages,
              "9: the value of homeFax stands in another file\n14: this record changes an entry: delete\n");
}

TEST(Diagnosis, ReadsWhatItIsAskedFor) {
    ContactsFolderForTest contacts;
    contacts.Write("a.vcf", CardOf({"FN:Ren\xE9"}));
    contacts.Write("b.vcf", CardOf({"FN:Ben"}));
    const ProviderLibrary library;
    Receiver passer;
    passer.bookAnswer = S_FALSE;
    EXPECT_EQ(passer.Diagnose(library), S_OK);
    EXPECT_EQ(passer.text, "book a\nbook b\n");
    const std::u8string file = (contacts.Contacts() / "a.vcf").u8string();
    Receiver one;
    one.fileAnswer = S_FALSE;
    EXPECT_EQ(one.Diagnose(library, "no such profile", std::string(file.begin(), file.end()).c_str()), S_OK);
    EXPECT_EQ(one.text, "book a\nfile 1 1 0 0 0 0 0 0 0 0 windows-1252\n");
    // Failures of the receiver come back to it, and end the reading.
    for (HRESULT Receiver::*const answer : {&Receiver::bookAnswer, &Receiver::fileAnswer, &Receiver::cardAnswer}) {
        Receiver failing;
        failing.*answer = MAPI_E_NOT_FOUND;
        EXPECT_EQ(failing.Diagnose(library), MAPI_E_NOT_FOUND);
        EXPECT_EQ(failing.text.find("book b"), std::string::npos);
    }
    EXPECT_EQ(library.Diagnose(nullptr, nullptr, nullptr), MAPI_E_INVALID_PARAMETER);
    Receiver none;
    EXPECT_EQ(none.Diagnose(library, "no such profile"), MAPI_E_NOT_FOUND);
}

// Of a program that was built when a receiver ended earlier, and of one that wants to hear less.
TEST(Diagnosis, TellsNoMoreThanAReceiverHasFunctionsFor) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/a.vcf", CardOf({"FN:Ann", "TEL;TYPE=FAX:1"}) + CardOf({"NOTE:nobody"}));
    const ProviderLibrary library;
    Receiver older;
    VOKDiagnosisReceiver receiver = {offsetof(VOKDiagnosisReceiver, OnCard),
                                     &older,
                                     nullptr,
                                     Receiver::OnFile,
                                     Receiver::OnCard,
                                     Receiver::OnMessage};
    EXPECT_EQ(library.Diagnose(nullptr, nullptr, &receiver), S_OK);
    EXPECT_EQ(older.text, "file 2 1 0 0 0 0 1 0 0 1 -\n");
    // Messages are never lost.
    EXPECT_EQ(older.messages, "");
    EXPECT_NE(contacts.Diagnostics().find("card without name"), std::string::npos);
    receiver.size = 3;
    EXPECT_EQ(library.Diagnose(nullptr, nullptr, &receiver), MAPI_E_INVALID_PARAMETER);
}

// A program with windows shows what nobody asked for in a call.
TEST(Messages, GoToTheProgramThatTakesThem) {
    ContactsFolderForTest contacts;
    contacts.Write("Book/a.vcf", CardOf({"NOTE:nobody"}) + CardOf({"FN:Ann"}));
    const std::string told = "1: card without name, organisation, e-mail address or number\n";
    Caller caller;
    Receiver program;
    const VOKMessageReceiver receiver = {sizeof receiver, &program, Receiver::OnMessage};
    EXPECT_EQ(caller.Library().SetMessageReceiver(&receiver), S_OK);
    caller.ListBook();
    EXPECT_EQ(program.messages, told);
    EXPECT_NE(contacts.Diagnostics().find("card without name"), std::string::npos);
    EXPECT_EQ(caller.Library().SetMessageReceiver(nullptr), S_OK);
    contacts.Write("Book/b.vcf", CardOf({"NOTE:nobody"}));
    caller.ListBook();
    EXPECT_EQ(program.messages, told);
    EXPECT_NE(contacts.Diagnostics().find("b.vcf:1: card without name"), std::string::npos);
}

// Whoever waits in front of a window presses Cancel while a card is told.
TEST(Reading, EndsWhenItIsStoppedAndNotAfterwards) {
    ContactsFolderForTest contacts;
    std::string cards;
    for (int i = 0; i < 1000; ++i) cards += CardOf({"NOTE:nobody"}) + CardOf({"FN:Person " + std::to_string(i)});
    contacts.Write("Book/a.vcf", cards);
    Caller caller;
    struct Stopper {
        static void STDAPICALLTYPE OnMessage(void* context, const VOKMessageReport*) {
            const auto& self = *static_cast<Stopper*>(context);
            std::thread([&] { self.library.StopReading(); }).join();
        }
        ProviderLibrary& library;
    } stopper = {caller.Library()};
    caller.Library().StopReading();
    const std::string book = caller.BookId();
    const VOKMessageReceiver receiver = {sizeof receiver, &stopper, Stopper::OnMessage};
    caller.Library().SetMessageReceiver(&receiver);
    try {
        caller.ListContents(book);
        ADD_FAILURE() << "it was not stopped";
    } catch (const CallFailed& failed) {
        EXPECT_EQ(failed.result, MAPI_E_USER_CANCEL);
    }
    caller.Library().SetMessageReceiver(nullptr);
    EXPECT_EQ(caller.ListContents(book).size(), 1000U);
}

}  // namespace
