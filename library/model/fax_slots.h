// The five fax numbers of a person, each with its companions, in the order in which records are made of them.
#pragma once

#include "model/details.h"

struct FaxSlot {
    CString CUserDetails::*number;
    CString CUserCompanions::*note;  // null: there is none; so the attributes
    CString CUserCompanions::*attr1;
    CString CUserCompanions::*attr2;
    CString CUserCompanions::*attr3;
    bool extended;  // a longer number, with the two extended values
};

inline constexpr FaxSlot FaxSlots[] = {
    {&CUserDetails::businessFax, &CUserCompanions::businessFaxNote, &CUserCompanions::businessFaxAttr1,
     &CUserCompanions::businessFaxAttr2, &CUserCompanions::businessFaxAttr3, false},
    {&CUserDetails::homeFax, &CUserCompanions::homeFaxNote, &CUserCompanions::homeFaxAttr1,
     &CUserCompanions::homeFaxAttr2, &CUserCompanions::homeFaxAttr3, false},
    {&CUserDetails::primaryFax, nullptr, nullptr, nullptr, nullptr, false},
    {&CUserDetails::extendedFax, &CUserCompanions::extendedFaxNote, &CUserCompanions::extendedFaxAttr1,
     &CUserCompanions::extendedFaxAttr2, nullptr, true},
    {&CUserDetails::otherFax, nullptr, nullptr, nullptr, nullptr, false},
};

// The records that a person needs: one for each number, and one without any.
inline uint32_t CountRecords(const CUserDetails& user) {
    uint32_t numbers = 0;
    for (const FaxSlot& slot : FaxSlots) numbers += (user.*slot.number).IsEmpty() ? 0 : 1;
    return numbers != 0 ? numbers : 1;
}
