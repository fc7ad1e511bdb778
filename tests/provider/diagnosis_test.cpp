// VOKDiagnose, called as a program calls it.
#include <gtest/gtest.h>

#include "card_text.h"
#include "mapi/result_codes.h"
#include "provider_client.h"

namespace {

// Writes down what it is told, and answers as the test wants.
struct Receiver final : VOKDiagnosisReceiver {
    HRESULT STDMETHODCALLTYPE OnBook(const VOKBookReport* book) override {
        text += std::string(book->parent == book->number ? "book " : "container ") + book->name + "\n";
        return bookAnswer;
    }
    HRESULT STDMETHODCALLTYPE OnFile(const VOKFileReport* file) override {
        text += "file";
        for (const ULONG count :
             {file->cardCount, file->personCount, file->groupCount, file->businessCount, file->homeCount,
              file->otherCount, file->primaryCount, file->unplacedCount, file->missingMemberCount, file->namelessCount})
            text += " " + std::to_string(count);
        text += std::string(" ") + (file->guessedCharset == nullptr ? "-" : file->guessedCharset) + "\n";
        return fileAnswer;
    }
    HRESULT STDMETHODCALLTYPE OnCard(const VOKCardReport* card) override {
        text += std::to_string(card->line) + " " + (card->isGroup != 0 ? "group " : "person ") + card->name + "\n";
        for (ULONG i = 0; i < card->telephoneCount; ++i) {
            const VOKTelephoneReport& telephone = card->telephones[i];
            text += "  " + std::to_string(telephone.line) + " " + telephone.source + " " + telephone.number + " [" +
                    telephone.kind + "] [" + telephone.place + "] " + telephone.rule + "\n";
        }
        return cardAnswer;
    }
    void STDMETHODCALLTYPE OnMessage(const VOKMessageReport* message) override {
        messages += std::to_string(message->line) + ": " + message->what + "\n";
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
    ASSERT_EQ(library.Diagnose(nullptr, nullptr, &receiver), S_OK);
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
    ASSERT_EQ(library.Diagnose("", nullptr, &again), S_OK);
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
    ASSERT_EQ(library.Diagnose(nullptr, nullptr, &receiver), S_OK);
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
    EXPECT_EQ(library.Diagnose(nullptr, nullptr, &passer), S_OK);
    EXPECT_EQ(passer.text, "book a\nbook b\n");
    const std::u8string file = (contacts.Contacts() / "a.vcf").u8string();
    Receiver one;
    one.fileAnswer = S_FALSE;
    EXPECT_EQ(library.Diagnose("no such profile", std::string(file.begin(), file.end()).c_str(), &one), S_OK);
    EXPECT_EQ(one.text, "book a\nfile 1 1 0 0 0 0 0 0 0 0 windows-1252\n");
    // Failures of the receiver come back to it, and end the reading.
    for (HRESULT Receiver::*const answer : {&Receiver::bookAnswer, &Receiver::fileAnswer, &Receiver::cardAnswer}) {
        Receiver failing;
        failing.*answer = MAPI_E_NOT_FOUND;
        EXPECT_EQ(library.Diagnose(nullptr, nullptr, &failing), MAPI_E_NOT_FOUND);
        EXPECT_EQ(failing.text.find("book b"), std::string::npos);
    }
    EXPECT_EQ(library.Diagnose(nullptr, nullptr, nullptr), MAPI_E_INVALID_PARAMETER);
    Receiver none;
    EXPECT_EQ(library.Diagnose("no such profile", nullptr, &none), MAPI_E_NOT_FOUND);
}

}  // namespace
