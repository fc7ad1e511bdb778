// The truth table of fax numbers: how a telephone property is spelled, and what it is.
#include <gtest/gtest.h>

#include "card_text.h"

namespace {

struct Spelling {
    const char* version;
    const char* lines;
    FaxKind kind;
    const char* number;
};

constexpr FaxKind business = FaxKind::Business;
constexpr FaxKind home = FaxKind::Home;
constexpr FaxKind other = FaxKind::Other;
constexpr FaxKind primary = FaxKind::Primary;
constexpr FaxKind none = FaxKind::None;

constexpr Spelling spellings[] = {
    {"2.1", "TEL;FAX:1", primary, "1"},
    {"2.1", "TEL;WORK;FAX:1", business, "1"},
    {"2.1", "TEL;FAX;HOME:1", home, "1"},
    {"2.1", "tel;work;fax;pref:1", business, "1"},
    {"2.1", "TEL;WORK;VOICE:1", none, ""},
    {"2.1", "TEL;MODEM:1", none, ""},
    {"2.1", "TEL:1", none, ""},
    {"2.1", "HOME.TEL;FAX:1", home, "1"},
    {"3.0", "HOME.TEL;TYPE=FAX,VOICE,MSG:1", home, "1"},
    {"3.0", "HOME.TEL;TYPE=WORK,FAX:1", business, "1"},
    {"3.0", "TEL;TYPE=WORK,FAX:1", business, "1"},
    {"3.0", "TEL;TYPE=FAX,WORK:1", business, "1"},
    {"3.0", "TEL;TYPE=WORK;TYPE=FAX:1", business, "1"},
    {"3.0", "TEL;type=FAX;type=Home;type=pref:1", home, "1"},
    {"3.0", "TEL;TYPE=\"WORK,FAX\":1", business, "1"},
    {"3.0", "TEL;TYPE=\"WORK,FAX:1", business, "1"},
    {"3.0", "TEL;X-ID=\"a;FAX:b\";TYPE=HOME:1", none, ""},
    {"3.0", "TEL;X-SERVICE=FAX:1", none, ""},
    {"3.0", "TEL;TYPE=WORKFAX:1", business, "1"},
    {"3.0", "TEL;TYPE=homefax:1", home, "1"},
    {"3.0", "TEL;TYPE=X-WORK-FAX:1", business, "1"},
    {"3.0", "TEL;TYPE=OTHER;TYPE=FAX:1", other, "1"},
    {"3.0", "TEL;TYPE=FAX,PREF:1", primary, "1"},
    {"3.0", "TEL;TYPE=FAX,x-aunt:+1-800-MYFAX", primary, "+1-800-MYFAX"},
    {"3.0", "TEL;TYPE=TELEFAXMACHINEATTHEOFFICE:1", none, ""},
    {"3.0", "X-FAX:1", primary, "1"},
    {"3.0", "X-HOME-FAX:1", home, "1"},
    {"3.0", "FAX;TYPE=WORK:1", business, "1"},
    {"3.0", "X-FAX-NOTE:1", none, ""},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:_$!<HomeFAX>!$_", home, "1"},
    {"3.0", "item1.X-ABLabel:_$!<WorkFAX>!$_\r\nITEM1.TEL:1", business, "1"},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:_$!<OtherFAX>!$_", other, "1"},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:Telefax Lager", primary, "1"},
    {"3.0", "item1.TEL:1\r\nitem2.X-ABLabel:Fax", none, ""},
    {"3.0", "TEL:1\r\nX-ABLabel:Fax", none, ""},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:Halifax office", none, ""},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:Fairfax fax", primary, "1"},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:Brother fax", primary, "1"},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:Fax (home)", home, "1"},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:Fax geschäftlich", business, "1"},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:Télécopie (domicile)", home, "1"},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:会社ファックス", business, "1"},
    {"3.0", "item1.TEL;TYPE=WORK:1\r\nitem1.X-ABLabel:Рабочий факс", business, "1"},
    {"3.0", "item1.TEL:1\r\nitem1.X-ABLabel:Otro fax", other, "1"},
    {"3.0", "TEL;TYPE=WORK\r\n ;TYPE=FA\r\n X:+1\r\n  555", business, "+1 555"},
    {"3.0", "TEL;TYPE=FAX:", none, ""},
    {"3.0", "TEL;TYPE=FAX:0\\,1\\;2", primary, "0,1;2"},
    {"3.0", "TEL;TYPE=FAX:+1 555 0100 x12,,34", primary, "+1 555 0100 x12,,34"},
    {"3.0", "TEL;TYPE=FAX:+1 555 0100$fineResolution$a3Width", primary, "+1 555 0100"},
    {"3.0", "TEL;TYPE=FAX:9$5550100", primary, "9$5550100"},
    {"4.0", "TEL;VALUE=uri;TYPE=\"work,fax\";PREF=1:tel:+1-555-0100;ext=5", business, "+1-555-0100;ext=5"},
    {"4.0", "TEL;VALUE=uri;TYPE=fax:TEL:7042;phone-context=example.com", primary, "7042"},
    {"4.0", "TEL;TYPE=home;VALUE=uri:tel:+1-555-0100", none, ""},
};

TEST(FaxRules, TruthTable) {
    for (const Spelling& spelling : spellings) {
        SCOPED_TRACE(spelling.lines);
        const auto set = ReadSet(CardOf({"FN:A", spelling.lines}, spelling.version));
        ASSERT_EQ(set->Cards().size(), 1U);
        const std::span<const FaxNumber> numbers = set->FaxNumbers(set->Cards()[0]);
        ASSERT_EQ(numbers.size(), spelling.kind == none ? 0U : 1U);
        if (spelling.kind == none) continue;
        EXPECT_EQ(numbers[0].kind, spelling.kind);
        EXPECT_STREQ(set->Text(numbers[0].number), spelling.number);
    }
}

TEST(FaxRules, PreferencesAndRepetitionsAreSeen) {
    const auto set = ReadSet(CardOf({"FN:A", "TEL;TYPE=FAX:1", "TEL;TYPE=FAX;PREF=7:2", "TEL;TYPE=FAX,PREF:3",
                                     "TEL;TYPE=FAX:1", "TEL;TYPE=FAX,WORK:1"}));
    std::string seen;
    for (const FaxNumber& number : set->FaxNumbers(set->Cards()[0]))
        seen += set->Text(number.number) + std::string("/") + std::to_string(number.preference) + " ";
    EXPECT_EQ(seen, "1/101 2/7 3/1 1/101 ");
}

}  // namespace
