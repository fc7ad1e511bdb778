// What a command prints: rows under columns, made once, and printed as a table for people or as JSON or CSV for
// programs. All text is UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

enum class Format { Table, Json, Csv };

struct Column {
    enum class Kind {
        Text,
        Number,  // aligned to the right; not quoted in JSON
        Block,   // text of several lines: a table with such a column is printed as these texts only
    };
    // Of a column that has nothing but empty cells and the number 0, in a table for people. Programs get every column.
    enum class WhenEmpty { Show, Hide };

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
    size_t RowCount() const { return rowCount; }

    // The cells of one row. The row is plain when no cell holds anything but printable ASCII characters.
    struct Row {
        std::vector<std::string_view> cells;
        bool isPlain = false;
    };
    // Calls the function with each row, in order. The row lives for the call.
    template <typename Function>
    void ForEachRow(Function&& function) const {
        Row row = {std::vector<std::string_view>(columns.size())};
        for (const Block& block : blocks) {
            std::string_view rest = block.text;
            for (size_t i = 0; i < block.isPlain.size(); ++i) {
                for (size_t column = 0; column < columns.size(); ++column) {
                    row.cells[column] = rest.substr(0, block.lengths[i * columns.size() + column]);
                    rest.remove_prefix(row.cells[column].size());
                }
                row.isPlain = block.isPlain[i];
                function(std::as_const(row));
            }
        }
    }

  private:
    // Some rows' cells, one behind the other: a large book has some hundred thousand rows, and a block that is full is
    // never copied again.
    struct Block {
        std::string text;
        std::vector<std::uint32_t> lengths;
        std::vector<bool> isPlain;  // one for each row
    };

    std::vector<Column> columns;
    std::vector<Block> blocks;
    size_t rowCount = 0;
};

void Print(const Table& table, Format format, std::ostream& out);
