// What a card and each of its numbers are known by when their file was read anew and they may stand elsewhere in it.
//
// The hashes are keyed: whoever writes a file cannot make two cards of one identity without knowing the key.
#pragma once

#include <cstdint>
#include <vector>

#include "cards/card_set.h"

// A card's identifier decides. Without one, it is all that is kept of the card, wherever it stands: two cards that
// differ in anything are two cards.
std::uint64_t IdentityOf(const CardSet& cards, const Card& card, std::uint64_t key);
// One fax number of a card: the number itself and its kind, not its place among the others.
std::uint64_t IdentityOf(std::uint64_t card, const CardSet& cards, const FaxNumber& number, std::uint64_t key);

// Whether two cards are the same in all that is kept of them but their lines, members in any order.
bool AreAlike(const CardSet& cardsOfA, const Card& a, const CardSet& cardsOfB, const Card& b, std::uint64_t key);
// Of each card of a set in their order; those of two sets are equal when at each position the cards are alike.
std::vector<std::uint64_t> HashCards(const CardSet& cards, std::uint64_t key);
