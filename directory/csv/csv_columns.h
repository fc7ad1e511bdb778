// What the columns of a CSV export mean, by their headings: those of mail programs, web address books and plain lists.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

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
    size_t set = 0;  // of a telephone's label and value
    std::string heading;
};

CsvColumn ReadHeading(std::string_view heading);
