// The published MAPI names of the codes that a library or a provider can answer.
#include "results.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace {

struct NamedResult {
    uint32_t code;
    const char* name;
};

constexpr NamedResult namedResults[] = {
    {0x00000000, "S_OK"},
    {0x00040203, "MAPI_W_NO_SERVICE"},
    {0x00040380, "MAPI_W_ERRORS_RETURNED"},
    {0x00040680, "MAPI_W_PARTIAL_COMPLETION"},
    {0x80004002, "MAPI_E_INTERFACE_NOT_SUPPORTED"},
    {0x80004005, "MAPI_E_CALL_FAILED"},
    {0x80040102, "MAPI_E_NO_SUPPORT"},
    {0x80040103, "MAPI_E_BAD_CHARWIDTH"},
    {0x80040105, "MAPI_E_STRING_TOO_LONG"},
    {0x80040106, "MAPI_E_UNKNOWN_FLAGS"},
    {0x80040107, "MAPI_E_INVALID_ENTRYID"},
    {0x80040108, "MAPI_E_INVALID_OBJECT"},
    {0x80040109, "MAPI_E_OBJECT_CHANGED"},
    {0x8004010A, "MAPI_E_OBJECT_DELETED"},
    {0x8004010B, "MAPI_E_BUSY"},
    {0x8004010D, "MAPI_E_NOT_ENOUGH_DISK"},
    {0x8004010E, "MAPI_E_NOT_ENOUGH_RESOURCES"},
    {0x8004010F, "MAPI_E_NOT_FOUND"},
    {0x80040110, "MAPI_E_VERSION"},
    {0x80040111, "MAPI_E_LOGON_FAILED"},
    {0x80040112, "MAPI_E_SESSION_LIMIT"},
    {0x80040113, "MAPI_E_USER_CANCEL"},
    {0x80040114, "MAPI_E_UNABLE_TO_ABORT"},
    {0x80040115, "MAPI_E_NETWORK_ERROR"},
    {0x80040116, "MAPI_E_DISK_ERROR"},
    {0x80040117, "MAPI_E_TOO_COMPLEX"},
    {0x80040119, "MAPI_E_EXTENDED_ERROR"},
    {0x8004011B, "MAPI_E_CORRUPT_DATA"},
    {0x8004011C, "MAPI_E_UNCONFIGURED"},
    {0x8004011D, "MAPI_E_FAILONEPROVIDER"},
    {0x8004011E, "MAPI_E_UNKNOWN_CPID"},
    {0x80040200, "MAPI_E_END_OF_SESSION"},
    {0x80040201, "MAPI_E_UNKNOWN_ENTRYID"},
    {0x80040400, "MAPI_E_UNABLE_TO_COMPLETE"},
    {0x80040401, "MAPI_E_TIMEOUT"},
    {0x80040500, "MAPI_E_WAIT"},
    {0x80040501, "MAPI_E_CANCEL"},
    {0x80040600, "MAPI_E_CORRUPT_STORE"},
    {0x80040604, "MAPI_E_COLLISION"},
    {0x80040605, "MAPI_E_NOT_INITIALIZED"},
    {0x80070005, "MAPI_E_NO_ACCESS"},
    {0x8007000E, "MAPI_E_NOT_ENOUGH_MEMORY"},
    {0x80070057, "MAPI_E_INVALID_PARAMETER"},
};

}  // namespace

std::string HexText(uint32_t value) {
    std::array<char, 11> text;
    std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned int>(value));
    return text.data();
}

std::string ResultText(int32_t result) {
    const auto code = static_cast<uint32_t>(result);
    std::string text = HexText(code);
    const auto* named = std::ranges::find(namedResults, code, &NamedResult::code);
    if (named != std::end(namedResults)) text += std::string(" (") + named->name + ")";
    return text;
}
