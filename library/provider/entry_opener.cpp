// EntryOpener: the one place that calls IAddrBook::OpenEntry.
#include "provider/entry_opener.h"

Held<IABContainer> EntryOpener::OpenRoot() {
    Held<IABContainer> root;
    ULONG type = 0;
    if (FAILED(addressBook->OpenEntry(0, nullptr, nullptr, 0, &type, root.ReceiveUnknown()))) root.Release();
    return root;
}

bool EntryOpener::OpenUnknown(std::string_view identifier, IUnknown** entry) {
    if (identifier.empty()) return false;
    copy.assign(identifier.begin(), identifier.end());
    ULONG type = 0;
    return SUCCEEDED(addressBook->OpenEntry(static_cast<ULONG>(copy.size()), copy.data(), nullptr, 0, &type, entry));
}
