// One printer for each format. In the table for people a line stays one line: line breaks and other control characters
// inside a cell are shown as blanks.
#include "output.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>

#include "characters.h"

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

// Each run of control characters becomes one blank; the kept character stays.
std::string WithoutControls(std::string_view text, char kept) {
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

std::string OneLine(std::string_view cell) {
    return WithoutControls(cell, keepNone);
}

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

std::vector<ShownColumn> ShownColumns(const Table& table) {
    std::vector<ShownColumn> shown;
    for (size_t column = 0; column < table.Columns().size(); ++column) {
        size_t width = 0;
        for (size_t row = 0; row < table.RowCount(); ++row) {
            width = std::max(width, DisplayWidth(OneLine(table.Cell(row, column))));
        }
        const Column& description = table.Columns()[column];
        if (width == 0 && description.whenEmpty == Column::WhenEmpty::Hide) continue;
        shown.push_back({column, std::max(width, DisplayWidth(description.name))});
    }
    return shown;
}

template <typename CellText>
void PrintLine(const Table& table, const std::vector<ShownColumn>& shown, CellText cellText, std::ostream& out) {
    std::string line;
    for (const ShownColumn& column : shown) {
        const std::string text = cellText(column.index);
        const std::string padding(column.width - DisplayWidth(text), ' ');
        const bool alignRight = table.Columns()[column.index].kind == Column::Kind::Number;
        if (&column != &shown.front()) line += columnGap;
        line += alignRight ? padding + text : text + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
}

void PrintRows(const Table& table, std::ostream& out) {
    if (table.RowCount() == 0) return;
    const std::vector<ShownColumn> shown = ShownColumns(table);
    PrintLine(
        table, shown, [&](size_t column) { return Heading(table.Columns()[column].name); }, out);
    for (size_t row = 0; row < table.RowCount(); ++row) {
        PrintLine(
            table, shown, [&](size_t column) { return OneLine(table.Cell(row, column)); }, out);
    }
}

void PrintBlocks(const Table& table, size_t column, std::ostream& out) {
    for (size_t row = 0; row < table.RowCount(); ++row) {
        if (row > 0) out << '\n';
        out << WithoutControls(table.Cell(row, column), '\n') << '\n';
    }
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
    for (size_t row = 0; row < table.RowCount(); ++row) {
        Json object = Json::object();
        for (size_t column = 0; column < table.Columns().size(); ++column) {
            const auto& [name, kind, whenEmpty] = table.Columns()[column];
            const std::string cell(table.Cell(row, column));
            if (kind != Column::Kind::Number) {
                object[name] = cell;
            } else if (cell.empty()) {
                object[name] = nullptr;
            } else {
                object[name] = std::stoll(cell);
            }
        }
        out << (row > 0 ? ",\n " : "\n ") << object.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    out << (table.RowCount() > 0 ? "\n]\n" : "]\n");
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
    auto printLine = [&](auto cellText) {
        for (size_t column = 0; column < table.Columns().size(); ++column) {
            if (column > 0) out << ',';
            out << CsvField(cellText(column));
        }
        out << '\n';
    };
    printLine([&](size_t column) -> std::string_view { return table.Columns()[column].name; });
    for (size_t row = 0; row < table.RowCount(); ++row) {
        printLine([&](size_t column) { return table.Cell(row, column); });
    }
}

}  // namespace

Table::Table(std::vector<Column> tableColumns) : columns(std::move(tableColumns)) {
    if (columns.empty()) throw std::invalid_argument("a table has at least one column");
}

void Table::AddRow(std::initializer_list<std::string_view> cells) {
    if (cells.size() != columns.size()) throw std::invalid_argument("a row has one cell for each column");
    for (const std::string_view cell : cells) {
        text += cell;
        cellEnds.push_back(text.size());
    }
}

std::string_view Table::Cell(size_t row, size_t column) const {
    const size_t index = row * columns.size() + column;
    const size_t begin = index == 0 ? 0 : cellEnds.at(index - 1);
    return std::string_view(text).substr(begin, cellEnds.at(index) - begin);
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
