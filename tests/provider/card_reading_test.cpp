// Cards as exporters write them and as they get damaged.
#include <gtest/gtest.h>

#include "card_text.h"
#include "text/ascii.h"
#include "text/code_pages.h"

namespace {

std::string NamesIn(const std::string& text) {
    const auto set = ReadSet(text);
    std::string names;
    for (const Card& card : set->Cards()) names += set->Text(card.name) + std::string("|");
    return names;
}

struct Case {
    const char* what;
    std::string text;
    const char* names;
};

TEST(CardReading, StructureNeverCostsAnotherCard) {
    const std::string ann = CardOf({"FN:Ann"});
    const std::string ben = CardOf({"FN:Ben"});
    const Case cases[] = {
        {"nothing", "", ""},
        {"text around cards", "hello\r\n" + ann + "FN:Nobody\r\n\r\n" + ben + "bye", "Ann|Ben|"},
        {"no END", "BEGIN:VCARD\nFN:Ann\n" + ben, "Ann|Ben|"},
        {"no END in any", "BEGIN:VCARD\nFN:Ann\nBEGIN:VCARD\nFN:Ben\nBEGIN:VCARD\nFN:Eva", "Ann|Ben|Eva|"},
        {"END alone", "END:VCARD\n" + ann + "END:VCARD\n" + ben, "Ann|Ben|"},
        {"a card in a card", "BEGIN:VCARD\nAGENT:\n" + ben + "FN:Ann\nEND:VCARD\n", "Ann|Ben|"},
        {"carriage returns only", "BEGIN:VCARD\rFN:Ann\rEND:VCARD\rBEGIN:VCARD\rFN:B\r en\rEND:VCARD\r", "Ann|Ben|"},
        {"line feeds and both", "BEGIN:VCARD\nFN:An\n n\r\nEND:VCARD\r\n\n" + ben, "Ann|Ben|"},
        {"lower case, blanks", "begin:vcard \nfn:Ann\nend:vcard\n" + ben, "Ann|Ben|"},
        {"another component", "BEGIN:VCALENDAR\nBEGIN:VEVENT\nFN:No\nEND:VEVENT\nEND:VCALENDAR\n" + ben, "Ben|"},
        {"cut off", ann + "BEGIN:VCARD\r\nFN:Be", "Ann|Be|"},
        {"photo with unfolded lines",
         CardOf({"PHOTO;ENCODING=BASE64;TYPE=JPEG:AAAA", "BBBBBB", " CCCC", "", "FN:Ann"}, "2.1") + ben, "Ann|Ben|"},
        {"quoted-printable swallows no END",
         CardOf({"FN:Ann", "NOTE;ENCODING=QUOTED-PRINTABLE:cut=20off="}, "2.1") + ben, "Ann|Ben|"},
        {"card without a name", CardOf({"TITLE:x"}) + ben, "Ben|"},
    };
    for (const Case& c : cases) EXPECT_EQ(NamesIn(c.text), c.names) << c.what;
    std::string unended;
    for (int i = 0; i < 100; ++i) unended += "BEGIN:VCARD\nFN:X\n";
    EXPECT_EQ(NamesIn(unended).size(), 200U);
}

// Larger than any buffer: cards of every length, so that each byte of a card's beginning lies on some boundary, and one
// card larger than the rest together.
TEST(CardReading, LargeTexts) {
    for (const std::string lineEnd : {"\r\n", "\n", "\r"}) {
        std::string text;
        size_t lines = 0;
        const auto add = [&](const std::string& line) {
            text += line + lineEnd;
            ++lines;
        };
        constexpr size_t count = 3000;
        for (size_t i = 0; i < count; ++i) {
            add("BEGIN:VCARD");
            add("FN:" + std::to_string(i));
            if (i == count / 2)
                for (int row = 0; row < 20000; ++row) add(row == 0 ? "PHOTO;ENCODING=b:" : " " + std::string(70, 'A'));
            add("NOTE:" + std::string(i % 601, 'n'));
            if (i + 1 < count) add("END:VCARD");
        }
        const auto set = ReadSet(text);
        ASSERT_EQ(set->Cards().size(), count);
        for (size_t i = 0; i < count; ++i) {
            const Card& card = set->Cards()[i];
            ASSERT_EQ(set->Text(card.name), std::to_string(i));
            ASSERT_EQ(std::string_view(set->Text(card.comment)).size(), i % 601);
        }
        EXPECT_EQ(set->Cards().back().line, lines - 2);
    }
}

TEST(CardReading, NamesAndTheirSubstitutes) {
    const Case cases[] = {
        {"FN", CardOf({"N:Doe;Jo", "FN:Jo  \\n Doe"}), "Jo Doe|"},
        {"spoken order", CardOf({"N:Doe;Jo,Ann;M;Dr.;Jr.", "FN:"}), "Dr. Jo Ann M Doe Jr.|"},
        {"organisation", CardOf({"N:;;;;", "ORG:ACME;Sales"}), "ACME|"},
        {"nickname", CardOf({"NICKNAME:Bo"}), "Bo|"},
        {"e-mail", CardOf({"EMAIL:mailto:a@b.example"}), "a@b.example|"},
        {"number", CardOf({"TEL:555"}), "555|"},
        {"escapes of 3.0", CardOf({R"(FN:a\, b\; c\\d\:e)"}), R"(a, b; c\d:e|)"},
        {"escapes of 2.1", CardOf({R"(FN:a\;b c:\new)"}, "2.1"), R"(a;b c:\new|)"},
        {"fold of 2.1 keeps its blank", CardOf({"FN:Ann\r\n Lee"}, "2.1"), "Ann Lee|"},
        {"fold of 3.0 loses its blank", CardOf({"FN:An\r\n\tn"}), "Ann|"},
    };
    for (const Case& c : cases) EXPECT_EQ(NamesIn(c.text), c.names) << c.what;
}

TEST(CardReading, Encodings) {
    const std::string jose = "Jos\xC3\xA9";
    std::string utf16 = "\xFF\xFE";
    for (const char c : CardOf({"FN:Jos\xE9"})) utf16 += {c, '\0'};
    const Case cases[] = {
        {"UTF-8", CardOf({"FN:" + jose}), ""},
        {"mark", "\xEF\xBB\xBF" + CardOf({"FN:" + jose}), ""},
        {"folded in a character", CardOf({"FN:Jos\xC3\r\n \xA9"}), ""},
        {"no label", CardOf({"FN:Jos\xE9"}), ""},
        {"label", CardOf({"FN;CHARSET=iso-8859-1:Jos\xE9"}, "2.1"), ""},
        {"quoted-printable", CardOf({"FN;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:Jos=C3=A9"}, "2.1"), ""},
        {"soft break, bare encoding", CardOf({"FN;QUOTED-PRINTABLE;CHARSET=Windows-1252:J=", "os=", "=E9"}, "2.1"), ""},
        {"lower-case digits, no label", CardOf({"FN;ENCODING=quoted-printable:Jos=c3=a9"}, "2.1"), ""},
        {"base64", CardOf({"FN;ENCODING=b:Sm9zw6k="}), ""},
        {"UTF-16", utf16, ""},
        {"UTF-16 without a mark", utf16.substr(2), ""},
    };
    for (const Case& c : cases) EXPECT_EQ(NamesIn(c.text), InActiveCodePage(jose) + "|") << c.what;
    // What disagrees with its label costs its own characters only.
    EXPECT_EQ(NamesIn(CardOf({"FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:Jo=C3, Ann"}, "2.1")),
              InActiveCodePage("Jo\xEF\xBF\xBD, Ann") + "|");
}

TEST(CardReading, OrganisationAndNotes) {
    const auto set = ReadSet(CardOf({"FN:A", R"(ORG:A\;B, Inc.;Sales;;East)", R"(NOTE:one\ntwo)", "NOTE:three"}));
    const Card& card = set->Cards()[0];
    EXPECT_STREQ(set->Text(card.company), "A;B, Inc.");
    EXPECT_STREQ(set->Text(card.department), "Sales, East");
    EXPECT_STREQ(set->Text(card.comment), "one\r\ntwo\r\nthree");
}

// A NUL would end a text for every caller.
TEST(CardReading, ControlCharactersAreNoText) {
    using namespace std::string_literals;
    EXPECT_EQ(NamesIn(CardOf({"EMAIL:\0a@b"s, "EMAIL:\x1B"})), "a@b|");
    EXPECT_EQ(NamesIn(CardOf({"FN:\0"s, "EMAIL:\0"s, "NICKNAME:Ann\0Lee"s})), "Ann Lee|");
    const auto set = ReadSet(CardOf({"FN:A", "CATEGORIES:\0, ,x\0y"s, "UID:\0u"s}), {.categories = true});
    ASSERT_EQ(set->Categories().size(), 1U);
    EXPECT_STREQ(set->Text(set->Categories()[0].name), "x y");
    EXPECT_FALSE(set->Find("u").empty());
}

TEST(CardReading, AddressesAreFoundInEverySpelling) {
    const auto set = ReadSet(CardOf({"FN:A", "UID:urn:uuid:ABC-1", "EMAIL:Ann@Example.com", "TEL:+1 (555) 01"}) +
                                 CardOf({"FN:B", "UID:abc-2"}),
                             {.addresses = true});
    EXPECT_EQ(set->Find(NormalisedAddress("urn:uuid:abc-1")).front().card, 0U);
    EXPECT_EQ(set->Find(NormalisedAddress("ABC-2")).front().card, 1U);
    EXPECT_EQ(set->Find(NormalisedAddress("MAILTO:ann@example.com?subject=x")).front().card, 0U);
    EXPECT_EQ(set->Find(NormalisedAddress("tel:+1-555-01;ext=2")).front().card, 0U);
    EXPECT_TRUE(set->Find(NormalisedAddress("urn:uuid:abc-3")).empty());
    // What a code page lacks would make one of two.
    for (const char* const address : {"花子", "太郎", "mailto:jürgen@x.org"})
        EXPECT_TRUE(IsAscii(NormalisedAddress(address))) << address;
    EXPECT_NE(NormalisedAddress("花子"), NormalisedAddress("太郎"));
}

}  // namespace
