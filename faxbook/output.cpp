// One printer for each format. In the table for people a line stays one line: line breaks and other control characters
// inside a cell are shown as blanks.
#include "output.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>

#include "characters.h"
#include "text/ascii.h"

namespace {

constexpr std::string_view columnGap = "  ";

// The length of the control character that the text begins with, 0 when it begins with another character. Terminals
// obey the characters U+0080 to U+009F, too.
size_t ControlLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < ' ' || first == 0x7F) return 1;
    const bool isSecondSet = first == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0;
    return isSecondSet ? 2 : 0;
}

// Printable ASCII characters only.
bool IsPlain(std::string_view text) {
    return !HasAny(text, [](char c) { return (static_cast<signed char>(c) < ' ') | (c == '\x7F'); });
}

// Each run of control characters becomes one blank; the kept character stays.
std::string WithoutControls(std::string_view text, char kept) {
    if (IsPlain(text)) return std::string(text);
    std::string shown;
    while (!text.empty()) {
        const size_t length = text[0] == kept ? 0 : ControlLength(text);
        if (length == 0) {
            shown += text[0];
        } else if (!shown.empty() && shown.back() != ' ') {
            shown += ' ';
        }
        text.remove_prefix(std::max<size_t>(length, 1));
    }
    return shown;
}

constexpr char keepNone = ' ';

std::string Heading(std::string_view name) {
    std::string heading(name);
    for (char& c : heading) {
        c = c == '_' ? ' ' : c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return heading;
}

struct ShownColumn {
    size_t index;
    size_t width;
};

bool IsNothing(std::string_view cell, Column::Kind kind) {
    return cell.empty() || (kind == Column::Kind::Number && cell == "0");
}

std::vector<ShownColumn> ShownColumns(const Table& table) {
    std::vector<size_t> widths(table.Columns().size());
    std::vector<bool> isUsed(table.Columns().size());
    table.ForEachRow([&](const Table::Row& row) {
        for (size_t column = 0; column < row.cells.size(); ++column) {
            const std::string_view cell = row.cells[column];
            const size_t width = row.isPlain ? cell.size() : DisplayWidth(WithoutControls(cell, keepNone));
            widths[column] = std::max(widths[column], width);
            if (!IsNothing(cell, table.Columns()[column].kind)) isUsed[column] = true;
        }
    });
    std::vector<ShownColumn> shown;
    for (size_t column = 0; column < widths.size(); ++column) {
        const Column& description = table.Columns()[column];
        if (!isUsed[column] && description.whenEmpty == Column::WhenEmpty::Hide) continue;
        shown.push_back({column, std::max(widths[column], DisplayWidth(description.name))});
    }
    return shown;
}

// Lines of cells under each other, each cell as wide as its column.
class LinePrinter {
  public:
    LinePrinter(const Table& table, std::ostream& stream)
        : columns(table.Columns()), shown(ShownColumns(table)), out(stream) {}

    void Print(const Table::Row& row) {
        line.clear();
        for (const ShownColumn& column : shown) {
            if (&column != &shown.front()) line += columnGap;
            std::string_view text = row.cells[column.index];
            if (!row.isPlain) text = cleaned = WithoutControls(text, keepNone);
            const size_t padding = column.width - (row.isPlain ? text.size() : DisplayWidth(text));
            const bool alignRight = columns[column.index].kind == Column::Kind::Number;
            if (alignRight) line.append(padding, ' ');
            line += text;
            if (!alignRight) line.append(padding, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        line += '\n';
        out.write(line.data(), static_cast<std::streamsize>(line.size()));
    }

  private:
    const std::vector<Column>& columns;
    std::vector<ShownColumn> shown;
    std::ostream& out;
    std::string line;
    std::string cleaned;
};

void PrintRows(const Table& table, std::ostream& out) {
    if (table.RowCount() == 0) return;
    LinePrinter printer(table, out);
    std::vector<std::string> headings;
    for (const Column& column : table.Columns()) headings.push_back(Heading(column.name));
    printer.Print({{headings.begin(), headings.end()}, true});
    table.ForEachRow([&](const Table::Row& row) { printer.Print(row); });
}

void PrintBlocks(const Table& table, size_t column, std::ostream& out) {
    bool first = true;
    table.ForEachRow([&](const Table::Row& row) {
        if (!first) out << '\n';
        first = false;
        out << WithoutControls(row.cells[column], '\n') << '\n';
    });
}

void PrintTable(const Table& table, std::ostream& out) {
    const auto block = std::ranges::find(table.Columns(), Column::Kind::Block, &Column::kind);
    if (block == table.Columns().end()) {
        PrintRows(table, out);
    } else {
        PrintBlocks(table, static_cast<size_t>(block - table.Columns().begin()), out);
    }
}

// One object to a line.
void PrintJson(const Table& table, std::ostream& out) {
    using Json = nlohmann::ordered_json;
    out << '[';
    bool first = true;
    table.ForEachRow([&](const Table::Row& row) {
        const std::vector<std::string_view>& cells = row.cells;
        Json object = Json::object();
        for (size_t column = 0; column < cells.size(); ++column) {
            const auto& [name, kind, whenEmpty] = table.Columns()[column];
            const std::string cell(cells[column]);
            if (kind != Column::Kind::Number) {
                object[name] = cell;
            } else if (cell.empty()) {
                object[name] = nullptr;
            } else {
                object[name] = std::stoll(cell);
            }
        }
        out << (first ? "\n " : ",\n ") << object.dump(-1, ' ', false, Json::error_handler_t::replace);
        first = false;
    });
    out << (first ? "]\n" : "\n]\n");
}

std::string CsvField(std::string_view cell) {
    if (cell.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(cell);
    std::string field = "\"";
    for (const char c : cell) {
        if (c == '"') field += '"';
        field += c;
    }
    return field + '"';
}

// RFC 4180 with a header line; lines end in LF.
void PrintCsv(const Table& table, std::ostream& out) {
    const auto printLine = [&](const std::vector<std::string_view>& cells) {
        for (size_t column = 0; column < cells.size(); ++column) {
            if (column > 0) out << ',';
            out << CsvField(cells[column]);
        }
        out << '\n';
    };
    std::vector<std::string_view> names;
    for (const Column& column : table.Columns()) names.push_back(column.name);
    printLine(names);
    table.ForEachRow([&](const Table::Row& row) { printLine(row.cells); });
}

}  // namespace

Table::Table(std::vector<Column> tableColumns) : columns(std::move(tableColumns)) {
    if (columns.empty()) throw std::invalid_argument("a table has at least one column");
}

void Table::AddRow(std::initializer_list<std::string_view> cells) {
    if (cells.size() != columns.size()) throw std::invalid_argument("a row has one cell for each column");
    constexpr size_t blockSize = 1 << 20;
    size_t size = 0;
    for (const std::string_view cell : cells) size += cell.size();
    if (blocks.empty() || blocks.back().text.size() + size > blocks.back().text.capacity()) {
        blocks.emplace_back().text.reserve(rowCount == 0 ? blockSize / 64 : std::max(blockSize, size));
    }
    Block& block = blocks.back();
    for (const std::string_view cell : cells) {
        block.text += cell;
        block.lengths.push_back(static_cast<std::uint32_t>(cell.size()));
    }
    block.isPlain.push_back(IsPlain(std::string_view(block.text).substr(block.text.size() - size)));
    ++rowCount;
}

void Print(const Table& table, Format format, std::ostream& out) {
    switch (format) {
        case Format::Table:
            PrintTable(table, out);
            break;
        case Format::Json:
            PrintJson(table, out);
            break;
        case Format::Csv:
            PrintCsv(table, out);
            break;
    }
}
