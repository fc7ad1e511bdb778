// EntryProperties: the values of some properties read from an entry itself.
#pragma once

#include <optional>

#include "provider/entry_opener.h"
#include "provider/property_values.h"

class EntryProperties {
  public:
    // Opens the entry and asks for the properties; not for an identifier without bytes, which is no person's.
    EntryProperties(EntryOpener& opener, SessionSupport* support, const EntryId* entryId, const SPropTagArray* tags);

    // The values in the order of the tags, valid as long as this object; nothing when they could not be had.
    std::optional<PropertyValues> GetValues() const;

  private:
    // The values go back before the entry is released.
    Held<IMAPIProp> entry_;
    HeldProperties properties_;
    bool succeeded_ = false;
};
