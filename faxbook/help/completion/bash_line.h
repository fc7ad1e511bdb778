// A command line as bash reads it, up to the cursor, and candidates as they must stand there so that bash reads them
// again and does nothing else.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "help/completion/candidate.h"

class BashLine {
  public:
    // `replaced` is the end of the line that readline exchanges for a candidate: what stands behind the last separator
    // of COMP_WORDBREAKS, or behind a quote that is open.
    BashLine(std::string_view line, std::string_view replaced);

    // The words behind the program's name as the program would get them, the one at the cursor last. Redirections are
    // left out; an expansion, which only bash can make, stands as it was typed.
    const std::vector<std::string>& Words() const { return words_; }

    // What is to take the place of `replaced`, for each candidate that the word at the cursor can still become. With
    // quotes for one of them there are quotes for all, so that what the texts have in common is the words' beginning.
    std::vector<std::string> Write(const std::vector<Candidate>& candidates) const;

  private:
    std::string Quote(std::string_view text) const;

    std::vector<std::string> words_;
    bool canBecomeAnother_ = false;  // the word at the cursor
    std::string stays_;              // what of it stands before `replaced`, as it is read
    // The open quote right before `replaced`. Readline exchanges it, too, when a candidate begins with the same, and
    // closes it behind a candidate that does not end with the same.
    char openQuote_ = 0;
    bool hasDollar_ = false;  // before the open quote
};
