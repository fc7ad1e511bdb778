// The five fax numbers of a person, each with its companions, in the order in which records are made of them.
#pragma once

#include "model/details.h"

struct FaxSlot {
    CString CUserDetails::*number;
    CString CUserDetails::*note;  // null: there is none; so the attributes
    CString CUserDetails::*attr1;
    CString CUserDetails::*attr2;
    CString CUserDetails::*attr3;
    bool extended;  // a longer number, with the two extended values
};

inline constexpr FaxSlot FaxSlots[] = {
    {&CUserDetails::businessFax, &CUserDetails::businessFaxNote, &CUserDetails::businessFaxAttr1,
     &CUserDetails::businessFaxAttr2, &CUserDetails::businessFaxAttr3, false},
    {&CUserDetails::homeFax, &CUserDetails::homeFaxNote, &CUserDetails::homeFaxAttr1, &CUserDetails::homeFaxAttr2,
     &CUserDetails::homeFaxAttr3, false},
    {&CUserDetails::primaryFax, nullptr, nullptr, nullptr, nullptr, false},
    {&CUserDetails::extendedFax, &CUserDetails::extendedFaxNote, &CUserDetails::extendedFaxAttr1,
     &CUserDetails::extendedFaxAttr2, nullptr, true},
    {&CUserDetails::otherFax, nullptr, nullptr, nullptr, nullptr, false},
};

// The records that a person needs: one for each number, and one without any.
inline uint32_t CountRecords(const CUserDetails& user) {
    uint32_t numbers = 0;
    for (const FaxSlot& slot : FaxSlots) numbers += (user.*slot.number).IsEmpty() ? 0 : 1;
    return numbers != 0 ? numbers : 1;
}
