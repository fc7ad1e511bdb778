// The content lines of a vCard text: a line end followed by a blank does not end a line (folding). Lines end with
// CR LF, LF or CR, also mixed in one file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// A view of the text from a content line's first byte to its last, line ends of folds included.
struct ContentLine {
    std::string_view raw;
    size_t number = 0;  // of its first line in the file, counted from 1
    bool folded = false;
};

class LineReader {
  public:
    // `firstNumber` is that of the text's first line.
    explicit LineReader(std::string_view text, size_t firstNumber = 1);

    // The next line that is not empty; false at the end of the text.
    bool Next(ContentLine& line);
    // Takes the line that follows into this one, as a quoted-printable value that ends in "=" asks for. False, with
    // nothing changed, at the end of the text, before an empty line and before the begin or end of a component.
    bool JoinNext(ContentLine& line);
    // The number of the line that follows.
    size_t NextNumber() const { return number_; }

  private:
    // Moves past one physical line; the result is where its line end begins.
    size_t TakeLine();
    // Moves past one content line, from position_.
    size_t TakeFolded(bool& folded);

    std::string_view text_;
    size_t position_ = 0;
    size_t number_;
    // A carriage return alone ends lines somewhere in the text.
    bool hasLoneReturns_;
};

// Appends a raw line without its folds. vCard 2.1 folds before a blank that belongs to the text; later versions add
// the blank.
void AppendUnfolded(std::string_view raw, bool keepBlank, std::string& text);
