// PowerShell takes the quotes of typesetting for the ones of the keyboard: five of them enclose a text that stands for
// itself, four one in which $ and ` are obeyed. Inside, a quote of the same kind is doubled.
#include "help/completion/powershell_words.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "text/ascii.h"
#include "text/characters.h"
#include "text/control_characters.h"

namespace {

constexpr std::string_view singleQuotes[] = {"'", "‘", "’", "‚", "‛"};
constexpr std::string_view doubleQuotes[] = {"\"", "“", "”", "„"};

// The length of the quote that the text begins with; 0 when it begins with something else.
template <size_t count>
size_t QuoteLength(const std::string_view (&quotes)[count], std::string_view text) {
    const auto* const found =
        std::ranges::find_if(quotes, [&](std::string_view quote) { return text.starts_with(quote); });
    return found == std::end(quotes) ? 0 : found->size();
}

bool IsBare(std::string_view word) {
    const auto isLetter = [](char c) { return ToLowerAscii(c) >= 'a' && ToLowerAscii(c) <= 'z'; };
    const auto isBare = [&](char c) {
        return isLetter(c) || (c >= '0' && c <= '9') || std::string_view("_-./\\").find(c) != std::string_view::npos;
    };
    if (word.starts_with("--")) word.remove_prefix(2);
    return !word.empty() && isLetter(word[0]) && std::ranges::all_of(word, isBare);
}

// As the usual reading of a command line wants it: a backslash before each quote, and those before it doubled.
std::string WithEscapedQuotes(std::string_view word) {
    std::string escaped;
    size_t backslashes = 0;
    for (const char c : word) {
        if (c == '"') escaped.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        escaped += c;
    }
    // An argument with blanks gets quotes around it.
    if (word.find(' ') != std::string_view::npos) escaped.append(backslashes, '\\');
    return escaped;
}

std::string InSingleQuotes(std::string_view text) {
    std::string written = "'";
    while (!text.empty()) {
        const size_t quote = QuoteLength(singleQuotes, text);
        written.append(text.substr(0, quote)).append(text.substr(0, std::max<size_t>(quote, 1)));
        text.remove_prefix(std::max<size_t>(quote, 1));
    }
    return written + "'";
}

// For control characters, of which PowerShell has no escapes in all its versions.
std::string InDoubleQuotes(std::string_view text) {
    std::string written = "\"";
    while (!text.empty()) {
        const size_t control = ControlLength(text);
        const size_t quote = QuoteLength(doubleQuotes, text);
        const size_t length = std::max<size_t>({control, quote, 1});
        if (control > 0) {
            written += "$([char]" + std::to_string(std::uint32_t{CodePoints(text.substr(0, control))[0]}) + ")";
        } else {
            if (quote > 0 || text[0] == '$' || text[0] == '`') written += '`';
            written += text.substr(0, length);
        }
        text.remove_prefix(length);
    }
    return written + "\"";
}

}  // namespace

std::string ReadPowerShellWord(std::string_view typed) {
    const size_t single = QuoteLength(singleQuotes, typed);
    const size_t twofold = QuoteLength(doubleQuotes, typed);
    typed.remove_prefix(single + twofold);
    std::string word;
    while (!typed.empty()) {
        const size_t quote = single > 0    ? QuoteLength(singleQuotes, typed)
                             : twofold > 0 ? QuoteLength(doubleQuotes, typed)
                                           : 0;
        typed.remove_prefix(quote);
        if (quote > 0 && (single > 0 ? QuoteLength(singleQuotes, typed) : QuoteLength(doubleQuotes, typed)) == 0) break;
        if (single == 0 && typed[0] == '`') typed.remove_prefix(1);
        if (typed.empty()) break;
        word += typed[0];
        typed.remove_prefix(1);
    }
    return word;
}

std::string WriteForPowerShell(std::string_view word, ArgumentPassing passing) {
    if (IsBare(word)) return std::string(word);
    const std::string argument = passing == ArgumentPassing::Legacy ? WithEscapedQuotes(word) : std::string(word);
    for (std::string_view rest = argument; !rest.empty(); rest.remove_prefix(1))
        if (ControlLength(rest) > 0) return InDoubleQuotes(argument);
    return InSingleQuotes(argument);
}
