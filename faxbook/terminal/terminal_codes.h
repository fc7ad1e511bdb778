// The escape codes (ECMA-48) that this program sends to a terminal.
#pragma once

#include <string_view>

namespace terminal_codes {

inline constexpr std::string_view wipeLine = "\r\x1B[K";
inline constexpr std::string_view plain = "\x1B[0m";
inline constexpr std::string_view bold = "\x1B[1m";
inline constexpr std::string_view cyan = "\x1B[36m";

}  // namespace terminal_codes
