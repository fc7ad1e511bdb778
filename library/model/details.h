// The details objects of a destination list: a person with up to five fax numbers, and a distribution list. They hold
// every property of a destination that any export hands out.
#pragma once

#include "model/entries.h"

struct CEntryDetails : CHandleEntry {
    using CHandleEntry::CHandleEntry;
    CString name;
    EntryId* entryId = nullptr;
};

struct CContentsDetails : CEntryDetails {
    using CEntryDetails::CEntryDetails;
    CString comment;
    CString extraText;  // of a distribution list only
};

struct CDistributionListDetails : CContentsDetails {
    CDistributionListDetails() : CContentsDetails(EntryKind::DistributionList) {}

    struct CDetails : CObject {
        uint32_t objectType = 0;  // MAPI_MAILUSER, MAPI_DISTLIST, or 0 for any other
        CString name;
    };

    // The direct members (CDetails); null until the details text of the list is asked for.
    CObList* members = nullptr;
};

// A person. The notes, attributes, extra texts and values are of the provider's own meaning.
struct CUserDetails : CContentsDetails {
    CUserDetails() : CContentsDetails(EntryKind::User) {}
    uint16_t extendedFaxValue1 = 0;
    uint16_t extendedFaxValue2 = 0;
    CString company;
    CString department;
    CString businessFax;
    CString businessFaxAttr1;
    CString businessFaxAttr2;
    CString businessFaxNote;
    CString businessFaxAttr3;
    CString homeFax;
    CString homeFaxAttr1;
    CString homeFaxAttr2;
    CString homeFaxNote;
    CString homeFaxAttr3;
    CString primaryFax;
    CString otherFax;
    CString userExtraText;
    CString extraShortText;
    CString extendedFax;
    CString extendedFaxAttr1;
    CString extendedFaxAttr2;
    CString extendedFaxNote;
};

// The destinations of one address book, in the order of its contents table: CUserDetails and CDistributionListDetails.
struct DestinationList : CObjectList {
    using CObjectList::CObjectList;
    uint32_t recordCount = 0;  // records that a caller needs for them
};

// The destination that a caller's handle names, or null when it names an address book or container. The handle must be
// a live one, not null.
inline CContentsDetails* AsDestination(void* handle) {
    auto* entry = static_cast<CHandleEntry*>(handle);
    const bool right = entry->kind == EntryKind::User || entry->kind == EntryKind::DistributionList;
    return right ? static_cast<CContentsDetails*>(entry) : nullptr;
}
