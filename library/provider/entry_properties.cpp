// EntryProperties: opening and asking.
#include "provider/entry_properties.h"

EntryProperties::EntryProperties(EntryOpener& opener, SessionSupport* support, std::string_view identifier,
                                 const SPropTagArray* tags)
    : properties(support) {
    entry = opener.OpenEntry(identifier);
    if (!entry) return;
    succeeded = SUCCEEDED(entry->GetProps(tags, 0, &properties.count, &properties.values));
}

std::optional<PropertyValues> EntryProperties::GetValues() const {
    if (!succeeded || properties.values == nullptr) return std::nullopt;
    return PropertyValues(properties.values, properties.count);
}
