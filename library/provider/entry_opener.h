// EntryOpener: opens entries of one session's address book by their identifiers.
#pragma once

#include <string_view>
#include <vector>

#include "provider/holders.h"

class EntryOpener {
  public:
    explicit EntryOpener(IAddrBook* theAddressBook) : addressBook(theAddressBook) {}

    // The root container, or nothing.
    Held<IABContainer> OpenRoot();

    // The entry with that identifier as the interface it is known to have, or nothing. An identifier without bytes
    // opens nothing.
    template <class Interface>
    Held<Interface> Open(std::string_view identifier) {
        Held<Interface> entry;
        if (!OpenUnknown(identifier, entry.ReceiveUnknown())) entry.Release();
        return entry;
    }

  private:
    bool OpenUnknown(std::string_view identifier, IUnknown** entry);

    IAddrBook* addressBook;
    // What the provider gets is a copy, aligned as for any type, that it may even write to.
    std::vector<BYTE> copy;
};
