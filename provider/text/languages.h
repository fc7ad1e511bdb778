// What names and companies look like in the languages of address files: the letters beyond ASCII in the order of their
// frequency, or of Han characters and Hangul syllables those that stand in most names.
#pragma once

#include <windows.h>

#include <span>
#include <string_view>

enum class Script { Latin, Other, Han, Hangul };

struct Language {
    UINT codePage;
    Script script;
    std::u16string_view letters;  // small ones
    bool hasKana = false;
};

// In the order in which equal readings are preferred; those of a code page stand together.
extern const std::span<const Language> languages;
