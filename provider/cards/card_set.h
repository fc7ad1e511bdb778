// The cards of one file, as small fixed records whose text lies in one piece, in the active code page. A set does not
// change once it is read; a file that changed is read into a new one.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cards/fax_rules.h"

// Positions of text in the set; 0 is the empty text.
using TextPosition = std::uint32_t;

// Bytes of a file: of a larger one, lines and positions might not be counted in 32 bits.
inline constexpr std::uint64_t mostFileBytes = UINT32_MAX;

struct FaxNumber {
    TextPosition number;
    std::uint32_t line;
    FaxKind kind;
    std::uint8_t preference;
};

// A card of one of a set's sources.
struct CardPlace {
    std::uint32_t source;
    std::uint32_t card;
    std::uint64_t identity;  // IdentityOf
};

// In a set of categories, which has sources, `place` names the member; else its address does.
struct Member {
    TextPosition address;  // as NormalisedAddress makes it
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

// An entry of a card: the card itself, or one of its fax numbers.
struct CardEntry {
    std::uint64_t identity;  // IdentityOf
    std::uint32_t card;
    std::optional<std::uint32_t> faxNumber;
};

class CardSet;

// A file of the session with its cards as they were read at some time.
struct FileCards {
    std::shared_ptr<const CardSet> cards;
    std::uint32_t file = 0;

    friend bool operator==(const FileCards&, const FileCards&) = default;
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
    // Of a set of categories: where its members stand.
    std::span<const FileCards> Sources() const { return sources_; }

    // Sets of the same file with the same number have the same cards at the same positions.
    std::uint32_t Edition() const { return edition_; }
    void SetEdition(std::uint32_t edition) { edition_ = edition; }

    // The cards that were left out because nothing in them is a name.
    size_t NamelessCount() const { return namelessCount_; }
    // The code page that unlabelled text was taken for, where it had to be guessed.
    std::optional<UINT> GuessedCharset() const { return guessedCharset_; }

    struct Address {
        TextPosition address;
        std::uint32_t card;
    };
    // The cards with this identifier or, where those were asked for, this address, as NormalisedAddress makes them, in
    // the order of the file. A card that says an address twice is there twice.
    std::span<const Address> Find(std::string_view address) const;
    // All of them, in any order.
    std::span<const Address> Addresses() const { return addresses_; }
    // IdentityOf a card, for what a card has many of. The key is the same each time, here and in what follows.
    std::uint64_t CardIdentity(std::uint32_t card, std::uint64_t key) const;
    // The entries of this identity.
    std::span<const CardEntry> FindIdentity(std::uint64_t identity, std::uint64_t key) const;

  private:
    friend class CardSetBuilder;

    std::string text_;
    std::vector<Card> cards_;
    std::vector<FaxNumber> faxNumbers_;
    std::vector<Member> members_;
    std::vector<Category> categories_;
    std::vector<FileCards> sources_;
    std::uint32_t edition_ = 0;
    size_t namelessCount_ = 0;
    std::optional<UINT> guessedCharset_;
    // Identifiers and addresses, sorted when the first one is looked for. A set belongs to one session, and a session
    // to one thread.
    mutable std::vector<Address> addresses_;
    mutable bool addressesSorted_ = false;
    // Every entry by its identity, made when the first one is looked for.
    mutable std::vector<CardEntry> entries_;
    // Of the card whose identity was asked for last.
    mutable std::optional<CardEntry> lastCard_;
};

// A member's address or a card's own identifier in the one form in which they are compared: "mailto:" and a lower-case
// address, "tel:" and digits, or a lower-case identifier without "urn:uuid:". It is ASCII, other bytes being escapes,
// so that no code page makes two of them one.
std::string NormalisedAddress(std::string_view address);
bool IsMailOrTelephoneAddress(std::string_view normalised);
// False for an address without anything that could tell one card from another: "tel:" before a word, "urn:uuid:" alone.
bool NamesSomething(std::string_view normalised);
