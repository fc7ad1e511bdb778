// Tables of ranges, in order, from the Unicode character database (East Asian Width, General Category, Case Folding).
#include "characters.h"

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
    {0x0300, 0x036F}, {0x0483, 0x0489},   {0x0591, 0x05BD},   {0x05BF, 0x05BF},   {0x05C1, 0x05C2}, {0x05C4, 0x05C5},
    {0x05C7, 0x05C7}, {0x0610, 0x061A},   {0x064B, 0x065F},   {0x0670, 0x0670},   {0x06D6, 0x06DC}, {0x06DF, 0x06E4},
    {0x06E7, 0x06E8}, {0x06EA, 0x06ED},   {0x0711, 0x0711},   {0x0730, 0x074A},   {0x0900, 0x0902}, {0x093A, 0x093A},
    {0x093C, 0x093C}, {0x0941, 0x0948},   {0x094D, 0x094D},   {0x0951, 0x0957},   {0x0E31, 0x0E31}, {0x0E34, 0x0E3A},
    {0x0E47, 0x0E4E}, {0x1160, 0x11FF},   {0x1AB0, 0x1ACE},   {0x1DC0, 0x1DFF},   {0x200B, 0x200F}, {0x202A, 0x202E},
    {0x2060, 0x2064}, {0x20D0, 0x20F0},   {0x302A, 0x302D},   {0x3099, 0x309A},   {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
    {0xFEFF, 0xFEFF}, {0x1F3FB, 0x1F3FF}, {0xE0020, 0xE007F}, {0xE0100, 0xE01EF},
};

constexpr Range wideRanges[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},   {0x23F0, 0x23F0},
    {0x23F3, 0x23F3},   {0x25FD, 0x25FE},   {0x2614, 0x2615},   {0x2648, 0x2653},   {0x267F, 0x267F},
    {0x2693, 0x2693},   {0x26A1, 0x26A1},   {0x26AA, 0x26AB},   {0x26BD, 0x26BE},   {0x26C4, 0x26C5},
    {0x26CE, 0x26CE},   {0x26D4, 0x26D4},   {0x26EA, 0x26EA},   {0x26F2, 0x26F3},   {0x26F5, 0x26F5},
    {0x26FA, 0x26FA},   {0x26FD, 0x26FD},   {0x2705, 0x2705},   {0x270A, 0x270B},   {0x2728, 0x2728},
    {0x274C, 0x274C},   {0x274E, 0x274E},   {0x2753, 0x2755},   {0x2757, 0x2757},   {0x2795, 0x2797},
    {0x27B0, 0x27B0},   {0x27BF, 0x27BF},   {0x2B1B, 0x2B1C},   {0x2B50, 0x2B50},   {0x2B55, 0x2B55},
    {0x2E80, 0x3029},   {0x302E, 0x303E},   {0x3041, 0x3098},   {0x309B, 0x3247},   {0x3250, 0x4DBF},
    {0x4E00, 0xA4CF},   {0xA960, 0xA97C},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE10, 0xFE19},
    {0xFE30, 0xFE6B},   {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},   {0x16FE0, 0x18CFF}, {0x1B000, 0x1B2FF},
    {0x1F004, 0x1F004}, {0x1F0CF, 0x1F0CF}, {0x1F18E, 0x1F18E}, {0x1F191, 0x1F19A}, {0x1F200, 0x1F265},
    {0x1F300, 0x1F320}, {0x1F32D, 0x1F335}, {0x1F337, 0x1F37C}, {0x1F37E, 0x1F393}, {0x1F3A0, 0x1F3CA},
    {0x1F3CF, 0x1F3D3}, {0x1F3E0, 0x1F3F0}, {0x1F3F4, 0x1F3F4}, {0x1F3F8, 0x1F3FA}, {0x1F400, 0x1F43E},
    {0x1F440, 0x1F440}, {0x1F442, 0x1F4FC}, {0x1F4FF, 0x1F53D}, {0x1F54B, 0x1F54E}, {0x1F550, 0x1F567},
    {0x1F57A, 0x1F57A}, {0x1F595, 0x1F596}, {0x1F5A4, 0x1F5A4}, {0x1F5FB, 0x1F64F}, {0x1F680, 0x1F6C5},
    {0x1F6CC, 0x1F6CC}, {0x1F6D0, 0x1F6D2}, {0x1F6D5, 0x1F6D7}, {0x1F6DC, 0x1F6DF}, {0x1F6EB, 0x1F6EC},
    {0x1F6F4, 0x1F6FC}, {0x1F7E0, 0x1F7EB}, {0x1F7F0, 0x1F7F0}, {0x1F90C, 0x1F93A}, {0x1F93C, 0x1F945},
    {0x1F947, 0x1F9FF}, {0x1FA70, 0x1FAFF}, {0x20000, 0x3FFFD},
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

// The length of the control character that the text begins with, 0 when it begins with another character. Terminals
// obey the characters U+0080 to U+009F, too.
size_t ControlLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < ' ' || first == 0x7F) return 1;
    const bool isSecondSet = first == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0;
    return isSecondSet ? 2 : 0;
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

bool IsPlain(std::string_view utf8) {
    return !HasAny(utf8, [](char c) { return (static_cast<signed char>(c) < ' ') | (c == '\x7F'); });
}

std::string WithoutControls(std::string_view utf8, char kept) {
    if (IsPlain(utf8)) return std::string(utf8);
    std::string shown;
    while (!utf8.empty()) {
        const size_t length = utf8[0] == kept ? 0 : ControlLength(utf8);
        if (length == 0) {
            shown += utf8[0];
        } else if (!shown.empty() && shown.back() != ' ') {
            shown += ' ';
        }
        utf8.remove_prefix(std::max<size_t>(length, 1));
    }
    return shown;
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
