// What a command prints: rows under columns, in the format that the user chose. All text is UTF-8. No control character
// of a cell (text/control_characters.h) is printed: JSON has its escape, the other formats have a blank; line breaks
// stay within the cells of CSV and the texts of blocks.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/console.h"

enum class Format {
    Aligned,  // for people: columns as wide as their cells; at a terminal in colours, and no wider than it
    Tabs,     // a heading and the rows, cells separated by tabs: what is printed where there is no terminal
    Json,     // an array with one object for each row, one to a line
    Csv,      // RFC 4180 with a header line; lines end in LF; no cell is a formula (csv/formula_guard.h)
};

struct Column {
    enum class Kind {
        Text,       // goes on in the lines below where a terminal is too narrow
        Remark,     // text that is cut there
        Telephone,  // neither broken nor cut
        Number,     // aligned to the right; not quoted in JSON
        Block,      // text of several lines: for people, a table with such a column is printed as these texts only
    };
    // In Format::Aligned, a column that has nothing but empty cells and the number 0 can be left out.
    enum class WhenEmpty { Show, Hide };

    std::string name;  // words in small letters joined by underscores
    Kind kind = Kind::Text;
    WhenEmpty whenEmpty = WhenEmpty::Show;
};

// One format's way of printing.
class TablePrinter {
  public:
    TablePrinter() = default;
    virtual ~TablePrinter() = default;
    TablePrinter(const TablePrinter&) = delete;
    TablePrinter& operator=(const TablePrinter&) = delete;

    // One cell for each column. The cells live for the call.
    virtual void AddRow(std::initializer_list<std::string_view> cells) = 0;
    // Prints what is still to be printed.
    virtual void Finish() = 0;
};

class Table {
  public:
    // The console must outlive the table.
    Table(Console& console, Format format, std::vector<Column> columns);

    // One cell for each column. Printed at once, unless the format must know all rows first.
    void AddRow(std::initializer_list<std::string_view> cells);
    // After the last row. A table that is not finished may have printed a part, or nothing.
    void Finish();

    size_t RowCount() const { return rowCount_; }

  private:
    std::unique_ptr<TablePrinter> printer_;
    size_t columnCount_;
    size_t rowCount_ = 0;
};
