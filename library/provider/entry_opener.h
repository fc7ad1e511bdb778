// EntryOpener: opens entries of one session's address book by their identifiers.
#pragma once

#include <vector>

#include "provider/entry_id.h"
#include "provider/holders.h"

// No identifier (null) opens nothing; one of 0 bytes is an identifier, the root container's. What opens is used
// whatever its type, but for a person in a container's place, which lacks the methods.
class EntryOpener {
  public:
    explicit EntryOpener(IAddrBook* theAddressBook) : addressBook_(theAddressBook) {}

    // The root container, or nothing.
    Held<IABContainer> OpenRoot();

    // The container or distribution list with that identifier, or nothing.
    Held<IABContainer> OpenContainer(const EntryId* entryId);

    // Any entry with that identifier, for its properties, or nothing.
    Held<IMAPIProp> OpenEntry(const EntryId* entryId);

  private:
    bool Open(const EntryId* entryId, ULONG& type, IUnknown** entry);

    IAddrBook* addressBook_;
    // What the provider gets is a copy, aligned as for any type, that it may even write to.
    std::vector<BYTE> copy_;
};
