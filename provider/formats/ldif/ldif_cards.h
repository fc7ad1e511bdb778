// Reads the entries of an LDIF text one after another, and hands each one that is a person or a group on as a card.
#pragma once

#include <windows.h>

#include <istream>
#include <optional>

class CardReceiver;

// Reads a text to its end. Text that is not UTF-8 is in `charset`, a code page; without one it is guessed, and the
// guess is the result. Files that a value stands in are never opened. Records that change entries are reported and
// change none.
std::optional<UINT> ReadLdifCards(std::istream& text, std::optional<UINT> charset, CardReceiver& receiver);
