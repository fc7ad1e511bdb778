// The manual page, and what "faxbook --help" says of more than one command. Both are made of the command line itself.
#pragma once

#include <iosfwd>
#include <string>

namespace CLI {
class App;
}

// What holds for all commands: output, environment, exit codes. Plain text for --help.
std::string TopicsText();

// A page in the macros of man(7), section 1.
void PrintManual(const CLI::App& app, std::ostream& out);
