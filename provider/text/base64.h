// Base64 as files have it (RFC 4648), folded or not.
#pragma once

#include <string>
#include <string_view>

// Appends the bytes. Whatever is no digit is passed over; false when that was more than blanks, line ends and the "="
// at the end, or when the last digits are not enough for a byte.
bool AppendBase64(std::string_view raw, std::string& bytes);
