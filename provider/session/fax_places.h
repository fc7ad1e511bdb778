// Which of a person's fax numbers stand in the columns of a contents table.
#pragma once

#include <span>

#include "cards/card_set.h"
#include "sources/files/book_settings.h"

// Null where a column stays empty.
struct FaxPlaces {
    const FaxNumber* business = nullptr;
    const FaxNumber* home = nullptr;
    const FaxNumber* primary = nullptr;
    const FaxNumber* further = nullptr;  // in the column of the extended number

    bool Contains(const FaxNumber& number) const {
        return business == &number || home == &number || primary == &number || further == &number;
    }
};

// Who reads the columns: a list of people, or whoever sends to a group's members.
enum class FaxPlacesFor { Listing, Recipient };

// Plain: of each kind the preferred number, else the first, takes the kind's place; the first of the rest takes the
// primary place if that is free, the next one the further place. For a recipient the rest take the primary place only
// where no number has a place of its own: a group is sent to the primary number alone where there is one.
// Primary and secondary: the three best numbers take the business, the home and the further place; the primary place
// stays empty, for the same reason.
// An address book of fax entries has no columns to fill.
FaxPlaces PlaceFaxNumbers(std::span<const FaxNumber> numbers, ContentsStyle style,
                          FaxPlacesFor reader = FaxPlacesFor::Listing);
