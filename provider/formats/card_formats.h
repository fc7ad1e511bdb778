// The formats of files that hold cards, by the ends of the files' names.
#pragma once

#include <windows.h>

#include <iosfwd>
#include <optional>
#include <string_view>

class CardReceiver;

// Hands every card of a text on. `charset` is the code page of unlabelled text; without one it is guessed, and the
// result is what was guessed. Throws std::length_error for a text that is too long for the format.
using CardFormatReader = std::optional<UINT>(std::istream& text, std::optional<UINT> charset, CardReceiver& receiver);

// Of a name's end, such as ".vcf"; letter case does not matter. Null: it is no format of cards.
CardFormatReader* FindFormat(std::string_view ending);
