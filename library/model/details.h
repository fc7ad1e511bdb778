// The details objects of a destination list: a person with up to five fax numbers, and a distribution list. They hold
// every property of a destination that any export hands out.
#pragma once

#include "model/entries.h"

struct DestinationList;
struct SessionHandle;

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
    explicit CDistributionListDetails(DestinationList& theOwner)
        : CContentsDetails(EntryKind::DistributionList), owner(theOwner) {}

    struct CDetails : CObject {
        uint32_t objectType = 0;  // MAPI_MAILUSER, MAPI_DISTLIST, or 0 for any other
        CString name;
    };

    // The list that this one is in. A caller may hand it to another session, and its members belong here all the same.
    DestinationList& owner;
    // The direct members (CDetails); null until the details text of the list is asked for.
    CObList* members = nullptr;
};

// What a provider may add to a person: notes and attributes of the numbers, extra texts and values, all of its own
// meaning.
struct CUserCompanions {
    uint16_t extendedFaxValue1 = 0;
    uint16_t extendedFaxValue2 = 0;
    CString businessFaxAttr1;
    CString businessFaxAttr2;
    CString businessFaxNote;
    CString businessFaxAttr3;
    CString homeFaxAttr1;
    CString homeFaxAttr2;
    CString homeFaxNote;
    CString homeFaxAttr3;
    CString userExtraText;
    CString extraShortText;
    CString extendedFaxAttr1;
    CString extendedFaxAttr2;
    CString extendedFaxNote;
};

inline constexpr CUserCompanions noCompanions;

// A person. Most have no companions, and a large address book costs as much time as it takes memory: companions are an
// object of their own, made for whoever has one of them.
struct CUserDetails : CContentsDetails {
    CUserDetails() : CContentsDetails(EntryKind::User) {}
    CString company;
    CString department;
    CString businessFax;
    CString homeFax;
    CString primaryFax;
    CString otherFax;
    CString extendedFax;
    const CUserCompanions* companions = &noCompanions;
};

// The destinations of one address book, in the order of its contents table: CUserDetails and CDistributionListDetails.
struct DestinationList : CObjectList {
    explicit DestinationList(SessionHandle* theSession) : session(theSession) {}

    void DeleteAll() {
        CObjectList::DeleteAll();
        recordCount = 0;
    }

    SessionHandle* session;    // the session that owns this list
    uint32_t recordCount = 0;  // records that a caller needs for its objects
};

// The destination that a caller's handle names, or null when it names an address book or container. The handle must be
// a live one, not null.
inline CContentsDetails* AsDestination(void* handle) {
    auto* entry = static_cast<CHandleEntry*>(handle);
    const bool right = entry->kind == EntryKind::User || entry->kind == EntryKind::DistributionList;
    return right ? static_cast<CContentsDetails*>(entry) : nullptr;
}

// The session that owns a distribution list, whose entry is used while the provider is asked for its members and must
// stay so long. Null for any other entry: none of those is looked at once the provider has been called.
inline SessionHandle* FindOwningSession(void* handle) {
    const CContentsDetails* details = AsDestination(handle);
    if (details == nullptr || details->kind != EntryKind::DistributionList) return nullptr;
    return static_cast<const CDistributionListDetails*>(details)->owner.session;
}
