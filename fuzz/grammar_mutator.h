// Damage by the grammar of a format, for libFuzzer, which knows bytes only: pieces of the format are put in, and lines,
// fields and values are cut, doubled, swapped, repeated, folded, nested and written in other letters. A target's
// NAME_grammar.cpp says which pieces there are. Replayed inputs are taken as they are: only fuzzing builds link this.
#pragma once

#include <span>
#include <string_view>

struct Grammar {
    std::span<const std::string_view> pieces;
    std::span<const std::string_view> lines;  // whole ones, without their ends
    std::string_view separators;              // beside the ends of lines
    // What stands around a part of the text that is one thing: a component, a quoted field.
    std::string_view opening;
    std::string_view closing;
    std::string_view fold;  // ends a line in the middle of what goes on
};

// The target's own.
extern const Grammar theGrammar;
