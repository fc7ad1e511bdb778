// Where the program's words go: rows and texts to standard output, notes to standard error, and at a terminal one line
// that says what is being read.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "terminal/progress.h"

// What is known of one stream's terminal.
struct Terminal {
    size_t width = 0;         // in columns; 0: the stream is no terminal
    bool takesCodes = false;  // it understands escape codes: colours, wiping a line
};

class Console {
  public:
    Console(std::ostream& outStream, std::ostream& noteStream, const Terminal& outTerminal = {});

    // From now on, what takes long is told by `draw`; see Progress.
    void ShowProgress(Progress::Draw draw);

    // For what is printed now. At a terminal the progress line is gone then, and does not come back.
    std::ostream& Out();
    const Terminal& OutTerminal() const { return terminal_; }

    // One line on standard error, with the program's name before it.
    void Note(std::string_view text);
    // The same for what the provider says of a file.
    void Report(std::string_view line);

    // What is read from now on, for the progress line.
    void Reading(const std::string& what);
    // One more thing of those that are read: cards, destinations.
    void CountOne();

  private:
    std::ostream& out_;
    std::ostream& notes_;
    Terminal terminal_;
    std::unique_ptr<Progress> progress_;
};
