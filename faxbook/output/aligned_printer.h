// Format::Aligned: the rows are kept until all of them are known, as a column is as wide as its widest cell.
#pragma once

#include <cstdint>
#include <utility>

#include "output/output.h"

class AlignedPrinter final : public TablePrinter {
  public:
    AlignedPrinter(Console& printConsole, std::vector<Column> tableColumns);

    void AddRow(std::initializer_list<std::string_view> cells) override;
    void Finish() override;

  private:
    // Some rows' cells, one behind the other: a large book has some hundred thousand rows, and a block that is full is
    // never copied again.
    struct Block {
        std::string text;
        std::vector<std::uint32_t> lengths;
        std::vector<bool> isPlain;  // one for each row
    };
    // The row is plain when no cell holds anything but printable ASCII characters.
    struct Row {
        std::vector<std::string_view> cells;
        bool isPlain = false;
    };
    struct ShownColumn {
        size_t index;
        size_t width;
        size_t leastWidth;  // at a narrow terminal
    };
    class LinePrinter;

    // Calls the function with each row, in order. The row lives for the call.
    template <typename Function>
    void ForEachRow(Function&& function) const;
    std::vector<ShownColumn> ShownColumns() const;

    Console& console_;
    std::vector<Column> columns_;
    std::vector<Block> blocks_;
    bool hasRows_ = false;
};
