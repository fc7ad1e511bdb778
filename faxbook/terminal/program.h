// What the system gives a program and takes from it: arguments, standard streams, interrupts. Text is UTF-8.
#pragma once

#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "output/output_buffer.h"
#include "terminal/console.h"

// From now on, a library that is named without its folder is the system's own: nothing is looked for beside this
// program, in the current folder or in the PATH.
void UseSystemLibrariesOnly();

// The arguments, the program's own name first.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// While it lives, bytes written to the standard streams reach their files unchanged, a console shows them as UTF-8 and
// obeys escape codes, and a program that is interrupted leaves the terminal as it was. A stream that was closed when
// the program started is no other file's. When the reader of standard output has gone, the program ends at once, with
// exitReaderGone and without a word. One at a time.
class StandardStreams {
  public:
    StandardStreams();
    ~StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;

    // Why std::cout, which has been flushed, could not be written; empty when it could.
    const std::string& OutputFailure() const { return buffer_.Failure(); }

    const Terminal& Output() const { return output_; }
    const Terminal& Notes() const { return notes_; }
    // Whether a line that comes and goes on standard error disturbs nobody: it is a terminal, and standard output is
    // not a pipe to a program that may write to the same terminal.
    bool HasPlaceForProgress() const { return hasPlaceForProgress_; }
    // Shows the line at the terminal of standard error, in the place of the last one, and leaves the cursor at its
    // beginning.
    static void DrawProgress(std::string_view line);

  private:
    // What an OutputBuffer is made with.
    static std::string WriteOutput(std::string_view bytes);
    static constexpr char isClosed_[] = "standard output is closed; leave it open, or send it to a file";
    static constexpr char hasNoRoom_[] = "its disk is full; make room there, or write elsewhere";

    OutputBuffer buffer_{WriteOutput};
    std::streambuf* const before_;
    Terminal output_;
    Terminal notes_;
    bool hasPlaceForProgress_ = false;
};

// Interrupts of the program end it in the other threads, which may hold them off for a while.
void LeaveInterruptsToOtherThreads();
