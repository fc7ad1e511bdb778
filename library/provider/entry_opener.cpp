// EntryOpener: the one place that calls IAddrBook::OpenEntry.
#include "provider/entry_opener.h"

namespace {

bool HasTables(ULONG type) {
    return type == MAPI_ABCONT || type == MAPI_DISTLIST || type == 0;
}

}  // namespace

Held<IABContainer> EntryOpener::OpenRoot() {
    Held<IABContainer> root;
    ULONG type = 0;
    if (FAILED(addressBook_->OpenEntry(0, nullptr, nullptr, 0, &type, root.ReceiveUnknown())) || !HasTables(type))
        root.Release();
    return root;
}

Held<IABContainer> EntryOpener::OpenContainer(std::string_view identifier) {
    Held<IABContainer> container;
    ULONG type = 0;
    if (!Open(identifier, type, container.ReceiveUnknown()) || !HasTables(type)) container.Release();
    return container;
}

Held<IMAPIProp> EntryOpener::OpenEntry(std::string_view identifier) {
    Held<IMAPIProp> entry;
    ULONG type = 0;
    if (!Open(identifier, type, entry.ReceiveUnknown())) entry.Release();
    return entry;
}

bool EntryOpener::Open(std::string_view identifier, ULONG& type, IUnknown** entry) {
    if (identifier.empty()) return false;
    copy_.assign(identifier.begin(), identifier.end());
    return SUCCEEDED(addressBook_->OpenEntry(static_cast<ULONG>(copy_.size()), copy_.data(), nullptr, 0, &type, entry));
}
