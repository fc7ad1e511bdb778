// Looks for cards by their identifiers and addresses in several files at once.
#pragma once

#include <string_view>
#include <vector>

#include "session/session.h"

class CardSearch {
  public:
    // Reads the files, with the e-mail addresses and numbers of their cards if those are looked for.
    CardSearch(Session& session, const std::vector<std::uint32_t>& files, bool withAddresses);

    // The cards with this address, as NormalisedAddress makes it, in the order of the files and in each of its cards.
    std::vector<CardReference> Find(std::string_view address);

  private:
    struct Place {
        std::string_view address;
        std::uint32_t set;
        std::uint32_t card;
    };

    void MakeIndex();

    std::vector<FileCards> sets_;  // those with addresses
    size_t addressCount_ = 0;
    size_t setsLookedAt_ = 0;
    std::vector<Place> index_;  // by address, set and card; empty until it pays
};
