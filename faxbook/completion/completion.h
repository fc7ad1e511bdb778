// Completion at the shell: a small script for each shell asks this program what a word can be.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

std::vector<std::string> CompletionShells();
// To be run by the shell when it starts. Empty for an unknown shell.
std::string_view CompletionScript(std::string_view shell);

// Prints a line for each thing that the word at the position can be: a command, an option, an address book, a person, a
// group, a profile. `words` are those behind the program's name, up to the position or further; without one at the
// position, that word is still empty.
void PrintCandidates(const CLI::App& app, std::vector<std::string> words, size_t position, std::ostream& out);
