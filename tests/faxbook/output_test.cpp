// One table in its forms, for pipes and for terminals.
#include "output.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

namespace {

std::string Printed(Format format, const std::vector<Column>& columns, const std::function<void(Table&)>& addRows,
                    const Terminal& terminal = {}) {
    std::ostringstream out;
    std::ostringstream notes;
    Console console(out, notes, terminal);
    Table table(console, format, columns);
    addRows(table);
    table.Finish();
    EXPECT_EQ(notes.str(), "");
    return out.str();
}

std::string PrintedAwkwardTable(Format format, const Terminal& terminal = {}) {
    const std::vector<Column> columns = {{"name"},
                                         {"home_fax", Column::Kind::Telephone},
                                         {"count", Column::Kind::Number},
                                         {"note", Column::Kind::Text, Column::WhenEmpty::Hide},
                                         {"comment", Column::Kind::Text, Column::WhenEmpty::Hide}};
    const auto addRows = [](Table& table) {
        table.AddRow({"山田", "+1 212 555 0100", "7", "", "says \"hi\", twice"});
        table.AddRow({"Zoë", "", "12345", "",
                      "two\r\nlines\x1B[31m\xC2\x9B"
                      "1m"});
        table.AddRow({"", "", "", "", ""});
    };
    return Printed(format, columns, addRows, terminal);
}

}  // namespace

TEST(OutputTest, AlignedColumnsAreStraightAndLinesWhole) {
    EXPECT_EQ(PrintedAwkwardTable(Format::Aligned),
              "NAME  HOME FAX         COUNT  COMMENT\n"
              "山田  +1 212 555 0100      7  says \"hi\", twice\n"
              "Zoë                    12345  two lines [31m 1m\n"
              "\n");
}

TEST(OutputTest, AtANarrowTerminalTextGoesOnBelowAndRemarksAreCutButNumbersAreWhole) {
    EXPECT_EQ(PrintedAwkwardTable(Format::Aligned, {44, false}),
              "NAME  HOME FAX         COUNT  COMMENT\n"
              "山田  +1 212 555 0100      7  says \"hi\",\n"
              "                              twice\n"
              "Zoë                    12345  two lines [31m\n"
              "                              1m\n"
              "\n");
    const auto addRows = [](Table& table) {
        table.AddRow({"東京都千代田区丸の内一丁目", "+49 30 23125 0123456789", "Donaudampfschifffahrtsgesellschaft"});
    };
    EXPECT_EQ(Printed(Format::Aligned, {{"name"}, {"fax", Column::Kind::Telephone}, {"company"}}, addRows, {20, false}),
              "NAME          FAX                      COMPANY\n"
              "東京都千代田  +49 30 23125 0123456789  Donaudampfsc\n"
              "区丸の内一丁                           hifffahrtsge\n"
              "目                                     sellschaft\n");
    const auto addRemark = [](Table& table) { table.AddRow({"Zoë Müller-Ångström", "+49 30", "Two fax numbers."}); };
    EXPECT_EQ(Printed(Format::Aligned, {{"name"}, {"fax", Column::Kind::Telephone}, {"note", Column::Kind::Remark}},
                      addRemark, {37, false}),
              "NAME             FAX     NOTE\n"
              "Zoë              +49 30  Two fax…\n"
              "Müller-Ångström\n");
}

TEST(OutputTest, ColoursAreForTerminalsThatKnowThem) {
    const std::string printed = PrintedAwkwardTable(Format::Aligned, {100, true});
    EXPECT_EQ(printed.substr(0, printed.find('\n')),
              "\x1B[1mNAME\x1B[0m  \x1B[1mHOME FAX\x1B[0m         \x1B[1mCOUNT\x1B[0m  \x1B[1mCOMMENT\x1B[0m");
    EXPECT_NE(printed.find("\n山田  \x1B[36m+1 212 555 0100\x1B[0m      7  says"), std::string::npos) << printed;
    // Nothing of a cell is obeyed.
    EXPECT_EQ(printed.find("\x1B[31m"), std::string::npos);
    EXPECT_EQ(PrintedAwkwardTable(Format::Csv, {100, true}), PrintedAwkwardTable(Format::Csv));
}

TEST(OutputTest, APipeGetsEveryColumnBetweenTabs) {
    EXPECT_EQ(PrintedAwkwardTable(Format::Tabs),
              "name\thome_fax\tcount\tnote\tcomment\n"
              "山田\t+1 212 555 0100\t7\t\tsays \"hi\", twice\n"
              "Zoë\t\t12345\t\ttwo lines [31m 1m\n"
              "\t\t\t\t\n");
}

TEST(OutputTest, JsonHasEveryColumnAndTypedNumbers) {
    EXPECT_EQ(PrintedAwkwardTable(Format::Json),
              "[\n"
              " {\"name\":\"山田\",\"home_fax\":\"+1 212 555 0100\",\"count\":7,\"note\":\"\","
              "\"comment\":\"says \\\"hi\\\", twice\"},\n"
              " {\"name\":\"Zoë\",\"home_fax\":\"\",\"count\":12345,\"note\":\"\","
              "\"comment\":\"two\\r\\nlines\\u001b[31m\xC2\x9B"
              "1m\"},\n"
              " {\"name\":\"\",\"home_fax\":\"\",\"count\":null,\"note\":\"\",\"comment\":\"\"}\n"
              "]\n");
}

TEST(OutputTest, CsvQuotesWhatWouldBeMisread) {
    EXPECT_EQ(PrintedAwkwardTable(Format::Csv),
              "name,home_fax,count,note,comment\n"
              "山田,+1 212 555 0100,7,,\"says \"\"hi\"\", twice\"\n"
              "Zoë,,12345,,\"two\r\nlines\x1B[31m\xC2\x9B"
              "1m\"\n"
              ",,,,\n");
}

TEST(OutputTest, AnEmptyTableIsStillValidForPrograms) {
    const auto printed = [](Format format) { return Printed(format, {{"name"}, {"number"}}, [](Table&) {}); };
    EXPECT_EQ(printed(Format::Aligned), "");
    EXPECT_EQ(printed(Format::Tabs), "name\tnumber\n");
    EXPECT_EQ(printed(Format::Json), "[]\n");
    EXPECT_EQ(printed(Format::Csv), "name,number\n");
}

TEST(OutputTest, BlocksArePrintedAloneForPeopleAndWithTheirRowForPrograms) {
    const auto printed = [](Format format) {
        return Printed(format, {{"name"}, {"details", Column::Kind::Block}}, [](Table& table) {
            table.AddRow({"Ada", "Ada\nLondon\a"});
            table.AddRow({"Bo", "Bo"});
        });
    };
    EXPECT_EQ(printed(Format::Aligned), "Ada\nLondon \n\nBo\n");
    EXPECT_EQ(printed(Format::Tabs), printed(Format::Aligned));
    EXPECT_EQ(printed(Format::Csv), "name,details\nAda,\"Ada\nLondon\a\"\nBo,Bo\n");
}

TEST(OutputTest, ARowOfAnotherLengthIsRefused) {
    Printed(Format::Tabs, {{"name"}, {"number"}}, [](Table& table) {
        EXPECT_THROW(table.AddRow({"Ada"}), std::invalid_argument);
        EXPECT_EQ(table.RowCount(), 0u);
    });
}
