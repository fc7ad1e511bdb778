// The lines of an LDIF text: a line end followed by a blank does not end a line (folding), also within comments, which
// are passed over.
#pragma once

#include "text/folded_lines.h"

class LdifLines {
  public:
    // `firstNumber` is that of the text's first line.
    explicit LdifLines(std::string_view text, size_t firstNumber = 1) : lines_(text, firstNumber) {}

    // The next line; its text is empty where a record ends. False at the end of the text. A line that begins with a
    // blank continues none.
    bool Next(ContentLine& line);
    // The number of the line that follows.
    size_t NextNumber() const { return lines_.Number(); }

  private:
    PhysicalLines lines_;
};
