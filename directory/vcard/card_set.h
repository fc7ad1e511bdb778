// The cards of one file, as small fixed records whose text lies in one piece, in the active code page. A set does not
// change once it is read; a file that changed is read into a new one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vcard/fax_rules.h"

class Diagnostics;

// Positions of text in the set; 0 is the empty text.
using TextPosition = std::uint32_t;

struct FaxNumber {
    TextPosition number;
    std::uint32_t line;
    FaxKind kind;
    std::uint8_t preference;
};

struct Member {
    TextPosition address;  // as NormalisedAddress makes it
    std::uint32_t line;
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
    // Reads a file's text; its size is needed only roughly, to make room. Only with keepAddresses can cards be found by
    // e-mail address and telephone number: that costs memory for every number, and few groups name their members so.
    static std::shared_ptr<const CardSet> Read(const std::filesystem::path& path, std::istream& text, size_t size,
                                               bool keepAddresses, Diagnostics& diagnostics);

    std::span<const Card> Cards() const { return cards_; }
    const char* Text(TextPosition position) const { return text_.data() + position; }
    std::span<const FaxNumber> FaxNumbers(const Card& card) const {
        return std::span(faxNumbers_).subspan(card.firstFaxNumber, card.faxNumberCount);
    }
    std::span<const Member> Members(const Card& card) const {
        return std::span(members_).subspan(card.firstMember, card.memberCount);
    }
    bool HasAddresses() const { return hasAddresses_; }

    // The card with this identifier or address, as NormalisedAddress makes it.
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
    bool hasAddresses_ = false;
    // Identifiers and addresses, sorted when the first one is looked for. A set belongs to one session, and a session
    // to one thread.
    mutable std::vector<Address> addresses_;
    mutable bool addressesSorted_ = false;
};

// A member's address or a card's own identifier in the one form in which they are compared: "mailto:" and a lower-case
// address, "tel:" and digits, or a lower-case identifier without "urn:uuid:".
std::string NormalisedAddress(std::string_view address);
bool IsMailOrTelephoneAddress(std::string_view normalised);
