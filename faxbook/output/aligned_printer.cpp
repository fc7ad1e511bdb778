// A line stays one line: line breaks and other control characters inside a cell are shown as blanks. Where a terminal
// is too narrow, headings of numbers give way first, then remarks, then text.
#include "output/aligned_printer.h"

#include <algorithm>
#include <ostream>

#include "terminal/terminal_codes.h"
#include "text/ascii.h"
#include "text/characters.h"
#include "text/control_characters.h"

namespace {

constexpr std::string_view columnGap = "  ";
// Narrower columns of text than this are columns of single words.
constexpr size_t leastTextWidth = 12;

std::string Heading(std::string_view name) {
    std::string heading(name);
    for (char& c : heading) c = c == '_' ? ' ' : ToUpperAscii(c);
    return heading;
}

// Of a column whose widest cell is that wide.
size_t LeastWidth(const Column& column, size_t cellWidth) {
    if (column.kind == Column::Kind::Number) {
        size_t longestWord = 0;
        std::string_view name = column.name;
        while (!name.empty()) {
            const size_t word = std::min(name.find('_'), name.size());
            longestWord = std::max(longestWord, word);
            name.remove_prefix(std::min(word + 1, name.size()));
        }
        return std::max(longestWord, cellWidth);
    }
    const bool canGiveWay = column.kind == Column::Kind::Text || column.kind == Column::Kind::Remark;
    return std::max(canGiveWay ? leastTextWidth : cellWidth, column.name.size());
}

bool IsNothing(std::string_view cell, Column::Kind kind) {
    return cell.empty() || (kind == Column::Kind::Number && cell == "0");
}

}  // namespace

// Lines of cells under each other, each cell as wide as its column.
class AlignedPrinter::LinePrinter {
  public:
    LinePrinter(const AlignedPrinter& table, std::ostream& stream)
        : columns_(table.columns_),
          shown_(table.ShownColumns()),
          usesColours_(table.console_.OutTerminal().takesCodes),
          out_(stream) {
        FitInto(table.console_.OutTerminal().width);
    }

    void PrintHeadings() {
        std::vector<std::string> headings;
        for (const Column& column : columns_) headings.push_back(Heading(column.name));
        isHeading_ = true;
        Print({{headings.begin(), headings.end()}, true});
        isHeading_ = false;
    }

    void Print(const Row& row) {
        rest_.clear();
        for (const ShownColumn& column : shown_) {
            rest_.push_back(row.cells[column.index]);
            if (row.isPlain) continue;
            cleaned_.resize(shown_.size());
            rest_.back() = cleaned_[rest_.size() - 1] = WithoutControls(rest_.back());
        }
        do {
            PrintLine(row.isPlain);
        } while (std::ranges::any_of(rest_, [](std::string_view cell) { return !cell.empty(); }));
    }

  private:
    // A width of 0 is no limit.
    void FitInto(size_t terminalWidth) {
        size_t total = columnGap.size() * (shown_.size() - 1);
        for (const ShownColumn& column : shown_) total += column.width;
        if (terminalWidth == 0 || total <= terminalWidth) return;
        size_t excess = total - terminalWidth;
        for (const auto kind : {Column::Kind::Number, Column::Kind::Remark, Column::Kind::Text}) {
            excess -= Shrink(kind, excess);
        }
    }

    // Takes up to that many columns of the terminal from the widest of a kind; returns how many.
    size_t Shrink(Column::Kind kind, size_t excess) {
        const auto canShrink = [&](const ShownColumn& column) {
            return columns_[column.index].kind == kind && column.width > column.leastWidth;
        };
        size_t taken = 0;
        for (; taken < excess; ++taken) {
            ShownColumn* widest = nullptr;
            for (ShownColumn& column : shown_) {
                if (canShrink(column) && (!widest || column.width > widest->width)) widest = &column;
            }
            if (!widest) break;
            --widest->width;
        }
        return taken;
    }

    // What stands in one line of a cell.
    struct Piece {
        std::string_view text;
        std::string_view mark;  // of a cut
        size_t width;
    };
    // Takes it from the front of the cell.
    static Piece TakePiece(std::string_view& cell, Column::Kind kind, size_t columnWidth, bool isPlain) {
        const bool canGiveWay = kind == Column::Kind::Text || kind == Column::Kind::Remark;
        // No text has more columns than bytes. A long one is measured as far as it goes into the line only.
        if (cell.size() <= columnWidth || !canGiveWay) {
            const size_t width = isPlain ? cell.size() : DisplayWidth(cell);
            return {std::exchange(cell, {}), "", width};
        }
        std::string_view rest = cell;
        const std::string_view line = TakeLine(rest, columnWidth);
        if (kind == Column::Kind::Text || rest.empty()) {
            cell = rest;
            return {line, "", DisplayWidth(line)};
        }
        const std::string_view text = TakeLine(cell, columnWidth - 1);
        cell = {};
        return {text, "…", DisplayWidth(text) + 1};
    }

    // One line of what is left of the cells.
    void PrintLine(bool isPlain) {
        line_.clear();
        size_t end = 0;  // of what is to be seen in the line
        for (size_t i = 0; i < shown_.size(); ++i) {
            const auto& [index, columnWidth, leastWidth] = shown_[i];
            if (i > 0) line_ += columnGap;
            const Column::Kind kind = columns_[index].kind;
            const Column::Kind way = isHeading_ ? Column::Kind::Text : kind;
            const auto& [text, mark, width] = TakePiece(rest_[i], way, columnWidth, isPlain);
            const size_t padding = columnWidth - std::min(width, columnWidth);
            const bool alignRight = kind == Column::Kind::Number;
            if (alignRight) line_.append(padding, ' ');
            if (!text.empty()) {
                const std::string_view colour = ColourOf(kind);
                line_.append(colour).append(text).append(mark).append(colour.empty() ? "" : terminal_codes::plain);
                end = line_.size();
            }
            if (!alignRight) line_.append(padding, ' ');
        }
        line_.resize(end);
        line_ += '\n';
        out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
    }

    std::string_view ColourOf(Column::Kind kind) const {
        if (!usesColours_) return {};
        if (isHeading_) return terminal_codes::bold;
        return kind == Column::Kind::Telephone ? terminal_codes::cyan : std::string_view();
    }

    const std::vector<Column>& columns_;
    std::vector<ShownColumn> shown_;
    bool usesColours_;
    bool isHeading_ = false;
    std::ostream& out_;
    std::vector<std::string_view> rest_;  // of each shown column's cell
    std::vector<std::string> cleaned_;
    std::string line_;
};

AlignedPrinter::AlignedPrinter(Console& printConsole, std::vector<Column> tableColumns)
    : console_(printConsole), columns_(std::move(tableColumns)) {}

void AlignedPrinter::AddRow(std::initializer_list<std::string_view> cells) {
    constexpr size_t firstBlockSize = 1 << 14;
    constexpr size_t blockSize = 1 << 20;
    size_t size = 0;
    for (const std::string_view cell : cells) size += cell.size();
    if (blocks_.empty() || blocks_.back().text.size() + size > blocks_.back().text.capacity()) {
        blocks_.emplace_back().text.reserve(std::max(hasRows_ ? blockSize : firstBlockSize, size));
    }
    Block& block = blocks_.back();
    for (const std::string_view cell : cells) {
        block.text += cell;
        block.lengths.push_back(static_cast<std::uint32_t>(cell.size()));
    }
    block.isPlain.push_back(IsPlain(std::string_view(block.text).substr(block.text.size() - size)));
    hasRows_ = true;
}

void AlignedPrinter::Finish() {
    if (!hasRows_) return;
    LinePrinter printer(*this, console_.Out());
    printer.PrintHeadings();
    ForEachRow([&](const Row& row) { printer.Print(row); });
}

template <typename Function>
void AlignedPrinter::ForEachRow(Function&& function) const {
    Row row = {std::vector<std::string_view>(columns_.size())};
    for (const Block& block : blocks_) {
        std::string_view rest = block.text;
        for (size_t i = 0; i < block.isPlain.size(); ++i) {
            for (size_t column = 0; column < columns_.size(); ++column) {
                row.cells[column] = rest.substr(0, block.lengths[i * columns_.size() + column]);
                rest.remove_prefix(row.cells[column].size());
            }
            row.isPlain = block.isPlain[i];
            function(std::as_const(row));
        }
    }
}

std::vector<AlignedPrinter::ShownColumn> AlignedPrinter::ShownColumns() const {
    std::vector<size_t> widths(columns_.size());
    std::vector<bool> isUsed(columns_.size());
    ForEachRow([&](const Row& row) {
        for (size_t column = 0; column < row.cells.size(); ++column) {
            const std::string_view cell = row.cells[column];
            const size_t width = row.isPlain ? cell.size() : DisplayWidth(WithoutControls(cell));
            widths[column] = std::max(widths[column], width);
            if (!IsNothing(cell, columns_[column].kind)) isUsed[column] = true;
        }
    });
    std::vector<ShownColumn> shown;
    for (size_t column = 0; column < widths.size(); ++column) {
        if (!isUsed[column] && columns_[column].whenEmpty == Column::WhenEmpty::Hide) continue;
        const size_t width = std::max(widths[column], columns_[column].name.size());
        shown.push_back({column, width, LeastWidth(columns_[column], widths[column])});
    }
    return shown;
}
