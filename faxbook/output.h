// What a command prints: rows under columns, made once, and printed as a table for people or as JSON or CSV for
// programs. All text is UTF-8.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

enum class Format { Table, Json, Csv };

struct Column {
    enum class Kind {
        Text,
        Number,  // aligned to the right; not quoted in JSON
        Block,   // text of several lines: a table with such a column is printed as these texts only
    };
    enum class WhenEmpty { Show, Hide };  // in a table for people; programs get every column

    std::string name;  // words in small letters joined by underscores
    Kind kind = Kind::Text;
    WhenEmpty whenEmpty = WhenEmpty::Show;
};

class Table {
  public:
    explicit Table(std::vector<Column> tableColumns);

    // One cell for each column.
    void AddRow(std::initializer_list<std::string_view> cells);

    const std::vector<Column>& Columns() const { return columns; }
    size_t RowCount() const { return cellEnds.size() / columns.size(); }
    std::string_view Cell(size_t row, size_t column) const;

  private:
    std::vector<Column> columns;
    // All cells' text, one behind the other: a large book has some hundred thousand rows.
    std::string text;
    std::vector<size_t> cellEnds;
};

void Print(const Table& table, Format format, std::ostream& out);
