// The choice among several fax numbers.
#include "session/fax_places.h"

#include <tuple>
#include <utility>

namespace {

void Prefer(const FaxNumber& number, const FaxNumber*& place) {
    if (place == nullptr || number.preference < place->preference) place = &number;
}

FaxPlaces PlaceByKind(std::span<const FaxNumber> numbers, FaxPlacesFor reader) {
    FaxPlaces places;
    for (const FaxNumber& number : numbers) {
        if (number.kind == FaxKind::Business) Prefer(number, places.business);
        if (number.kind == FaxKind::Home) Prefer(number, places.home);
        if (number.kind == FaxKind::Primary) Prefer(number, places.primary);
    }
    const bool mayFillPrimary =
        reader == FaxPlacesFor::Listing || (places.business == nullptr && places.home == nullptr);
    for (const FaxNumber& number : numbers) {
        if (places.Contains(number)) continue;
        if (places.primary == nullptr && mayFillPrimary)
            places.primary = &number;
        else if (places.further == nullptr)
            places.further = &number;
    }
    return places;
}

bool IsBetter(const FaxNumber& a, const FaxNumber& b) {
    const auto rank = [](const FaxNumber& number) {
        const bool isPrimary = number.kind == FaxKind::Primary;
        return std::tuple(number.preference, !isPrimary, number.kind, &number);
    };
    return rank(a) < rank(b);
}

FaxPlaces PlaceBest(std::span<const FaxNumber> numbers) {
    FaxPlaces places;
    const FaxNumber** const order[] = {&places.business, &places.home, &places.further};
    for (const FaxNumber& number : numbers) {
        const FaxNumber* placed = &number;
        for (const FaxNumber** const place : order)
            if (placed != nullptr && (*place == nullptr || IsBetter(*placed, **place))) std::swap(placed, *place);
    }
    return places;
}

}  // namespace

FaxPlaces PlaceFaxNumbers(std::span<const FaxNumber> numbers, ContentsStyle style, FaxPlacesFor reader) {
    switch (style) {
        case ContentsStyle::Plain:
            return PlaceByKind(numbers, reader);
        case ContentsStyle::PrimarySecondary:
            return PlaceBest(numbers);
        case ContentsStyle::FaxEntries:
            break;
    }
    return {};
}
