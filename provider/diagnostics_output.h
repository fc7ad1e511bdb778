// Where the diagnostics go: standard error; FAXBOOK_DIAGNOSTICS=off keeps them quiet, any other value is a file that
// they are appended to.
#pragma once

#include <string_view>

// The line ends with a line feed. Where it cannot be appended to the file, it goes to standard error, and so does
// before it, once, why.
void WriteDiagnostics(std::string_view line) noexcept;
