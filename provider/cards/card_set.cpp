// Finding cards by their identifiers and addresses, and entries by what they are known by.
#include "cards/card_set.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "cards/card_identity.h"
#include "text/ascii.h"
#include "text/byte_escapes.h"

namespace {

std::string LowerCasedInAscii(std::string_view text) {
    if (IsAscii(text)) return LowerCased(text);
    std::string ascii;
    for (const char c : text) {
        if (static_cast<signed char>(c) < 0)
            AppendByteEscape(static_cast<unsigned char>(c), ascii);
        else
            ascii.push_back(ToLowerAscii(c));
    }
    return ascii;
}

}  // namespace

std::string NormalisedAddress(std::string_view address) {
    address = Trimmed(address);
    if (StartsWithIgnoringCase(address, "tel:")) {
        std::string number = "tel:";
        const std::string_view subscriber = address.substr(4, address.find(';') - 4);
        std::copy_if(subscriber.begin(), subscriber.end(), std::back_inserter(number),
                     [](char c) { return (c >= '0' && c <= '9') || c == '+'; });
        return number;
    }
    if (StartsWithIgnoringCase(address, "mailto:")) return LowerCasedInAscii(address.substr(0, address.find('?')));
    if (StartsWithIgnoringCase(address, "urn:uuid:")) address.remove_prefix(9);
    return LowerCasedInAscii(address);
}

bool IsMailOrTelephoneAddress(std::string_view normalised) {
    return normalised.starts_with("mailto:") || normalised.starts_with("tel:");
}

bool NamesSomething(std::string_view normalised) {
    if (normalised.starts_with("tel:")) return normalised.find_first_of("0123456789") != std::string_view::npos;
    return !normalised.empty() && normalised != "mailto:";
}

// No text is measured to be compared: one may be as long as all others together.
std::span<const CardSet::Address> CardSet::Find(std::string_view address) const {
    if (!addressesSorted_) {
        std::sort(addresses_.begin(), addresses_.end(), [this](const Address& a, const Address& b) {
            const int order = std::strcmp(Text(a.address), Text(b.address));
            return order != 0 ? order < 0 : a.card < b.card;
        });
        addressesSorted_ = true;
    }
    const std::string wanted(address);
    const auto first =
        std::lower_bound(addresses_.begin(), addresses_.end(), wanted.c_str(),
                         [this](const Address& a, const char* b) { return std::strcmp(Text(a.address), b) < 0; });
    const auto last =
        std::upper_bound(first, addresses_.end(), wanted.c_str(),
                         [this](const char* a, const Address& b) { return std::strcmp(a, Text(b.address)) < 0; });
    return {addresses_.data() + (first - addresses_.begin()), static_cast<size_t>(last - first)};
}

std::uint64_t CardSet::CardIdentity(std::uint32_t card, std::uint64_t key) const {
    if (!lastCard_ || lastCard_->card != card) lastCard_ = {IdentityOf(*this, cards_[card], key), card, std::nullopt};
    return lastCard_->identity;
}

std::span<const CardEntry> CardSet::FindIdentity(std::uint64_t identity, std::uint64_t key) const {
    if (entries_.empty()) {
        entries_.reserve(cards_.size() + faxNumbers_.size());
        for (std::uint32_t card = 0; card < cards_.size(); ++card) {
            const std::uint64_t ofCard = IdentityOf(*this, cards_[card], key);
            entries_.push_back({ofCard, card, std::nullopt});
            const std::span<const FaxNumber> numbers = FaxNumbers(cards_[card]);
            for (std::uint32_t i = 0; i < numbers.size(); ++i)
                entries_.push_back({IdentityOf(ofCard, *this, numbers[i], key), card, i});
        }
        std::ranges::sort(entries_, {}, &CardEntry::identity);
    }
    const auto first = std::lower_bound(entries_.begin(), entries_.end(), identity,
                                        [](const CardEntry& a, std::uint64_t b) { return a.identity < b; });
    const auto last = std::upper_bound(first, entries_.end(), identity,
                                       [](std::uint64_t a, const CardEntry& b) { return a < b.identity; });
    return {entries_.data() + (first - entries_.begin()), static_cast<size_t>(last - first)};
}
