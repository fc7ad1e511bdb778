// LDIF: entries as directories and mail programs export them, and as they get damaged.
#include <gtest/gtest.h>

#include <iterator>

#include "card_text.h"
#include "formats/ldif/ldif_cards.h"

namespace {

struct LdifCards {
    std::shared_ptr<const CardSet> cards;
    std::string messages;

    std::string Seen() const {
        std::string seen;
        for (const Card& card : cards->Cards()) seen += Described(*cards, card) + "; ";
        return seen;
    }
};

LdifCards ReadLdif(const std::string& text, std::optional<UINT> charset = std::nullopt) {
    WrittenMessages messages;
    std::istringstream stream(text);
    CardSetBuilder builder({}, text.size(), messages);
    const std::optional<UINT> guessed = ReadLdifCards(stream, charset, builder);
    return {builder.Finish(guessed), messages.text};
}

std::string PersonOf(std::initializer_list<const char*> lines) {
    std::string text = "dn: cn=Ann,o=x\nobjectClass: person\ncn: Ann\n";
    for (const char* line : lines) text += std::string(line) + "\n";
    return text;
}

TEST(LdifCardsTest, EntriesOfManyProgramsAreUnderstood) {
    struct Export {
        const char* text;
        const char* card;
    };
    const Export exports[] = {
        // inetOrgPerson, with what its other names and object identifiers are.
        {"dn: uid=al,ou=People,dc=x\nobjectClass: top\nobjectClass: inetOrgPerson\nuid: al\ncn: A. Lee\ncn: Ann Lee\n"
         "displayName: Lee, Ann\nsn: Lee\no: Acme\nou: Sales\nmail: ann@x.org\ntelephoneNumber: 1\nmobile: 2\n"
         "facsimileTelephoneNumber: +49 30 1$twoDimensional$fineResolution\n",
         "Lee, Ann/Acme/Sales/ann@x.org +49 30 1b14"},
        {"DN:cn=Ann,o=x\nOBJECTCLASS:2.5.6.7\n2.5.4.3:Ann\n2.5.4.23:1\nFAX:2\nFacsimileTelephoneNumber;x-old;lang-de:"
         "3\n",
         "Ann/// 1b4 2b5 3b6"},
        // A mail program: its own names, and names of entries without escapes.
        {"dn: cn=Lee, Ann,mail=ann@x.org\nobjectclass: mozillaAbPersonAlpha\ngivenName: Ann\nsn: Lee\n"
         "mail: ann@x.org\nmozillaNickname: annie\no: Acme\ndepartment: Sales\nfacsimiletelephonenumber: 1\n",
         "Ann Lee/Acme/Sales/ann@x.org 1b9"},
        // Active Directory.
        {"dn: CN=Lee\\, Ann,DC=x\r\nchangetype: add\r\nobjectClass: user\r\ncn: Lee, Ann\r\nname: no\r\n"
         "displayName: Ann Lee\r\ncompany: Acme\r\no: no\r\ndepartment: Sales\r\nproxyAddresses: x400:no\r\n"
         "proxyAddresses: SMTP:ann@x.org\r\nproxyAddresses: FAX:Ann@+1 5\r\nfacsimileTelephoneNumber: 2\r\n"
         "otherFacsimileTelephoneNumber: 3\r\notherFacsimileTelephoneNumber: 4\r\n",
         "Ann Lee/Acme/Sales/ann@x.org +1 5p12 2b13 3o14 4o15"},
        // Schemas of others.
        {"dn: cn=Ann\nobjectClass: dominoPerson\ncn: Ann\nCompanyName: Acme\nOfficeFAXPhoneNumber: 1\n"
         "HomeFAXPhoneNumber: 2\nhomeFacsimileTelephoneNumber: 3\notherFax: 4\nx-acmeHomeFax: 5\nprivat-telefax: 6\n"
         "carfax: 7\n",
         "Ann/Acme// 1b5 2h6 3h7 4o8 5h9 6h10"},
        // What is no person is somebody to write to if it has a fax number.
        {"dn: dc=x\nobjectClass: domain\ndc: x\n\ndn: ou=Sales \\26 More,dc=x\nobjectClass: organizationalUnit\n"
         "ou: More\nou: Sales & More\nfax: 1\n\ndn: cn=PC,dc=x\nobjectClass: user\nobjectClass: computer\ncn: PC\n",
         "Sales & More//More/ 1b9"},
        // Without classes, as programs of people write it.
        {"dn: mail=ann@x.org\nmail: ann@x.org\nfax: 1\n", "ann@x.org///ann@x.org 1b3"},
        // Of several common names that of the entry comes first; those in other languages come last.
        {"dn: cn=Ann Lee,o=x\nobjectClass: person\ncn;lang-de: Anna\ncn: A. Lee\ncn: ann lee\nsn: Lee\n", "ann lee///"},
        {"dn: uid=1\nobjectClass: person\ncn;lang-de: Anna\nsn: Lee\n", "Anna///"},
    };
    for (const Export& exported : exports) {
        SCOPED_TRACE(exported.text);
        const LdifCards read = ReadLdif(exported.text);
        EXPECT_EQ(read.messages, "");
        EXPECT_EQ(read.Seen(), exported.card + std::string("; "));
    }
}

// Comments, and any fold anywhere, line ends of any kind, change nothing.
TEST(LdifCardsTest, FoldsAndLineEndsChangeNothing) {
    const std::string lines[] = {"# a comment", "dn: cn=Ann  Lee,o=x", "objectClass: person",
                                 "cn:: QW5uIExlZQ==", "facsimileTelephoneNumber: +1 555 0100"};
    const std::string name = "Ann Lee/// +1 555 0100b";
    for (const std::string end : {"\n", "\r\n", "\r"}) {
        for (size_t width = 1; width < 40; ++width) {
            std::string text = "\xEF\xBB\xBFversion: 1" + end + end;
            size_t number = 3;
            size_t numberLine = 0;
            for (const std::string& line : lines) {
                numberLine = number++;
                text += line.substr(0, width);
                for (size_t i = width; i < line.size(); i += width, ++number) text += end + " " + line.substr(i, width);
                text += end;
            }
            const LdifCards read = ReadLdif(text);
            EXPECT_EQ(read.messages, "") << width;
            EXPECT_EQ(read.Seen(), name + std::to_string(numberLine) + "; ") << width << text;
        }
    }
}

TEST(LdifCardsTest, WhatCannotBeUnderstoodIsSaidWithItsLine) {
    struct Damage {
        std::string text;
        const char* cards;
        const char* messages;
    };
    const Damage damages[] = {
        {PersonOf({"no colon", "fax : 1", "fax: 2", "", " fax: 3", "fax: 4"}), "Ann/// 2b6; ",
         "4: line is neither an attribute nor a comment\n5: line is neither an attribute nor a comment\n"
         "8: line continues none\n9: lines with a fax number, to which no name (dn) belongs\n"},
        {PersonOf({"fax:< file:///etc/passwd", "fax:: NT*=", "jpegPhoto:< file:///x", "jpegPhoto:: !", "fax:: NTU1"}),
         "Ann/// 555b8; ",
         "4: the value of fax stands in another file\n5: the value of fax is no base64\n"
         "6: the value of jpegPhoto stands in another file\n"},
        {PersonOf({"fax: +1 555$9", "fax: 6$", "fax:", "faxServer: fax.x.org"}), "Ann/// +1 555b4 6b5; ",
         "4: what stands behind \"$\" in +1 555$9 is no parameter of a fax number\n"
         "7: what faxServer says of fax numbers is not known\n"},
        {"version: 2\n\n" + PersonOf({"control: 1.2 true"}) +
             "dn: cn=Ben\ncontrol: 1.2 true\nchangetype: modify\nadd: fax\nfax: 1\n-\n\ndn: cn=Cleo\n"
             "changetype: modrdn\nnewrdn: cn=Dora\n\ndn: cn=Eva\nchangetype: delete\n-\n\n-\n",
         "Ann///; ",
         "1: version 2 of the format is not known\n9: this record changes an entry: modify\n"
         "15: this record changes an entry: modrdn\n19: this record changes an entry: delete\n"
         "22: line is neither an attribute nor a comment\n"},
        {"# extended LDIF\n#\n\n" + PersonOf({}) +
             "\nref: ldap://h/dc=x\n\nsearch: 2\nresult: 4 Size limit exceeded\n\nsearch: 3\nresult: 0 Success\n",
         "Ann///; ",
         "8: further entries are on another server: ldap://h/dc=x\n"
         "11: the search that made the file ended with \"4 Size limit exceeded\"\n"},
        {"dn: Ann\nobjectClass: person\ncn: Ann\n\ndn: cn=k\nobjectClass: top\nobjectClass: krbContainer\n\ndn: \nx: "
         "y\n",
         "Ann///; ",
         "1: \"Ann\" is no distinguished name\n5: entry of the class krbContainer is neither a person nor a group\n"
         "9: entry says of nobody who it is\n"},
        {"cn: Ann\n\n" + PersonOf({}), "Ann///; ", "1: lines to which no name (dn) belongs\n"},
        {CardOf({"FN:Ann", "TEL;TYPE=FAX:1"}), "", "1: lines to which no name (dn) belongs\n"},
    };
    for (const Damage& damage : damages) {
        SCOPED_TRACE(damage.text);
        const LdifCards read = ReadLdif(damage.text);
        EXPECT_EQ(read.Seen(), damage.cards);
        EXPECT_EQ(read.messages, damage.messages);
    }
}

TEST(LdifCardsTest, TextInOtherCharacterSetsIsGuessedOrSet) {
    const std::string text = "dn: cn=J\xFCrgen Gro\xDF\nobjectClass: person\ncn: J\xFCrgen Gro\xDF\ncn: J\xFCrgen\n";
    const LdifCards guessed = ReadLdif(text);
    EXPECT_EQ(guessed.cards->GuessedCharset(), 1252U);
    EXPECT_EQ(guessed.messages, "1: text is not UTF-8, as it should be\n");
    const LdifCards read = ReadLdif(text, 1252);
    EXPECT_EQ(read.messages, "");
    EXPECT_EQ(read.Seen(), ReadLdif("dn: cn=Jürgen Groß\nobjectClass: person\ncn: Jürgen Groß\n").Seen());
    EXPECT_EQ(read.Seen(), guessed.Seen());
    // One bad byte costs one letter.
    EXPECT_EQ(ReadLdif("dn: cn=a\ncn: \xFF\nsn: x\n", CP_UTF8).messages, "2: text is neither UTF-8 nor UTF-8\n");
}

std::string Members(const LdifCards& read) {
    std::string seen;
    for (const Card& card : read.cards->Cards()) {
        if (!card.isGroup) continue;
        seen += std::string(read.cards->Text(card.name)) + ":";
        for (const Member& member : read.cards->Members(card)) {
            const auto found = read.cards->Find(read.cards->Text(member.address));
            seen += found.empty() ? std::string(" -") + read.cards->Text(member.address)
                                  : std::string(" ") + read.cards->Text(read.cards->Cards()[found[0].card].name);
        }
        seen += "; ";
    }
    return seen;
}

TEST(LdifCardsTest, MembersAreFoundByTheirNames) {
    const std::string people =
        "dn: cn=Lee\\, Ann,o=x\nobjectClass: person\ncn: Ann\n\n"
        "dn:: Y249SsO8cmdlbixvPXg=\nobjectClass: person\ncn: J\n\n"
        "dn: cn=Ben,mail=b@x.org\nobjectClass: person\ncn: Ben\n\n";
    struct Group {
        const char* text;
        const char* members;
        const char* messages;
    };
    const Group groups[] = {
        {"dn: cn=G,o=x\nobjectClass: groupOfNames\ncn: G\nmember: CN=\"Lee, Ann\" , O=X\nmember: cn=JÜRGEN,o=x\n"
         "member: cn=Ben,mail=b@x.org\nmember: cn=G,o=x\nmember:\nmember: cn=gone,o=x\n",
         "G: Ann J Ben G -cn=gone,o=x; ", ""},
        {"dn: cn=G,o=x\nobjectClass: groupOfUniqueNames\ncn: G\nuniqueMember: cn=lee\\2C ann,o=x#'0101'B\n"
         "uniqueMember: cn=J\\C3\\BCrgen,o=x#''B\nuniqueMember: cn=x#'2'B\n",
         "G: Ann J -cn=x\\23'2'b; ", ""},
        {"dn: CN=G,DC=x\nobjectClass: group\ndisplayName: G\nmember;range=0-1: cn=Ben,mail=b@x.org\n"
         "member;range=2-*: cn=j\\c3\\bcrgen,o=x\n",
         "G: Ben J; ", ""},
        {"dn: CN=G,DC=x\nobjectClass: group\nsAMAccountName: G\nmember:\nmember;range=0-1: cn=Ben,mail=b@x.org\n",
         "G: Ben; ", "13: the members of the group \"G\" are not all in the file: they end with range=0-1\n"},
        {"dn: cn=G\nobjectClass: nisMailAlias\nrfc822MailMember: B@x.org\nmemberUid: ben\nmemberURL: "
         "ldap:///o=x??sub\n",
         "G: -mailto:b@x.org -uid=ben; ", "17: members of the group \"G\" are whoever a search finds\n"},
        {"dn: cn=G\nmember: cn=Ben,mail=b@x.org\nmember: Ben\n", "G: Ben -ben; ", ""},
    };
    for (const Group& group : groups) {
        SCOPED_TRACE(group.text);
        const LdifCards read = ReadLdif(people + group.text);
        EXPECT_EQ(Members(read), group.members);
        EXPECT_EQ(read.messages, group.messages);
    }
}

}  // namespace
