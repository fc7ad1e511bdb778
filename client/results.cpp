// The published MAPI names of the codes that a library or a provider can answer.
#include "client/results.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

#include "mapi/result_codes.h"

namespace {

struct NamedResult {
    int32_t code;
    const char* name;
};

constexpr NamedResult namedResults[] = {
    {S_OK, "S_OK"},
#define RESULT(name, code) {name, #name},
#include "mapi/result_codes.inc"
#undef RESULT
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
