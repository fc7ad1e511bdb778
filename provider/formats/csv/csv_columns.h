// What the columns of a CSV export mean, by their headings: those of mail programs, web address books and plain lists.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "cards/fax_rules.h"

enum class ColumnMeaning {
    Unknown,
    DisplayName,
    NamePrefix,
    GivenName,
    MiddleName,
    FamilyName,
    NameSuffix,
    Nickname,
    Company,
    Department,
    Note,
    Email,
    Categories,
    Telephone,       // the heading says which
    TelephoneLabel,  // what the number in the column of the same set is
    TelephoneValue,
};

struct CsvColumn {
    ColumnMeaning meaning = ColumnMeaning::Unknown;
    size_t set = 0;        // of a telephone's label and value
    std::string heading;   // to be told: cut
    TelephoneFacts facts;  // of the numbers below a telephone's heading that have no label
};

CsvColumn ReadHeading(std::string_view heading);
