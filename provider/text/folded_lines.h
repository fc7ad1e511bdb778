// Lines that may be folded: one that begins with a blank goes on with the line above it. Lines end with CR LF, LF or
// CR, also mixed in one text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// A view of the text from a line's first byte to its last, line ends of folds included.
struct ContentLine {
    std::string_view raw;
    size_t number = 0;  // of its first line in the file, counted from 1
    bool folded = false;
};

// The lines as they stand, one behind the other.
class PhysicalLines {
  public:
    // `firstNumber` is that of the text's first line.
    explicit PhysicalLines(std::string_view text, size_t firstNumber = 1);

    bool AtEnd() const { return position_ >= text_.size(); }
    std::string_view Text() const { return text_; }
    std::string_view Rest() const { return text_.substr(position_); }
    // Where the line that follows begins, and its number.
    size_t Position() const { return position_; }
    size_t Number() const { return number_; }
    // Moves past one line; the result is where its line end begins.
    size_t Take();

  private:
    std::string_view text_;
    size_t position_ = 0;
    size_t number_;
    // A carriage return alone ends lines somewhere in the text.
    bool hasLoneReturns_;
};

// Appends a raw line without its folds. vCard 2.1 folds before a blank that belongs to the text; everybody else adds
// the blank.
void AppendUnfolded(std::string_view raw, bool keepBlank, std::string& text);
