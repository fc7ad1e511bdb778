// The fax numbers that find no place in the columns of their address book: nothing is dropped without a word.
#pragma once

#include <cstdint>

#include "session/session.h"

// Names each of them; the result is how many there are.
size_t ReportUnplacedNumbers(Session& session, std::uint32_t file, const CardSet& cards, ContentsStyle style);
