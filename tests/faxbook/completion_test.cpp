// Words for PowerShell, read by the rules that its language reference has for quotes. For bash there is a real one:
// terminal_test.py.
#include "help/completion/powershell_words.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "text/characters.h"

namespace {

bool IsOneOf(char32_t c, std::u32string_view set) {
    return set.find(c) != std::u32string_view::npos;
}

// What one argument is to PowerShell; nothing where more than text is in it, or it ends early.
std::optional<std::u32string> ReadAsPowerShellDoes(std::string_view written) {
    constexpr std::u32string_view singleQuotes = U"'\u2018\u2019\u201A\u201B";
    constexpr std::u32string_view doubleQuotes = U"\"\u201C\u201D\u201E";
    constexpr std::u32string_view code = U"$([char]";
    const std::u32string text = CodePoints(written);
    if (text.empty()) return std::nullopt;
    const bool isSingle = IsOneOf(text[0], singleQuotes);
    if (!isSingle && !IsOneOf(text[0], doubleQuotes)) {
        const auto means = [](char32_t c) { return IsOneOf(c, U" \t`$,;&|<>(){}@#'\"*?[]=%!~") || c >= 0x80; };
        return std::ranges::none_of(text, means) ? std::optional(text) : std::nullopt;
    }
    const std::u32string_view quotes = isSingle ? singleQuotes : doubleQuotes;
    std::u32string read;
    for (size_t i = 1; i < text.size(); ++i) {
        if (IsOneOf(text[i], quotes)) {
            if (i + 1 == text.size()) return read;
            if (!IsOneOf(text[++i], quotes)) return std::nullopt;
            read += text[i];
        } else if (!isSingle && text[i] == '`') {
            if (++i == text.size() || !IsOneOf(text[i], U"`$\"\u201C\u201D\u201E")) return std::nullopt;
            read += text[i];
        } else if (!isSingle && text[i] == '$') {
            if (text.compare(i, code.size(), code) != 0) return std::nullopt;
            char32_t character = 0;
            for (i += code.size(); i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
                character = character * 10 + text[i] - '0';
            if (i == text.size() || text[i] != ')') return std::nullopt;
            read += character;
        } else {
            read += text[i];
        }
    }
    return std::nullopt;
}

// What a program gets where PowerShell leaves the quotes in its argument to it: the shell puts others around an
// argument with blanks outside of quotes, and the program reads its command line in the usual way.
std::u32string PassAsBefore(const std::u32string& argument) {
    bool isQuoted = false;
    bool needsQuotes = false;
    for (size_t i = 0; i < argument.size(); ++i) {
        if (argument[i] == '"' && (i == 0 || argument[i - 1] != '\\')) isQuoted = !isQuoted;
        needsQuotes |= argument[i] == ' ' && !isQuoted;
    }
    const std::u32string line = needsQuotes ? U"\"" + argument + U"\"" : argument;
    std::u32string passed;
    size_t backslashes = 0;
    for (const char32_t c : line) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        passed.append(c == '"' ? backslashes / 2 : backslashes, '\\');
        if (c != '"' || backslashes % 2 == 1) passed += c;
        backslashes = 0;
    }
    return passed.append(backslashes, '\\');
}

}  // namespace

TEST(OutputTest, PowerShellReadsACompletedWordAsTheName) {
    const std::vector<std::string> names = {"Ada Winterfeld",
                                            "O'Brien",
                                            "O’Brien ‘x’ ‚y‛",
                                            "'",
                                            "’",
                                            "’; Remove-Item x; ’",
                                            "\"q\" “r” „s”",
                                            "`$(whoami) $env:X ${y}",
                                            "a;b|c&d",
                                            "(x) {y} [z] @w",
                                            "#x",
                                            "-Nat-",
                                            "--Ola x",
                                            "--%",
                                            "~Pat",
                                            "%PATH%",
                                            "*?",
                                            "1kb",
                                            "x,y",
                                            "a=b:c",
                                            "Zoë",
                                            "山田",
                                            "back\\slash\\",
                                            "two words\\",
                                            "say \\\"x\\\\\" y",
                                            "end\\\\",
                                            "\u0085a\u009B2J`$x\u202E“’\"'\u2066",
                                            "line\nbreak\t$(x)",
                                            "plain",
                                            "Company/Sales",
                                            "C:\\Work",
                                            "--profile"};
    const auto isControl = [](char32_t c) { return c < ' ' || (c >= 0x7F && c < 0xA0) || c == 0x202E || c == 0x2066; };
    for (const std::string& name : names) {
        for (const auto passing : {ArgumentPassing::Exact, ArgumentPassing::Legacy}) {
            const std::string written = WriteForPowerShell(name, passing);
            const std::optional<std::u32string> read = ReadAsPowerShellDoes(written);
            ASSERT_TRUE(read.has_value()) << written;
            EXPECT_EQ(passing == ArgumentPassing::Exact ? *read : PassAsBefore(*read), CodePoints(name)) << written;
            EXPECT_TRUE(std::ranges::none_of(CodePoints(written), isControl)) << written;
        }
        // What is typed so is read so.
        if (std::ranges::any_of(CodePoints(name), isControl)) continue;
        EXPECT_EQ(ReadPowerShellWord(WriteForPowerShell(name, ArgumentPassing::Exact)), name);
    }
    EXPECT_EQ(ReadPowerShellWord("‘Ann’’s"), "Ann’s");
    EXPECT_EQ(ReadPowerShellWord("“a`$b““c“"), "a$b“c");
    EXPECT_EQ(ReadPowerShellWord("a` b`"), "a b");
}
