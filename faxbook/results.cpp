// The published MAPI names of the codes that a library or a provider can answer.
#include "results.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace {

struct NamedResult {
    int32_t code;
    const char* name;
};

constexpr int32_t Failed(uint32_t code) {
    return static_cast<int32_t>(code);
}

constexpr NamedResult namedResults[] = {
    {0x00000000, "S_OK"},
    {0x00040203, "MAPI_W_NO_SERVICE"},
    {0x00040380, "MAPI_W_ERRORS_RETURNED"},
    {0x00040680, "MAPI_W_PARTIAL_COMPLETION"},
    {Failed(0x80004002), "MAPI_E_INTERFACE_NOT_SUPPORTED"},
    {resultCallFailed, "MAPI_E_CALL_FAILED"},
    {resultNoSupport, "MAPI_E_NO_SUPPORT"},
    {Failed(0x80040103), "MAPI_E_BAD_CHARWIDTH"},
    {Failed(0x80040105), "MAPI_E_STRING_TOO_LONG"},
    {Failed(0x80040106), "MAPI_E_UNKNOWN_FLAGS"},
    {Failed(0x80040107), "MAPI_E_INVALID_ENTRYID"},
    {Failed(0x80040108), "MAPI_E_INVALID_OBJECT"},
    {Failed(0x80040109), "MAPI_E_OBJECT_CHANGED"},
    {Failed(0x8004010A), "MAPI_E_OBJECT_DELETED"},
    {Failed(0x8004010B), "MAPI_E_BUSY"},
    {Failed(0x8004010D), "MAPI_E_NOT_ENOUGH_DISK"},
    {Failed(0x8004010E), "MAPI_E_NOT_ENOUGH_RESOURCES"},
    {resultNotFound, "MAPI_E_NOT_FOUND"},
    {Failed(0x80040110), "MAPI_E_VERSION"},
    {Failed(0x80040111), "MAPI_E_LOGON_FAILED"},
    {Failed(0x80040112), "MAPI_E_SESSION_LIMIT"},
    {resultUserCancel, "MAPI_E_USER_CANCEL"},
    {Failed(0x80040114), "MAPI_E_UNABLE_TO_ABORT"},
    {Failed(0x80040115), "MAPI_E_NETWORK_ERROR"},
    {Failed(0x80040116), "MAPI_E_DISK_ERROR"},
    {Failed(0x80040117), "MAPI_E_TOO_COMPLEX"},
    {Failed(0x80040119), "MAPI_E_EXTENDED_ERROR"},
    {Failed(0x8004011B), "MAPI_E_CORRUPT_DATA"},
    {Failed(0x8004011C), "MAPI_E_UNCONFIGURED"},
    {Failed(0x8004011D), "MAPI_E_FAILONEPROVIDER"},
    {Failed(0x8004011E), "MAPI_E_UNKNOWN_CPID"},
    {Failed(0x80040200), "MAPI_E_END_OF_SESSION"},
    {Failed(0x80040201), "MAPI_E_UNKNOWN_ENTRYID"},
    {Failed(0x80040400), "MAPI_E_UNABLE_TO_COMPLETE"},
    {Failed(0x80040401), "MAPI_E_TIMEOUT"},
    {Failed(0x80040500), "MAPI_E_WAIT"},
    {Failed(0x80040501), "MAPI_E_CANCEL"},
    {Failed(0x80040600), "MAPI_E_CORRUPT_STORE"},
    {resultCollision, "MAPI_E_COLLISION"},
    {Failed(0x80040605), "MAPI_E_NOT_INITIALIZED"},
    {resultNoAccess, "MAPI_E_NO_ACCESS"},
    {Failed(0x8007000E), "MAPI_E_NOT_ENOUGH_MEMORY"},
    {resultInvalidParameter, "MAPI_E_INVALID_PARAMETER"},
};

}  // namespace

std::string HexText(uint32_t value) {
    std::array<char, 11> text = {};
    std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned int>(value));
    return text.data();
}

std::string ResultText(int32_t result) {
    std::string text = HexText(static_cast<uint32_t>(result));
    const auto* named = std::ranges::find(namedResults, result, &NamedResult::code);
    if (named != std::end(namedResults)) text += std::string(" (") + named->name + ")";
    return text;
}
