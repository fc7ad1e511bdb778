// The entries of the address-book tree, the base of everything that callers get handles of, and the kinds by which
// those are told apart. Objects own nothing by themselves: see CObjectList.
#pragma once

#include "model/object_list.h"
#include "provider/entry_id.h"

enum class EntryKind : uint32_t {
    AddressBook = 1,
    Container = 2,
    DistributionList = 3,
    User = 4,
};

// What an `entry` handle of a caller points to, of whichever family: the kind stands here for all of them.
struct CHandleEntry : CObject {
    explicit CHandleEntry(EntryKind theKind) : kind(theKind) {}
    EntryKind kind;
};

struct CBaseEntry : CHandleEntry {
    CBaseEntry(EntryKind theKind, CString theName) : CHandleEntry(theKind), name(theName) {}
    CString name;
    EntryId* entryId = nullptr;
};

// A container anywhere below an address book.
struct CContainerEntry : CBaseEntry {
    CContainerEntry(CString theName, const CContainerEntry* theParent, uint32_t theIndex)
        : CBaseEntry(EntryKind::Container, theName), index(theIndex), parent(theParent) {}
    uint32_t index;                 // position among all containers of its address book, depth first
    const CContainerEntry* parent;  // null directly below the address book
};

// A top-level address book of the session.
struct CAddressBookEntry : CBaseEntry {
    CAddressBookEntry(CString theName, CString theServiceName, uint32_t theProviderValue)
        : CBaseEntry(EntryKind::AddressBook, theName), providerValue(theProviderValue), serviceName(theServiceName) {}
    uint32_t providerValue;
    CString serviceName;
    // All containers below it (CContainerEntry), depth first, each before its own children; null until they are asked
    // for.
    CObList* children = nullptr;
};

// What a person stands for in the expansion of a group: one fax destination. Its texts are the person's own.
struct CRecipientEntry : CObject {
    CString name;
    CString faxNumber;
    CString company;
    CString department;
    CString faxAttr1;
    CString faxAttr2;
    CString faxAttr3;
};

// The address-book or container entry that a caller's handle names, or null when it names a destination. The handle
// must be a live one, not null.
inline const CBaseEntry* AsAddressBookEntry(const void* handle) {
    const auto* entry = static_cast<const CHandleEntry*>(handle);
    const bool right = entry->kind == EntryKind::AddressBook || entry->kind == EntryKind::Container;
    return right ? static_cast<const CBaseEntry*>(entry) : nullptr;
}
