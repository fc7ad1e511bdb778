// One table in its three forms.
#include "output.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string Printed(const Table& table, Format format) {
    std::ostringstream out;
    Print(table, format, out);
    return out.str();
}

Table AwkwardTable() {
    constexpr auto text = Column::Kind::Text;
    Table table({{"name"},
                 {"home_fax"},
                 {"count", Column::Kind::Number},
                 {"note", text, Column::WhenEmpty::Hide},
                 {"comment", text, Column::WhenEmpty::Hide}});
    table.AddRow({"山田", "+1 212 555 0100", "7", "", "says \"hi\", twice"});
    table.AddRow({"Zoë", "", "12345", "",
                  "two\r\nlines\x1B[31m\xC2\x9B"
                  "1m"});
    table.AddRow({"", "", "", "", ""});
    return table;
}

}  // namespace

TEST(OutputTest, ATableForPeopleKeepsColumnsStraightAndLinesWhole) {
    EXPECT_EQ(Printed(AwkwardTable(), Format::Table),
              "NAME  HOME FAX         COUNT  COMMENT\n"
              "山田  +1 212 555 0100      7  says \"hi\", twice\n"
              "Zoë                    12345  two lines [31m 1m\n"
              "\n");
}

TEST(OutputTest, JsonHasEveryColumnAndTypedNumbers) {
    EXPECT_EQ(Printed(AwkwardTable(), Format::Json),
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
    EXPECT_EQ(Printed(AwkwardTable(), Format::Csv),
              "name,home_fax,count,note,comment\n"
              "山田,+1 212 555 0100,7,,\"says \"\"hi\"\", twice\"\n"
              "Zoë,,12345,,\"two\r\nlines\x1B[31m\xC2\x9B"
              "1m\"\n"
              ",,,,\n");
}

TEST(OutputTest, AnEmptyTableIsStillValidForPrograms) {
    const Table table({{"name"}, {"number"}});
    EXPECT_EQ(Printed(table, Format::Table), "");
    EXPECT_EQ(Printed(table, Format::Json), "[]\n");
    EXPECT_EQ(Printed(table, Format::Csv), "name,number\n");
}

TEST(OutputTest, BlocksArePrintedAloneForPeopleAndWithTheirRowForPrograms) {
    Table table({{"name"}, {"details", Column::Kind::Block}});
    table.AddRow({"Ada", "Ada\nLondon\a"});
    table.AddRow({"Bo", "Bo"});
    EXPECT_EQ(Printed(table, Format::Table), "Ada\nLondon \n\nBo\n");
    EXPECT_EQ(Printed(table, Format::Csv), "name,details\nAda,\"Ada\nLondon\a\"\nBo,Bo\n");
}

TEST(OutputTest, ARowOfAnotherLengthIsRefused) {
    Table table({{"name"}, {"number"}});
    EXPECT_THROW(table.AddRow({"Ada"}), std::invalid_argument);
    EXPECT_EQ(table.RowCount(), 0u);
}
