// SipHash-1-3 over what is kept of a card. A text ends with its terminator and a list says its length, so that no two
// cards give the same words.
#include "cards/card_identity.h"

#include <bit>
#include <cstring>

namespace {

class KeyedHash {
  public:
    explicit KeyedHash(std::uint64_t key)
        : a_(key ^ 0x736F6D6570736575U),
          b_(key ^ 0x646F72616E646F6DU),
          c_(key ^ 0x6C7967656E657261U),
          d_(key ^ 0x7465646279746573U) {}

    void Add(std::uint64_t word) {
        d_ ^= word;
        Round();
        a_ ^= word;
    }
    void Add(const char* text) {
        const size_t length = std::strlen(text);
        size_t hashed = 0;
        for (; length - hashed >= wordSize; hashed += wordSize) Add(WordAt(text + hashed));
        const size_t left = length - hashed;
        std::uint64_t last = 0;
        if (left > 0 && length >= wordSize)
            last = WordAt(text + length - wordSize) >> 8 * (wordSize - left);
        else
            for (size_t i = 0; i < left; ++i) last |= std::uint64_t{static_cast<unsigned char>(text[i])} << 8 * i;
        Add(last);
    }
    std::uint64_t Finish() {
        c_ ^= 0xFF;
        for (int i = 0; i < 3; ++i) Round();
        return a_ ^ b_ ^ c_ ^ d_;
    }

  private:
    static constexpr size_t wordSize = sizeof(std::uint64_t);

    static std::uint64_t WordAt(const char* bytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }
    void Round() {
        a_ += b_;
        c_ += d_;
        b_ = std::rotl(b_, 13) ^ a_;
        d_ = std::rotl(d_, 16) ^ c_;
        a_ = std::rotl(a_, 32);
        c_ += b_;
        a_ += d_;
        b_ = std::rotl(b_, 17) ^ c_;
        d_ = std::rotl(d_, 21) ^ a_;
        c_ = std::rotl(c_, 32);
    }

    std::uint64_t a_;
    std::uint64_t b_;
    std::uint64_t c_;
    std::uint64_t d_;
};

// The first word of what is hashed, so that hashes of different things are different.
enum class Hashed : std::uint64_t { PersonByIdentifier, GroupByIdentifier, Person, Group, FaxNumber, Member };

// Whoever is in a group is in it in any order.
std::uint64_t SumOfMembers(const CardSet& cards, const Card& card, std::uint64_t key) {
    std::uint64_t sum = 0;
    for (const Member& member : cards.Members(card)) {
        KeyedHash hash(key);
        hash.Add(static_cast<std::uint64_t>(Hashed::Member));
        hash.Add(cards.Text(member.address));
        hash.Add(member.place.identity);
        sum += hash.Finish();
    }
    return sum;
}

std::uint64_t HashOfAll(const CardSet& cards, const Card& card, std::uint64_t key) {
    KeyedHash hash(key);
    const TextPosition texts[] = {card.uid, card.name, card.company, card.department, card.comment, card.email};
    std::uint64_t which = static_cast<std::uint64_t>(card.isGroup ? Hashed::Group : Hashed::Person);
    for (const TextPosition text : texts) which = which << 1 | static_cast<std::uint64_t>(text != 0);
    hash.Add(which << 32 | card.faxNumberCount);
    for (const TextPosition text : texts)
        if (text != 0) hash.Add(cards.Text(text));
    for (const FaxNumber& number : cards.FaxNumbers(card)) {
        hash.Add(static_cast<std::uint64_t>(number.kind) << 8 | number.preference);
        hash.Add(cards.Text(number.number));
    }
    if (card.memberCount > 0) hash.Add(SumOfMembers(cards, card, key));
    return hash.Finish();
}

}  // namespace

std::uint64_t IdentityOf(const CardSet& cards, const Card& card, std::uint64_t key) {
    if (card.uid == 0) return HashOfAll(cards, card, key);
    KeyedHash hash(key);
    hash.Add(static_cast<std::uint64_t>(card.isGroup ? Hashed::GroupByIdentifier : Hashed::PersonByIdentifier));
    hash.Add(cards.Text(card.uid));
    return hash.Finish();
}

std::uint64_t IdentityOf(std::uint64_t card, const CardSet& cards, const FaxNumber& number, std::uint64_t key) {
    KeyedHash hash(key);
    hash.Add(static_cast<std::uint64_t>(Hashed::FaxNumber));
    hash.Add(card);
    hash.Add(static_cast<std::uint64_t>(number.kind));
    hash.Add(cards.Text(number.number));
    return hash.Finish();
}

bool AreAlike(const CardSet& cardsOfA, const Card& a, const CardSet& cardsOfB, const Card& b, std::uint64_t key) {
    return HashOfAll(cardsOfA, a, key) == HashOfAll(cardsOfB, b, key);
}

std::vector<std::uint64_t> HashCards(const CardSet& cards, std::uint64_t key) {
    std::vector<std::uint64_t> hashes;
    hashes.reserve(cards.Cards().size());
    for (const Card& card : cards.Cards()) hashes.push_back(HashOfAll(cards, card, key));
    return hashes;
}
