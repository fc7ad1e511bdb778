// The choice among several fax numbers.
#include "books/fax_places.h"

#include <tuple>

namespace {

void Prefer(const FaxNumber& number, const FaxNumber*& place) {
    if (place == nullptr || number.preference < place->preference) place = &number;
}

FaxPlaces PlaceByKind(std::span<const FaxNumber> numbers) {
    FaxPlaces places;
    for (const FaxNumber& number : numbers) {
        if (number.kind == FaxKind::Business) Prefer(number, places.business);
        if (number.kind == FaxKind::Home) Prefer(number, places.home);
        if (number.kind == FaxKind::Primary) Prefer(number, places.primary);
    }
    for (const FaxNumber& number : numbers)
        if (places.primary == nullptr && !places.Hold(number)) places.primary = &number;
    return places;
}

bool IsBetter(const FaxNumber& a, const FaxNumber& b) {
    const auto rank = [](const FaxNumber& number) {
        const bool isPrimary = number.kind == FaxKind::Primary;
        return std::tuple(number.preference, !isPrimary, number.kind, &number);
    };
    return rank(a) < rank(b);
}

FaxPlaces PlaceBestTwo(std::span<const FaxNumber> numbers) {
    FaxPlaces places;
    for (const FaxNumber& number : numbers) {
        if (places.business == nullptr || IsBetter(number, *places.business)) {
            places.home = places.business;
            places.business = &number;
        } else if (places.home == nullptr || IsBetter(number, *places.home)) {
            places.home = &number;
        }
    }
    return places;
}

}  // namespace

FaxPlaces PlaceFaxNumbers(std::span<const FaxNumber> numbers, ContentsStyle style) {
    switch (style) {
        case ContentsStyle::Plain:
            return PlaceByKind(numbers);
        case ContentsStyle::PrimarySecondary:
            return PlaceBestTwo(numbers);
        case ContentsStyle::FaxEntries:
            break;
    }
    return {};
}
