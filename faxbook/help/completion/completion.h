// Completion at the shell: a small script for each shell asks this program what a word can be.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "help/completion/powershell_words.h"

namespace CLI {
class App;
}

std::vector<std::string> CompletionShells();
// To be run by the shell when it starts. Empty for an unknown shell.
std::string_view CompletionScript(std::string_view shell);

// Both print a line for each thing that a word can be: a command, an option, an address book, a person, a group, a
// profile. It is what is to be typed for the program to get that word and nothing else to happen.
//
// The word at the end of the line, which is that up to the cursor; see BashLine.
void PrintBashCandidates(const CLI::App& app, std::string_view line, std::string_view replaced, std::ostream& out);
// The word at the position among those behind the program's name, as far as it has been typed; without one there it is
// still empty. The words before it are as the program would get them.
void PrintPowerShellCandidates(const CLI::App& app, std::vector<std::string> words, size_t position,
                               ArgumentPassing passing, std::ostream& out);
