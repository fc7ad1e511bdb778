// Widths and letter case, by characters whose treatment people see: wide ones, combining ones, letters of several
// scripts.
#include "text/characters.h"

#include <gtest/gtest.h>

TEST(CharactersTest, WidthIsThatOfATerminal) {
    const struct {
        const char* text;
        size_t width;
    } cases[] = {
        {"", 0},
        {"plain", 5},
        {"Müller", 6},
        {"山田 花子", 9},
        {"ﾊﾝｶｸ", 4},
        {"Ａ", 2},
        {"e\u0301", 1},
        {"한국", 4},
        {"Ωμέγα", 5},
        {"☎", 1},
        {"😀", 2},
        {"a\u200Bb", 2},
        {"\xE5\xB1", 2},
        {"\xC0\x80", 2},
        {"\xFF"
         "a",
         2},
        {"か\u3099", 2},
        {"देवनागरी", 7},  // the vowel signs of Devanagari that stand beside their letter take a column
        {"বাংলা", 5},
        {"தமிழ்", 4},
        {"ภาษาไทย", 7},
        {"ខ្មែរ", 4},
        {"עִבְרִית", 5},
        {"العَرَبِيَّة", 7},
        {"각", 2},
        {"\u1100\u1161\u11A8", 2},
    };
    for (const auto& [text, width] : cases) EXPECT_EQ(DisplayWidth(text), width) << text;
}

TEST(CharactersTest, MalformedBytesAreOneReplacementEach) {
    EXPECT_EQ(CodePoints("a\x80z"), U"a\uFFFDz");
    EXPECT_EQ(CodePoints("\xE5\xB1"), U"\uFFFD\uFFFD");                      // a character that ends too early
    EXPECT_EQ(CodePoints("\xED\xA0\x80"), U"\uFFFD\uFFFD\uFFFD");            // a surrogate
    EXPECT_EQ(CodePoints("\xF4\x90\x80\x80"), U"\uFFFD\uFFFD\uFFFD\uFFFD");  // beyond the last code point
    EXPECT_EQ(CodePoints("\xE0\x80\xAF"), U"\uFFFD\uFFFD\uFFFD");            // longer than need be
    EXPECT_EQ(CodePoints("\xF0\x9F\x98\x80"), U"\U0001F600");
}

TEST(CharactersTest, CaseIsFoldedInEveryScriptThatHasIt) {
    const char* const pairs[][2] = {{"MÜLLER", "müller"},   {"Straße", "STRASSE"},  {"ŁUKASZ ŽIŽKA", "łukasz žižka"},
                                    {"ΣΊΣΥΦΟΣ", "σίσυφος"}, {"ИВАН ЁЖ", "иван ёж"}, {"ÿ", "Ÿ"},
                                    {"ԵՐԵՎԱՆ", "երեվան"},   {"ＡＢＣ", "ａｂｃ"},   {"ẤỆ", "ấệ"}};
    for (const auto& [left, right] : pairs) EXPECT_EQ(FoldCase(left), FoldCase(right)) << left;
    EXPECT_NE(FoldCase("×"), FoldCase("÷"));
    EXPECT_NE(FoldCase("ĸ"), FoldCase("Ĺ"));
    EXPECT_TRUE(ContainsFolded("Zoë MÜLLER", FoldCase("müll")));
    EXPECT_FALSE(ContainsFolded("Zoë Muller", FoldCase("müll")));
}
