// Words as PowerShell reads them.
#pragma once

#include <string>
#include <string_view>

// How PowerShell hands an argument with a quote in it to a program.
enum class ArgumentPassing {
    Exact,
    Legacy,  // before 7.3: the quotes are the program's to read, so each needs a backslash
};

// What a word that has been begun stands for.
std::string ReadPowerShellWord(std::string_view typed);

// The word as it must be typed for a program to get just that.
std::string WriteForPowerShell(std::string_view word, ArgumentPassing passing);
