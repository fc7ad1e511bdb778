// Reads the cards of a CSV export: one row is one person.
#pragma once

#include <windows.h>

#include <iosfwd>
#include <optional>
#include <string_view>

class CardReceiver;

// Reads every row of a text, well-formed UTF-8 without a byte-order mark, whose first row names the columns. Columns
// that are not known are passed over; a text in which none names a person, an address or a number is reported and has
// no cards.
void ReadCsvCards(std::string_view utf8, CardReceiver& receiver);

// A whole file, which is in one character set and is converted as one piece; see formats/card_formats.h.
std::optional<UINT> ReadCsvFile(std::istream& file, std::optional<UINT> charset, CardReceiver& receiver);
