// Property values as they are written for a caller: where their bytes lie, and what stands for a missing one.
#pragma once

#include <span>
#include <string_view>

#include "mapi/mapi_types.h"
#include "mapi_objects/memory.h"

// Writes one value. Text given with Point must outlive the buffer, through its KeepAlive; other bytes are copied.
class ValueWriter {
  public:
    ValueWriter(ULONG tag, SPropValue& value, ResultBuffer& buffer);

    void Point(const char* text);
    template <typename... Parts>
    void Compose(const Parts&... parts) {
        value_.ulPropTag = tag_;
        value_.Value.lpszA = buffer_.TakeText(parts...);
    }
    void Long(LONG number);
    void Binary(const void* bytes, size_t size);
    // A deep copy of another value of the same property; one of a type that is not known here stays missing.
    void Copy(const SPropValue& other);

    ULONG Tag() const { return tag_; }
    bool IsMissing() const { return PROP_TYPE(value_.ulPropTag) == PT_ERROR; }

  private:
    ULONG tag_;
    SPropValue& value_;
    ResultBuffer& buffer_;
};

// The tag itself, or for one without a type (PT_UNSPECIFIED) the tag with the type that the property has here.
ULONG TagWithType(ULONG tag);

// Every property that any object of this provider can have.
extern const std::span<const ULONG> knownProperties;
