// The content lines of a vCard text: a line end followed by a blank does not end a line (folding). Lines end with
// CR LF, LF or CR, also mixed in one file.
#pragma once

#include <string_view>

#include "text/folded_lines.h"

class LineReader {
  public:
    // `firstNumber` is that of the text's first line.
    explicit LineReader(std::string_view text, size_t firstNumber = 1) : lines_(text, firstNumber) {}

    // The next line that is not empty; false at the end of the text.
    bool Next(ContentLine& line);
    // Takes the line that follows into this one, as a quoted-printable value that ends in "=" asks for. False, with
    // nothing changed, at the end of the text, before an empty line and before the begin or end of a component.
    bool JoinNext(ContentLine& line);
    // The number of the line that follows.
    size_t NextNumber() const { return lines_.Number(); }

  private:
    // Moves past one content line; the result is where its last line end begins.
    size_t TakeFolded(bool& folded);

    PhysicalLines lines_;
};
