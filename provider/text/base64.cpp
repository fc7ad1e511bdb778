// Six bits for each digit.
#include "text/base64.h"

#include <array>
#include <cstdint>

#include "text/ascii.h"

namespace {

constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t none = 64;

struct DigitTable {
    std::array<std::uint8_t, 256> values;
};
constexpr DigitTable digitTable = [] {
    DigitTable table = {};
    table.values.fill(none);
    for (std::uint8_t digit = 0; digit < none; ++digit) table.values[static_cast<unsigned char>(digits[digit])] = digit;
    return table;
}();

}  // namespace

bool AppendBase64(std::string_view raw, std::string& bytes) {
    unsigned bits = 0;
    int count = 0;
    bool isGood = true;
    bool isPadded = false;
    for (const char c : raw) {
        const std::uint8_t value = digitTable.values[static_cast<unsigned char>(c)];
        if (value == none) {
            isPadded = isPadded || c == '=';
            isGood = isGood && (c == '=' || IsBlankOrLineEnd(c));
            continue;
        }
        isGood = isGood && !isPadded;
        bits = (bits << 6 | value) & 0xFFFF;
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes.push_back(static_cast<char>(bits >> count & 0xFF));
    }
    return isGood && count < 6;
}
