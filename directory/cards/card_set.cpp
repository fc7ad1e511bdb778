// Finding cards by their identifiers and addresses.
#include "cards/card_set.h"

#include <algorithm>
#include <iterator>

#include "text/ascii.h"

std::uint64_t IdentityOf(const CardSet& cards, const Card& card) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char* text = cards.Text(card.uid != 0 ? card.uid : card.name); *text != '\0'; ++text)
        hash = (hash ^ static_cast<unsigned char>(*text)) * 0x100000001B3U;
    return hash;
}

std::string NormalisedAddress(std::string_view address) {
    address = Trimmed(address);
    if (StartsWithIgnoringCase(address, "tel:")) {
        std::string number = "tel:";
        const std::string_view subscriber = address.substr(4, address.find(';') - 4);
        std::copy_if(subscriber.begin(), subscriber.end(), std::back_inserter(number),
                     [](char c) { return (c >= '0' && c <= '9') || c == '+'; });
        return number;
    }
    if (StartsWithIgnoringCase(address, "mailto:")) return LowerCased(address.substr(0, address.find('?')));
    if (StartsWithIgnoringCase(address, "urn:uuid:")) address.remove_prefix(9);
    return LowerCased(address);
}

bool IsMailOrTelephoneAddress(std::string_view normalised) {
    return normalised.starts_with("mailto:") || normalised.starts_with("tel:");
}

std::optional<std::uint32_t> CardSet::Find(std::string_view address) const {
    const auto text = [this](const Address& known) { return std::string_view(Text(known.address)); };
    if (!addressesSorted_) {
        // Of cards with the same address the first in the file is found.
        std::sort(addresses_.begin(), addresses_.end(), [&](const Address& a, const Address& b) {
            const int order = text(a).compare(text(b));
            return order != 0 ? order < 0 : a.card < b.card;
        });
        addressesSorted_ = true;
    }
    const auto found =
        std::lower_bound(addresses_.begin(), addresses_.end(), address,
                         [&](const Address& known, std::string_view wanted) { return text(known) < wanted; });
    if (found == addresses_.end() || text(*found) != address) return std::nullopt;
    return found->card;
}
