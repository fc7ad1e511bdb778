// EntryOpener: the one place that calls IAddrBook::OpenEntry.
#include "provider/entry_opener.h"

Held<IABContainer> EntryOpener::OpenRoot() {
    constexpr EntryId root;
    return OpenContainer(&root);
}

Held<IABContainer> EntryOpener::OpenContainer(const EntryId* entryId) {
    Held<IABContainer> container;
    ULONG type = 0;
    if (!Open(entryId, type, container.ReceiveUnknown()) || type == MAPI_MAILUSER) container.Release();
    return container;
}

Held<IMAPIProp> EntryOpener::OpenEntry(const EntryId* entryId) {
    Held<IMAPIProp> entry;
    ULONG type = 0;
    if (!Open(entryId, type, entry.ReceiveUnknown())) entry.Release();
    return entry;
}

bool EntryOpener::Open(const EntryId* entryId, ULONG& type, IUnknown** entry) {
    if (entryId == nullptr) return false;
    copy_.assign(entryId->lpb, entryId->lpb + entryId->cb);
    BYTE* bytes = copy_.empty() ? nullptr : copy_.data();
    return SUCCEEDED(addressBook_->OpenEntry(entryId->cb, bytes, nullptr, 0, &type, entry));
}
