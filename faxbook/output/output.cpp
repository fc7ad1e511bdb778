// The printers that print each row as it comes.
#include "output/output.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "csv/formula_guard.h"
#include "output/aligned_printer.h"
#include "text/characters.h"
#include "text/control_characters.h"

namespace {

// The texts of one column, an empty line between two.
class BlockPrinter final : public TablePrinter {
  public:
    BlockPrinter(Console& printConsole, size_t blockColumn) : console_(printConsole), column_(blockColumn) {}

    void AddRow(std::initializer_list<std::string_view> cells) override {
        if (hasRows_) console_.Out() << '\n';
        console_.Out() << WithoutControls(cells.begin()[column_], '\n') << '\n';
        hasRows_ = true;
    }
    void Finish() override {}

  private:
    Console& console_;
    size_t column_;
    bool hasRows_ = false;
};

// A line of the columns' names, and a line for each row, with a separator between cells.
class SeparatedPrinter final : public TablePrinter {
  public:
    using AppendCell = void (*)(std::string& line, std::string_view cell);

    SeparatedPrinter(Console& printConsole, const std::vector<Column>& columns, char cellSeparator, AppendCell append)
        : console_(printConsole), separator_(cellSeparator), appendCell_(append) {
        for (const Column& column : columns) names_ += (names_.empty() ? "" : std::string(1, separator_)) + column.name;
        names_ += '\n';
    }

    void AddRow(std::initializer_list<std::string_view> cells) override {
        PrintNames();
        line_.clear();
        for (const std::string_view& cell : cells) {
            if (&cell != cells.begin()) line_ += separator_;
            appendCell_(line_, cell);
        }
        line_ += '\n';
        Print(line_);
    }
    void Finish() override { PrintNames(); }

  private:
    void PrintNames() { Print(std::exchange(names_, {})); }
    void Print(std::string_view text) { console_.Out().write(text.data(), static_cast<std::streamsize>(text.size())); }

    Console& console_;
    char separator_;
    AppendCell appendCell_;
    std::string names_;  // until they are printed
    std::string line_;
};

void AppendPlainCell(std::string& line, std::string_view cell) {
    if (IsPlain(cell)) {
        line += cell;
    } else {
        line += WithoutControls(cell);
    }
}

// Line breaks stay; the formulas that a spreadsheet would run become text.
void AppendCsvCell(std::string& line, std::string_view cell) {
    const std::string text = WithFormulaGuards(WithoutControls(cell, '\n'));
    if (text.find_first_of(",;\"\n") == std::string::npos) {
        line += text;
        return;
    }
    line += '"';
    for (const char c : text) {
        if (c == '"') line += '"';
        line += c;
    }
    line += '"';
}

// JSON has an escape for each control character. In a whole document they stand nowhere but in strings.
std::string WithEscapedControls(std::string_view json) {
    std::string escaped;
    while (!json.empty()) {
        const size_t length = ControlLength(json);
        if (length == 0) {
            escaped += json[0];
        } else {
            std::array<char, 7> escape = {};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", unsigned{CodePoints(json.substr(0, length))[0]});
            escaped += escape.data();
        }
        json.remove_prefix(std::max<size_t>(length, 1));
    }
    return escaped;
}

class JsonPrinter final : public TablePrinter {
  public:
    JsonPrinter(Console& printConsole, std::vector<Column> tableColumns)
        : console_(printConsole), columns_(std::move(tableColumns)) {}

    void AddRow(std::initializer_list<std::string_view> cells) override {
        using Json = nlohmann::ordered_json;
        Json object = Json::object();
        for (size_t i = 0; i < columns_.size(); ++i) {
            const std::string cell(cells.begin()[i]);
            if (columns_[i].kind != Column::Kind::Number) {
                object[columns_[i].name] = cell;
            } else if (cell.empty()) {
                object[columns_[i].name] = nullptr;
            } else {
                object[columns_[i].name] = std::stoll(cell);
            }
        }
        const std::string json = object.dump(-1, ' ', false, Json::error_handler_t::replace);
        console_.Out() << (hasRows_ ? ",\n " : "[\n ") << (IsPlain(json) ? json : WithEscapedControls(json));
        hasRows_ = true;
    }
    void Finish() override { console_.Out() << (hasRows_ ? "\n]\n" : "[]\n"); }

  private:
    Console& console_;
    std::vector<Column> columns_;
    bool hasRows_ = false;
};

std::unique_ptr<TablePrinter> MakePrinter(Console& console, Format format, std::vector<Column> columns) {
    const auto block = std::ranges::find(columns, Column::Kind::Block, &Column::kind);
    const bool isForPeople = format == Format::Aligned || format == Format::Tabs;
    if (isForPeople && block != columns.end()) {
        return std::make_unique<BlockPrinter>(console, static_cast<size_t>(block - columns.begin()));
    }
    switch (format) {
        case Format::Aligned:
            return std::make_unique<AlignedPrinter>(console, std::move(columns));
        case Format::Tabs:
            return std::make_unique<SeparatedPrinter>(console, columns, '\t', AppendPlainCell);
        case Format::Json:
            return std::make_unique<JsonPrinter>(console, std::move(columns));
        case Format::Csv:
            return std::make_unique<SeparatedPrinter>(console, columns, ',', AppendCsvCell);
    }
    throw std::invalid_argument("unknown format");
}

}  // namespace

Table::Table(Console& console, Format format, std::vector<Column> columns) : columnCount_(columns.size()) {
    if (columns.empty()) throw std::invalid_argument("a table has at least one column");
    printer_ = MakePrinter(console, format, std::move(columns));
}

void Table::AddRow(std::initializer_list<std::string_view> cells) {
    if (cells.size() != columnCount_) throw std::invalid_argument("a row has one cell for each column");
    printer_->AddRow(cells);
    ++rowCount_;
}

void Table::Finish() {
    printer_->Finish();
}
