// Result codes in words.
#pragma once

#include <cstdint>
#include <string>

// "0x8004010F".
std::string HexText(uint32_t value);

// "0x8004010F (MAPI_E_NOT_FOUND)", or the bare number of a code without a published name.
std::string ResultText(int32_t result);
