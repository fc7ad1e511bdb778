// Result codes in words.
#pragma once

#include <cstdint>
#include <string>

// The results that this program gives advice on.
inline constexpr int32_t resultCallFailed = static_cast<int32_t>(0x80004005);
inline constexpr int32_t resultNoSupport = static_cast<int32_t>(0x80040102);
inline constexpr int32_t resultNotFound = static_cast<int32_t>(0x8004010F);
inline constexpr int32_t resultUserCancel = static_cast<int32_t>(0x80040113);
inline constexpr int32_t resultCollision = static_cast<int32_t>(0x80040604);
inline constexpr int32_t resultNoAccess = static_cast<int32_t>(0x80070005);
inline constexpr int32_t resultInvalidParameter = static_cast<int32_t>(0x80070057);

// "0x8004010F".
std::string HexText(uint32_t value);

// "0x8004010F (MAPI_E_NOT_FOUND)", or the bare number of a code without a published name.
std::string ResultText(int32_t result);
