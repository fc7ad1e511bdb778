// EntryProperties: opening and asking.
#include "provider/entry_properties.h"

EntryProperties::EntryProperties(EntryOpener& opener, SessionSupport* support, const EntryId* entryId,
                                 const SPropTagArray* tags)
    : properties_(support) {
    if (GetBytes(entryId).empty()) return;
    entry_ = opener.OpenEntry(entryId);
    if (!entry_) return;
    succeeded_ = SUCCEEDED(entry_->GetProps(tags, 0, &properties_.count, &properties_.values));
}

std::optional<PropertyValues> EntryProperties::GetValues() const {
    if (!succeeded_ || properties_.values == nullptr) return std::nullopt;
    return PropertyValues(properties_.values, properties_.count);
}
