// The program's command line: its commands, their arguments, help and examples, written once here. The manual page and
// the shells' completion are made of the same.
#pragma once

#include <string>
#include <vector>

#include "terminal/console.h"

// The environment variable that keeps colours away.
inline constexpr char noColourVariable[] = "NO_COLOR";

// The exit codes.
inline constexpr int exitSuccess = 0;
inline constexpr int exitFailure = 1;  // the command could not do what it was asked for
inline constexpr int exitUsage = 2;    // the arguments are not understood
// Whoever read the output, such as "head -1", has closed it before its end. The code is the one that shells give to
// programs that the system ends for that.
inline constexpr int exitReaderGone = 141;

// Does what the arguments ask for and returns the exit code of help or wrong usage, or of a command that ended well.
// Throws CommandFailure when the command fails.
int RunCommandLine(const std::vector<std::string>& arguments, Console& console);
