// Reads the cards of a CSV export: one row is one person.
#pragma once

#include <string_view>

class CardReceiver;

// Reads every row of a text, well-formed UTF-8 without a byte-order mark, whose first row names the columns. Columns
// that are not known are passed over; a text in which none names a person, an address or a number is reported and has
// no cards.
void ReadCsvCards(std::string_view utf8, CardReceiver& receiver);
