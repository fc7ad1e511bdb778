// One table in its forms, for pipes and for terminals.
#include "output/output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>

#include "client/record_text.h"
#include "formats/csv/csv_reader.h"
#include "text/characters.h"
#include "text/utf16.h"

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
              "\"comment\":\"two\\r\\nlines\\u001b[31m\\u009b1m\"},\n"
              " {\"name\":\"\",\"home_fax\":\"\",\"count\":null,\"note\":\"\",\"comment\":\"\"}\n"
              "]\n");
}

TEST(OutputTest, CsvQuotesWhatWouldBeMisread) {
    EXPECT_EQ(PrintedAwkwardTable(Format::Csv),
              "name,home_fax,count,note,comment\n"
              "山田,+1 212 555 0100,7,,\"says \"\"hi\"\", twice\"\n"
              "Zoë,,12345,,\"two\nlines [31m 1m\"\n"
              ",,,,\n");
}

// Control characters of every kind, each between letters and alone at either end, and bytes that are no text.
TEST(OutputTest, NoFormatPrintsAControlCharacterOfACell) {
    std::u32string controls = U"\u2028\u2029\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069";
    for (char32_t control = 0; control < 0xA0; control = control == 0x1F ? 0x7F : control + 1) controls += control;
    const std::vector<std::string> damaged = {"a\x9B[1mb", "a\xED\xA0\x80|", "a\xE2\x80", "\xC2"};
    std::vector<std::string> cells = damaged;
    for (const char32_t control : controls) {
        const std::string text = Utf8FromUtf16(Utf16String(1, static_cast<WCHAR>(control)));
        cells.insert(cells.end(), {"a" + text + "b", text + "a" + text, text});
    }
    for (const auto kind : {Column::Kind::Text, Column::Kind::Telephone, Column::Kind::Remark, Column::Kind::Block}) {
        for (const Format format : {Format::Aligned, Format::Tabs, Format::Json, Format::Csv}) {
            const bool keepsLines = format == Format::Csv || (kind == Column::Kind::Block && format != Format::Json);
            for (const std::string& cell : cells) {
                const auto addRow = [&](Table& table) { table.AddRow({cell}); };
                const std::string printed = Printed(format, {{"name", kind}}, addRow, {40, false});
                std::u32string obeyed = CodePoints(printed);
                std::erase_if(obeyed,
                              [&](char32_t c) { return c == '\n' || controls.find(c) == std::u32string::npos; });
                EXPECT_TRUE(obeyed.empty()) << printed;
                const bool isRepaired = printed.find("\xEF\xBF\xBD") != std::string::npos;
                EXPECT_EQ(isRepaired, std::ranges::find(damaged, cell) != damaged.end()) << printed;
                if (keepsLines) continue;
                EXPECT_EQ(std::ranges::count(printed, '\n'), format == Format::Json ? 3 : 2) << printed;
            }
        }
    }
    // What is no control character stays: marks of direction, joiners, anything that is drawn.
    const std::string others = "\u200Eא\u200F\u200D\u00A0\u2070";
    EXPECT_EQ(Printed(Format::Tabs, {{"a"}}, [&](Table& table) { table.AddRow({others}); }), "a\n" + others + "\n");
}

// What a spreadsheet would run is text in CSV, numbers are as they were, and the reader of CSV gives back every cell.
TEST(OutputTest, CellsOfCsvAreNoFormulasAndAreReadAsTheyWere) {
    constexpr struct {
        const char* cell;
        const char* printed;
    } cases[] = {
        {"=1+1", "'=1+1"},
        {"+cmd|'/C calc'!A0", "'+cmd|'/C calc'!A0"},
        {"-Acme-", "'-Acme-"},
        {"@SUM(1+1)*cmd|' /C calc'!A0", "'@SUM(1+1)*cmd|' /C calc'!A0"},
        {"=HYPERLINK(\"http://x\",\"y\")", "\"'=HYPERLINK(\"\"http://x\"\",\"\"y\"\")\""},
        {"＝1+1", "'＝1+1"},
        {"＋cmd", "'＋cmd"},
        {"－cmd", "'－cmd"},
        {"＠SUM(1)", "'＠SUM(1)"},
        {"\u2212cmd", "'\u2212cmd"},
        {"﹦1", "'﹦1"},
        {"  =1", "'  =1"},
        {"\u00A0\u3000=1", "'\u00A0\u3000=1"},
        {"\uFEFF=1", "'\uFEFF=1"},
        {"'=1", "''=1"},
        {"\"=1", "\"'\"\"=1\""},
        {"''-x", "'''-x"},
        // Where semicolons end cells, commas do not, and no quote is seen but at a cell's beginning.
        {"Ann;=cmd|'/C calc'!A0;Lee", "\"Ann;'=cmd|'/C calc'!A0;Lee\""},
        {"two\n@lines", "\"two\n'@lines\""},
        // These would be run, however much they look like numbers.
        {"+49 30 23125+A1", "'+49 30 23125+A1"},
        {"+x1", "'+x1"},
        {"+1+w(2)", "'+1+w(2)"},
        {"-1|x", "'-1|x"},
        {"+49=1", "'+49=1"},
        // And these are numbers.
        {"+49 30 23125", "+49 30 23125"},
        {"+49 (0)30/231-25.0*#,,1", "\"+49 (0)30/231-25.0*#,,1\""},
        {"+1 212 555 0100 ext. 12", "+1 212 555 0100 ext. 12"},
        {"+1 212 555 0100 x12", "+1 212 555 0100 x12"},
        {"+1 212 555 0100w9", "+1 212 555 0100w9"},
        {"+49301;ext=45", "\"+49301;ext=45\""},
        {"＋８１ ３ １２３４", "＋８１ ３ １２３４"},
        {"+49 30\u2013231\u00A025", "+49 30\u2013231\u00A025"},
        {"-", "-"},
        {"-1", "-1"},
        // Ordinary text.
        {"'t Hooft", "'t Hooft"},
        {"O'Neill; A=B", "\"O'Neill; A=B\""},
        {"a@b.example", "a@b.example"},
        {"\u2013 Acme", "\u2013 Acme"},
        {"x\n-1", "\"x\n-1\""},
    };
    for (const auto& [cell, printed] : cases) {
        const auto addRow = [text = cell](Table& table) { table.AddRow({text, text}); };
        const std::string csv = Printed(Format::Csv, {{"name"}, {"fax"}}, addRow);
        EXPECT_EQ(csv, std::string("name,fax\n") + printed + "," + printed + "\n");
        CsvReader reader(csv);
        CsvRow row;
        ASSERT_TRUE(reader.Next(row) && reader.Next(row)) << cell;
        ASSERT_EQ(row.fields.size(), 2u) << cell;
        for (const CsvField& field : row.fields) EXPECT_EQ(field.text, cell);
    }
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
    EXPECT_EQ(printed(Format::Aligned), "Ada\nLondon\n\nBo\n");
    EXPECT_EQ(printed(Format::Tabs), printed(Format::Aligned));
    EXPECT_EQ(printed(Format::Csv), "name,details\nAda,\"Ada\nLondon\"\nBo,Bo\n");
}

TEST(OutputTest, ARowOfAnotherLengthIsRefused) {
    Printed(Format::Tabs, {{"name"}, {"number"}}, [](Table& table) {
        EXPECT_THROW(table.AddRow({"Ada"}), std::invalid_argument);
        EXPECT_EQ(table.RowCount(), 0u);
    });
}
