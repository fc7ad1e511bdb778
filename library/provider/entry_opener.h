// EntryOpener: opens entries of one session's address book by their identifiers.
#pragma once

#include <string_view>
#include <vector>

#include "provider/holders.h"

// An identifier without bytes opens nothing. An entry is released at once when its type says that it lacks the methods
// of the interface; a provider that tells no type is believed.
class EntryOpener {
  public:
    explicit EntryOpener(IAddrBook* theAddressBook) : addressBook_(theAddressBook) {}

    // The root container, or nothing.
    Held<IABContainer> OpenRoot();

    // The container or distribution list with that identifier, or nothing.
    Held<IABContainer> OpenContainer(std::string_view identifier);

    // Any entry with that identifier, for its properties, or nothing.
    Held<IMAPIProp> OpenEntry(std::string_view identifier);

  private:
    bool Open(std::string_view identifier, ULONG& type, IUnknown** entry);

    IAddrBook* addressBook_;
    // What the provider gets is a copy, aligned as for any type, that it may even write to.
    std::vector<BYTE> copy_;
};
