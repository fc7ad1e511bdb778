// CSV exports: rows, headings, and the cards that they make.
#include <gtest/gtest.h>

#include "card_text.h"
#include "formats/csv/csv_cards.h"
#include "formats/csv/csv_reader.h"
#include "text/lines.h"

namespace {

// Rows as `line:field|field|`, one behind the other.
std::string Rows(std::string_view text) {
    std::string seen;
    CsvReader reader(text);
    for (CsvRow row; reader.Next(row);) {
        seen += std::to_string(row.line) + ":";
        for (const CsvField& field : row.fields) seen += std::string(field.text) + "|";
        if (row.hasOpenQuote) seen += "?";
        seen += " ";
    }
    return seen;
}

TEST(CsvRows, AreCutAsExportersWriteThem) {
    struct Text {
        const char* text;
        const char* rows;
    };
    const Text texts[] = {
        {"", ""},
        {"a,b\r\n1,2\r\n", "1:a|b| 2:1|2| "},
        {"a;b,c;d\n1;2\n", "1:a|b,c|d| 2:1|2| "},
        {"a\tb\n1,1\t2", "1:a|b| 2:1,1|2| "},
        {"a|b\r1|\r", "1:a|b| 2:1|| "},
        {"sep=;\r\na,b;c\r\n", "2:a,b|c| "},
        {"a,b\n\"x,\"\"y\"\"\r\nz\",2\n3,4", "1:a|b| 2:x,\"y\"\r\nz|2| 4:3|4| "},
        {"a,b\n\n , \n\"\",\n1,2\n", "1:a|b| 5:1|2| "},
        {"a,b\n1\"2\"3, \"4\" \n", "1:a|b| 2:1\"2\"3|4| "},
        {"a,b\n\"open,2\n3,4\n", "1:a|b| 2:\"open|2|? 3:3|4| "},
        {"a,b\n\"shut\"x,2\n", "1:a|b| 2:\"shut\"x|2|? "},
    };
    for (const Text& text : texts) EXPECT_EQ(Rows(text.text), text.rows) << text.text;
    // A quote that closes only far away has lost its own.
    std::string text = "a,b\n\"lost,1\n";
    for (int i = 0; i < 2000; ++i) text += "x,y\n";
    EXPECT_NE(Rows(text + "\"end\",z\n").find("3:x|y| "), std::string::npos);
}

struct CsvCards {
    std::shared_ptr<const CardSet> cards;
    std::string messages;
};

CsvCards ReadCsv(const std::string& text) {
    WrittenMessages messages;
    CardSetBuilder builder({.categories = true}, text.size(), messages);
    ReadCsvCards(text, builder);
    return {builder.Finish(std::nullopt), messages.text};
}

TEST(CsvCardsTest, HeadingsOfManyProgramsAreUnderstood) {
    struct Export {
        const char* text;
        const char* card;
    };
    const Export exports[] = {
        // Mail programs.
        {"Title,First Name,Middle Name,Last Name,Suffix,Company,Department,Business Fax,Business Phone,Home Fax,"
         "Other Fax,Primary Phone,E-mail Address\n"
         "Dr.,Ada,B.,Lee,Jr.,Acme,Sales,+1 555 1,+1 555 2,+1 555 3,+1 555 4,+1 555 5,ada@x.org\n",
         "Dr. Ada B. Lee Jr./Acme/Sales/ada@x.org +1 555 1b2 +1 555 3h2 +1 555 4o2"},
        {"\"Anrede\";\"Vorname\";\"Nachname\";\"Firma\";\"Abteilung\";\"Fax geschäftlich\";\"Fax privat\";\"Weiteres "
         "Fax\";\"Telefon privat\"\n\"Herr\";\"Jo\";\"Gross\";\"AG\";\"Einkauf\";\"1\";\"2\";\"3\";\"4\"\n",
         "Herr Jo Gross/AG/Einkauf/ 1b2 2h2 3o2"},
        {"First Name,Last Name,Display Name,Primary Email,Work Phone,Fax Number,Pager Number\n"
         "Ada,Lee,Ada Lee,ada@x.org,1,2,3\n",
         "Ada Lee///ada@x.org 2p2"},
        // Web address books: a label for each number; several numbers in one field.
        {"Name,Given Name,Family Name,Group Membership,E-mail 1 - Value,Phone 1 - Type,Phone 1 - Value,"
         "Phone 2 - Type,Phone 2 - Value,Organization 1 - Name\n"
         "Ada Lee,Ada,Lee,* My Contacts,ada@x.org,Mobile,1,Work Fax,2 ::: 3,Acme\n",
         "Ada Lee/Acme//ada@x.org 2b2 3b2"},
        {"First Name,Last Name,Labels,Phone 1 - Label,Phone 1 - Value,Phone 2 - Label,Phone 2 - Value\n"
         "Ada,Lee,* myContacts,Home Fax,1,* Fax,\"\n2\"\n",
         "Ada Lee/// 1h2 2p*2"},
        // A plain list.
        {"sep=\t\nNAME\tFAX\nAda Lee\t555-1 x7,,9\n", "Ada Lee/// 555-1 x7,,9p3"},
        {"氏名,会社名,会社ファックス,自宅電話番号\nA,B,1,2\n", "A/B// 1b2"},
    };
    for (const Export& exported : exports) {
        SCOPED_TRACE(exported.text);
        const CsvCards read = ReadCsv(exported.text);
        EXPECT_EQ(read.messages, "");
        ASSERT_EQ(read.cards->Cards().size(), 1U);
        const Card& card = read.cards->Cards()[0];
        EXPECT_EQ(Described(*read.cards, card), exported.card);
    }
}

TEST(CsvCardsTest, WhatCannotBeUnderstoodIsSaidWithItsLine) {
    EXPECT_EQ(ReadCsv("Colour,Size\nred,3\n").messages,
              "1: no heading names a person, an e-mail address or a number\n");
    const CsvCards read = ReadCsv("Name,Fax\nAda,\"1\nBen,2,3\n,\nCleo\n\"Dora \"\"D\"\"\",4\n");
    EXPECT_EQ(read.messages, "2: a quote is opened and not closed\n3: row has more fields than there are headings\n");
    std::string seen;
    for (const Card& card : read.cards->Cards()) seen += Described(*read.cards, card) + "; ";
    EXPECT_EQ(seen, "Ada/// \"1p2; Ben/// 2p3; Cleo///; Dora \"D\"/// 4p6; ");
    // A row without anything to call it by is left out and counted.
    EXPECT_EQ(ReadCsv("Name,Notes\n,just a note\n").cards->NamelessCount(), 1U);
}

TEST(CsvCardsTest, CategoriesAndNotesAreTakenOver) {
    const CsvCards read = ReadCsv("Name,Categories,Notes,Notes\nAda,Club; Friends,\"one\ntwo\",three\n");
    std::string categories;
    for (const Category& category : read.cards->Categories())
        categories += read.cards->Text(category.name) + std::string("|");
    EXPECT_EQ(categories, "Club|Friends|");
    EXPECT_STREQ(read.cards->Text(read.cards->Cards()[0].comment), "one\r\ntwo\r\nthree");
}

}  // namespace
