// Every code page that files are met in is tried, and what its reading gives is compared with what languages look like:
// which letters are frequent in names, where capitals stand, whether a letter stands among its own kind.
#include "text/charset_guess.h"

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "text/ascii.h"
#include "text/code_pages.h"
#include "text/languages.h"
#include "text/letter_case.h"

namespace {

using Utf16 = std::basic_string<WCHAR>;

// Points for one character; what a byte pair gives counts twice. They were chosen so that one frequent letter in the
// right place outweighs the handicap of a rarer language, and one impossible character outweighs two frequent ones.
constexpr int frequent = 20;
constexpr int usual = 12;
constexpr int possible = 6;
constexpr int foreign = -30;      // a letter of no name in the language
constexpr int symbol = -24;       // no letter at all
constexpr int amongOthers = -24;  // next to a letter of another script
constexpr int oddCapital = -30;   // a capital behind a small letter
constexpr int moreCapitals = -6;  // a capital behind a capital
constexpr int finalForm = 30;     // a letter that ends words, at the end of one
constexpr int unreadable = -200;
constexpr int likelihood = 5;  // once, for the code page of the system

bool IsAsciiLetter(WCHAR c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

WCHAR SmallOf(WCHAR c) {
    return static_cast<WCHAR>(SmallLetter(c));
}

bool IsCapital(WCHAR c) {
    return SmallOf(c) != c;
}

// Greek and Hebrew letters that stand at the end of a word only.
constexpr std::u16string_view finalForms = u"ςךםןףץ";

bool IsHan(WCHAR c) {
    return c >= 0x4E00 && c <= 0x9FFF;
}
bool IsHangul(WCHAR c) {
    return c >= 0xAC00 && c <= 0xD7A3;
}
bool IsKana(WCHAR c) {
    return c >= 0x3041 && c <= 0x30FE;
}
bool IsHalfWidthKana(WCHAR c) {
    return c >= 0xFF61 && c <= 0xFF9F;
}

// How one language takes a character that is not ASCII. Its letters stand in the order of their frequency.
int ScoreLetter(const Language& language, WCHAR c) {
    if (language.script == Script::Han && (IsHan(c) || IsKana(c))) {
        if (language.letters.find(static_cast<char16_t>(c)) != std::u16string_view::npos) return 2 * frequent;
        return IsKana(c) ? language.hasKana ? 2 * usual : 2 * foreign : 0;
    }
    if (language.script == Script::Hangul && IsHangul(c))
        return language.letters.find(static_cast<char16_t>(c)) != std::u16string_view::npos ? 2 * frequent : possible;
    if (IsHalfWidthKana(c)) return language.hasKana ? 0 : foreign;
    const WCHAR small = SmallOf(c);
    const size_t place = language.letters.find(static_cast<char16_t>(small));
    if (place == std::u16string_view::npos) {
        const bool isLetter = small != c || (c >= 0xDF && c < 0x2000 && c != 0xF7);
        return isLetter || IsHan(c) || IsHangul(c) || IsKana(c) ? foreign : symbol;
    }
    const size_t third = std::max<size_t>(language.letters.size() / 3 + 1, 3);
    return place < third ? frequent : place < 2 * third ? usual : possible;
}

// What stands beside a character says more than the character.
int ScorePlace(const Language& language, WCHAR before, WCHAR c, WCHAR after) {
    int score = 0;
    const bool isBesideAscii = IsAsciiLetter(before) || IsAsciiLetter(after);
    const bool isLatin = language.script == Script::Latin;
    if (isLatin != isBesideAscii) score += isLatin ? amongOthers / 4 : amongOthers;
    const bool isBehindSmall =
        before != ' ' && !IsCapital(before) && SmallOf(before) == before && (IsAsciiLetter(before) || before >= 0xDF);
    if (IsCapital(c) && isBehindSmall) score += oddCapital;
    if (IsCapital(c) && before >= 0x80 && IsCapital(before)) score += moreCapitals;
    if (finalForms.find(static_cast<char16_t>(c)) != std::u16string_view::npos)
        score += before >= 0x80 && after < '0' ? finalForm : foreign;
    if (IsCapital(before) && before >= 0x80 && !IsCapital(c) && IsCapital(after)) score += oddCapital;
    return score;
}

long ScoreText(const Language& language, const Utf16& text) {
    long score = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const WCHAR c = text[i];
        const WCHAR before = i > 0 ? text[i - 1] : WCHAR{' '};
        const WCHAR after = i + 1 < text.size() ? text[i + 1] : WCHAR{' '};
        if (c < 0x80) {
            if (before >= 0xDF && c >= 'A' && c <= 'Z' && !IsCapital(before) && SmallOf(before) == before &&
                language.script == Script::Latin && after >= 'a' && after <= 'z')
                score += oddCapital;
            continue;
        }
        score += ScoreLetter(language, c) + ScorePlace(language, before, c, after);
    }
    return score;
}

// A line that the code page cannot read is lost; so are all of them where the system lacks the code page.
struct Reading {
    std::vector<Utf16> lines;
    long lost = 0;
};

Reading ReadIn(UINT codePage, std::string_view sample) {
    Reading reading;
    while (!sample.empty()) {
        const std::string_view line = sample.substr(0, sample.find('\n'));
        sample.remove_prefix(std::min(line.size() + 1, sample.size()));
        if (line.empty()) continue;
        Utf16 wide(line.size(), WCHAR{});
        const auto convert = [&](DWORD flags) {
            return MultiByteToWideChar(codePage, flags, line.data(), static_cast<int>(line.size()), wide.data(),
                                       static_cast<int>(wide.size()));
        };
        const int units = convert(MB_ERR_INVALID_CHARS);
        if (units <= 0) reading.lost += unreadable;
        wide.resize(static_cast<size_t>(std::max(units, 0)));
        reading.lines.push_back(std::move(wide));
    }
    return reading;
}

}  // namespace

UINT GuessCodePage(std::string_view sample, UINT likely) {
    // Nothing else uses this escape, and its bytes are ASCII otherwise.
    if (sample.find("\x1B$") != std::string_view::npos && IsAscii(sample)) return codePageIso2022Jp;
    UINT best = 1252;
    long bestScore = LONG_MIN;
    UINT readPage = 0;
    Reading reading;
    for (const Language& language : languages) {
        if (language.codePage != readPage) reading = ReadIn(language.codePage, sample);
        readPage = language.codePage;
        long score = reading.lost + (language.codePage == likely ? likelihood : 0);
        for (const Utf16& line : reading.lines) score += ScoreText(language, line);
        if (score <= bestScore) continue;
        best = language.codePage;
        bestScore = score;
    }
    return best;
}
