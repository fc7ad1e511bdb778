// The cards of one file, as small fixed records whose text lies in one piece, in the active code page. A set does not
// change once it is read; a file that changed is read into a new one.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cards/fax_rules.h"

// Positions of text in the set; 0 is the empty text.
using TextPosition = std::uint32_t;

struct FaxNumber {
    TextPosition number;
    std::uint32_t line;
    FaxKind kind;
    std::uint8_t preference;
};

// A card of any file of the session, found again when its file was read anew.
struct CardPlace {
    std::uint32_t file;
    std::uint32_t card;
    std::uint64_t identity;  // IdentityOf
};

struct Member {
    TextPosition address;  // as NormalisedAddress makes it; 0 for a member of a category, which `place` names
    std::uint32_t line;
    CardPlace place;
};

struct Category {
    TextPosition name;
    std::uint32_t card;
};

struct Card {
    TextPosition name;
    TextPosition company;
    TextPosition department;
    TextPosition comment;
    TextPosition email;
    TextPosition uid;  // as NormalisedAddress makes it
    std::uint32_t line;
    std::uint32_t firstFaxNumber;
    std::uint32_t faxNumberCount;
    std::uint32_t firstMember;
    std::uint32_t memberCount;
    bool isGroup;
};

class CardSet {
  public:
    std::span<const Card> Cards() const { return cards_; }
    const char* Text(TextPosition position) const { return text_.data() + position; }
    std::span<const FaxNumber> FaxNumbers(const Card& card) const {
        return std::span(faxNumbers_).subspan(card.firstFaxNumber, card.faxNumberCount);
    }
    std::span<const Member> Members(const Card& card) const {
        return std::span(members_).subspan(card.firstMember, card.memberCount);
    }
    // In the order of the file; empty unless they were asked for.
    std::span<const Category> Categories() const { return categories_; }

    // The cards that were left out because nothing in them is a name.
    size_t NamelessCount() const { return namelessCount_; }
    // The code page that unlabelled text was taken for, where it had to be guessed.
    std::optional<UINT> GuessedCharset() const { return guessedCharset_; }

    // The card with this identifier or, where those were asked for, this address, as NormalisedAddress makes them.
    std::optional<std::uint32_t> Find(std::string_view address) const;

  private:
    friend class CardSetBuilder;
    struct Address {
        TextPosition address;
        std::uint32_t card;
    };

    std::string text_;
    std::vector<Card> cards_;
    std::vector<FaxNumber> faxNumbers_;
    std::vector<Member> members_;
    std::vector<Category> categories_;
    size_t namelessCount_ = 0;
    std::optional<UINT> guessedCharset_;
    // Identifiers and addresses, sorted when the first one is looked for. A set belongs to one session, and a session
    // to one thread.
    mutable std::vector<Address> addresses_;
    mutable bool addressesSorted_ = false;
};

// What stays the same when a card's file is read anew: its identifier, or without one its name.
std::uint64_t IdentityOf(const CardSet& cards, const Card& card);

// A member's address or a card's own identifier in the one form in which they are compared: "mailto:" and a lower-case
// address, "tel:" and digits, or a lower-case identifier without "urn:uuid:".
std::string NormalisedAddress(std::string_view address);
bool IsMailOrTelephoneAddress(std::string_view normalised);
