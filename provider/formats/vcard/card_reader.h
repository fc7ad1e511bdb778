// Reads the cards of a vCard text one after another, whatever stands between and inside them, and hands each one on.
#pragma once

#include <windows.h>

#include <istream>
#include <optional>

class CardReceiver;

// Reads every card of a text, to its end. Text that is not UTF-8 and has no label is in `charset`, a code page; without
// one it is guessed, and the guess is the result.
std::optional<UINT> ReadCards(std::istream& text, std::optional<UINT> charset, CardReceiver& receiver);
