// A cell is looked at in parts, each up to a semicolon or line break. A part gets its guard also where it has one
// already: so reading, which takes one away, gives back what was written, whatever that was.
#include "csv/formula_guard.h"

#include <algorithm>
#include <iterator>

#include "text/ascii.h"

namespace {

constexpr char guard = '\'';
constexpr std::string_view partEnds = ";\n";

// Takes one character of UTF-8 from the front of the text. The result is the ASCII character that spreadsheets and
// people take it for; 0 for any other.
char TakeAsAscii(std::string_view& text) {
    const auto byte = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    const unsigned first = byte(0);
    const size_t length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    const unsigned codePoint = length == 1   ? first
                               : length == 2 ? (first & 0x1F) << 6 | (byte(1) & 0x3F)
                                             : (first & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
    text.remove_prefix(std::min(length, text.size()));
    if (length == 4) return 0;
    if (codePoint < 0x80) return static_cast<char>(codePoint);
    if (codePoint >= 0xFF01 && codePoint <= 0xFF5E) return static_cast<char>(codePoint - 0xFEE0);  // full-width
    const bool isDash = codePoint >= 0x2010 && codePoint <= 0x2015;  // between digits; it begins no formula
    // No-break, thin and ideographic blanks, and what takes no place at all: marks of direction and of the byte order.
    const bool isSpace = codePoint == 0xA0 || codePoint == 0x1680 || (codePoint >= 0x2000 && codePoint <= 0x200F) ||
                         codePoint == 0x202F || codePoint == 0x205F || codePoint == 0x2060 || codePoint == 0x3000 ||
                         codePoint == 0xFEFF;
    if (isDash || isSpace) return isDash ? '.' : ' ';
    switch (codePoint) {
        case 0x2212:  // the sign of subtraction
        case 0xFE63:
            return '-';
        case 0xFE62:
            return '+';
        case 0xFE66:
            return '=';
        case 0xFE6B:
            return '@';
        default:
            return 0;
    }
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsOneOf(char c, std::string_view set) {
    return c != 0 && set.find(c) != std::string_view::npos;
}

// Digits and what is dialled or written between them; behind a digit also the words for pauses and extensions. No
// function and no other cell can be named with these.
bool IsTelephoneNumber(std::string_view text) {
    constexpr std::string_view words[] = {"ext", "p", "w", "x"};
    std::string word;
    char before = 0;  // the word or the character, blanks aside
    for (bool isEnd = false; !isEnd;) {
        isEnd = text.empty();
        const char c = isEnd ? ' ' : ToLowerAscii(TakeAsAscii(text));
        if (c >= 'a' && c <= 'z') {
            word += c;
            continue;
        }
        const bool isWordAllowed = (IsDigit(before) || before == ')') && c != '(' &&
                                   std::ranges::find(words, std::string_view(word)) != std::end(words);
        if (!word.empty() && !isWordAllowed) return false;
        if (!IsDigit(c) && !IsOneOf(c, " +-()./*#,")) return false;
        word.clear();
        if (c != ' ') before = c;
    }
    return true;
}

bool IsFormula(std::string_view part) {
    std::string_view rest = part;
    char first = ' ';
    while (!part.empty() && IsOneOf(first, " \t\r'\"")) {
        rest = part;
        first = TakeAsAscii(part);
    }
    return IsOneOf(first, "=+-@") && !IsTelephoneNumber(rest);
}

// Calls the function with each part of the cell and what ends it.
template <typename Function>
void ForEachPart(std::string_view cell, Function&& function) {
    while (!cell.empty()) {
        const size_t end = std::min(cell.find_first_of(partEnds), cell.size());
        function(cell.substr(0, end), cell.substr(end, 1));
        cell.remove_prefix(std::min(end + 1, cell.size()));
    }
}

bool IsGuarded(std::string_view part) {
    return part.starts_with(guard) && IsFormula(part.substr(1));
}

}  // namespace

std::string WithFormulaGuards(std::string_view cell) {
    std::string guarded;
    ForEachPart(cell, [&](std::string_view part, std::string_view end) {
        if (IsFormula(part)) guarded += guard;
        guarded.append(part).append(end);
    });
    return guarded;
}

bool HasFormulaGuards(std::string_view cell) {
    if (cell.find(guard) == std::string_view::npos) return false;
    bool hasGuard = false;
    ForEachPart(cell, [&](std::string_view part, std::string_view) { hasGuard |= IsGuarded(part); });
    return hasGuard;
}

std::string WithoutFormulaGuards(std::string_view cell) {
    std::string text;
    ForEachPart(cell, [&](std::string_view part, std::string_view end) {
        if (IsGuarded(part)) part.remove_prefix(1);
        text.append(part).append(end);
    });
    return text;
}
