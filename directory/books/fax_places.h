// Which of a person's fax numbers stand in the three columns of a contents table.
#pragma once

#include <span>

#include "books/book_settings.h"
#include "vcard/card_set.h"

// Null where a column stays empty.
struct FaxPlaces {
    const FaxNumber* business = nullptr;
    const FaxNumber* home = nullptr;
    const FaxNumber* primary = nullptr;

    bool Hold(const FaxNumber& number) const { return business == &number || home == &number || primary == &number; }
};

// Plain: of each kind the preferred number, else the first, takes the kind's place; the first of the rest takes the
// primary place if that is free. Primary and secondary: the two best numbers take the business and the home place; the
// primary place stays empty, because a group is sent to that number alone where there is one.
// An address book of fax entries has no columns to fill.
FaxPlaces PlaceFaxNumbers(std::span<const FaxNumber> numbers, ContentsStyle style);
