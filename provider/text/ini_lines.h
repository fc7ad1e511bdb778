// The settings files of this provider: lines `key = value`, sections `[name]`, comments that begin with # or ;.
#pragma once

#include <string_view>
#include <vector>

struct IniLine {
    enum class Kind { Blank, Section, Setting, Unreadable };
    Kind kind;
    size_t number;           // counted from 1
    std::string_view raw;    // with its line end
    std::string_view name;   // of the section or of the key
    std::string_view value;  // of a setting
};

// The lines of a text, in order; together their raw texts are the text. The views point into it.
std::vector<IniLine> ReadIniLines(std::string_view text);
