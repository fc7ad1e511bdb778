// Tables of ranges, in order, from the Unicode character database (East Asian Width, General Category, Case Folding).
// Those of widths are made by make_character_ranges.py.
#include "text/characters.h"

#include <algorithm>
#include <iterator>

#include "text/ascii.h"

namespace {

constexpr char32_t replacement = 0xFFFD;

struct Range {
    char32_t first;
    char32_t last;
};

constexpr Range zeroWidthRanges[] = {
#define ZERO_WIDTH(first, last) {first, last},
#define WIDE(first, last)
#include "text/character_ranges.inc"
#undef ZERO_WIDTH
#undef WIDE
};

constexpr Range wideRanges[] = {
#define ZERO_WIDTH(first, last)
#define WIDE(first, last) {first, last},
#include "text/character_ranges.inc"
#undef ZERO_WIDTH
#undef WIDE
};

// Capital letters: each is `offset` below its small letter; with a step of 2 capitals and small letters alternate.
struct CapitalRange {
    char32_t first;
    char32_t last;
    int offset;
    char32_t step;
};

constexpr CapitalRange capitalRanges[] = {
    {'A', 'Z', 32, 1},       {0x00C0, 0x00D6, 32, 1}, {0x00D8, 0x00DE, 32, 1}, {0x0100, 0x012E, 1, 2},
    {0x0132, 0x0136, 1, 2},  {0x0139, 0x0147, 1, 2},  {0x014A, 0x0176, 1, 2},  {0x0178, 0x0178, -121, 1},
    {0x0179, 0x017D, 1, 2},  {0x01A0, 0x01A4, 1, 2},  {0x01AF, 0x01AF, 1, 1},  {0x01CD, 0x01DB, 1, 2},
    {0x01DE, 0x01EE, 1, 2},  {0x01F8, 0x021E, 1, 2},  {0x0222, 0x0232, 1, 2},  {0x0386, 0x0386, 38, 1},
    {0x0388, 0x038A, 37, 1}, {0x038C, 0x038C, 64, 1}, {0x038E, 0x038F, 63, 1}, {0x0391, 0x03A1, 32, 1},
    {0x03A3, 0x03AB, 32, 1}, {0x03D8, 0x03EE, 1, 2},  {0x0400, 0x040F, 80, 1}, {0x0410, 0x042F, 32, 1},
    {0x0460, 0x0480, 1, 2},  {0x048A, 0x04BE, 1, 2},  {0x04C0, 0x04C0, 15, 1}, {0x04C1, 0x04CD, 1, 2},
    {0x04D0, 0x052E, 1, 2},  {0x0531, 0x0556, 48, 1}, {0x1E00, 0x1E94, 1, 2},  {0x1EA0, 0x1EFE, 1, 2},
    {0x1F08, 0x1F0F, -8, 1}, {0x1F18, 0x1F1D, -8, 1}, {0x1F28, 0x1F2F, -8, 1}, {0x1F38, 0x1F3F, -8, 1},
    {0x1F48, 0x1F4D, -8, 1}, {0x1F68, 0x1F6F, -8, 1}, {0xFF21, 0xFF3A, 32, 1},
};

template <typename AnyRange, size_t size>
const AnyRange* FindRange(const AnyRange (&ranges)[size], char32_t codePoint) {
    const auto* range = std::ranges::lower_bound(ranges, codePoint, {}, &AnyRange::last);
    return range != std::end(ranges) && codePoint >= range->first ? range : nullptr;
}

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Takes one code point from the front of the text.
char32_t TakeCodePoint(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    const size_t size = first < 0x80   ? 1
                        : first < 0xC2 ? 0
                        : first < 0xE0 ? 2
                        : first < 0xF0 ? 3
                        : first < 0xF5 ? 4
                                       : 0;
    const bool complete =
        size > 0 && size <= text.size() && std::ranges::all_of(text.substr(1, size - 1), IsContinuation);
    char32_t codePoint = size == 1 ? first : first & (0x7Fu >> size);
    for (size_t i = 1; complete && i < size; ++i) {
        codePoint = codePoint << 6 | (static_cast<unsigned char>(text[i]) & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    const bool valid = complete && codePoint >= smallest[size] && codePoint <= 0x10FFFF && !surrogate;
    text.remove_prefix(valid ? size : 1);
    return valid ? codePoint : replacement;
}

size_t Width(char32_t codePoint) {
    if (codePoint < 0x0300) return 1;
    if (FindRange(zeroWidthRanges, codePoint)) return 0;
    return FindRange(wideRanges, codePoint) ? 2 : 1;
}

constexpr char32_t sharpS = 0xDF;
constexpr char32_t capitalSharpS = 0x1E9E;
constexpr char32_t finalSigma = 0x3C2;
constexpr char32_t smallSigma = 0x3C3;

char32_t SmallLetter(char32_t codePoint) {
    if (codePoint == finalSigma) return smallSigma;
    const CapitalRange* range = FindRange(capitalRanges, codePoint);
    if (!range || (codePoint - range->first) % range->step != 0) return codePoint;
    return static_cast<char32_t>(static_cast<int>(codePoint) + range->offset);
}

}  // namespace

std::u32string CodePoints(std::string_view utf8) {
    std::u32string codePoints;
    while (!utf8.empty()) codePoints += TakeCodePoint(utf8);
    return codePoints;
}

size_t DisplayWidth(std::string_view utf8) {
    if (IsAscii(utf8)) return utf8.size();
    size_t width = 0;
    while (!utf8.empty()) width += Width(TakeCodePoint(utf8));
    return width;
}

std::string_view TakeLine(std::string_view& utf8, size_t columns) {
    constexpr std::string_view breaksBehind = "/\\;";
    std::string_view rest = utf8;
    size_t width = 0;
    size_t end = 0;        // of the characters that fit
    size_t goodBreak = 0;  // the last one among them
    while (!rest.empty()) {
        const char first = rest.front();
        if (first == ' ') goodBreak = end;
        width += Width(TakeCodePoint(rest));
        if (width > columns && end > 0) break;
        end = utf8.size() - rest.size();
        if (breaksBehind.find(first) != std::string_view::npos) goodBreak = end;
    }
    const bool isWhole = end == utf8.size();
    const std::string_view line = utf8.substr(0, isWhole || goodBreak == 0 ? end : goodBreak);
    utf8.remove_prefix(line.size());
    utf8.remove_prefix(std::min(utf8.find_first_not_of(' '), utf8.size()));
    return line;
}

std::u32string FoldCase(std::string_view utf8) {
    std::u32string folded;
    folded.reserve(utf8.size());
    while (!utf8.empty()) {
        const char32_t codePoint = TakeCodePoint(utf8);
        if (codePoint == sharpS || codePoint == capitalSharpS) {
            folded += U"ss";
        } else {
            folded += SmallLetter(codePoint);
        }
    }
    return folded;
}

bool ContainsFolded(std::string_view text, std::u32string_view foldedWord) {
    return FoldCase(text).find(foldedWord) != std::u32string::npos;
}
