// Where messages go that nobody asked for in a call: to the program's receiver, else to standard error, and to a file
// where the environment names one (FAXBOOK_DIAGNOSTICS; "off" means neither file nor standard error).
#pragma once

#include <string>

#include "qdxl7ra.h"

// `path:line: what; advice`, with `where` in the place of an empty path, as one line without control characters.
std::string FormatMessage(const VOKMessageReport& message);

// Does without memory when there is none.
void DeliverMessage(const VOKMessageReport& message) noexcept;

// One without a function: standard error again.
void SetMessageReceiver(const VOKMessageReceiver& receiver);
