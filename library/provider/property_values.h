// Reading property values: the values of one table row, of one recipient or of one GetProps call, by position. A value
// counts only when it exists and carries the tag asked for (a provider marks a value that it cannot deliver with
// PT_ERROR); any other value is missing.
#pragma once

#include <cstdint>

#include "mapi/mapi_types.h"

struct PropertyValues {
    PropertyValues(const SPropValue* theValues, ULONG theCount)
        : values_(theValues), count_(theValues != nullptr ? theCount : 0) {}
    explicit PropertyValues(const SRow& row) : PropertyValues(row.lpProps, row.cValues) {}
    explicit PropertyValues(const ADRENTRY& recipient) : PropertyValues(recipient.rgPropVals, recipient.cValues) {}

    // The value at a position whatever its tag, or null beyond the end.
    const SPropValue* At(ULONG column) const { return column < count_ ? values_ + column : nullptr; }

    // The value at a position if it carries the tag, else null.
    const SPropValue* Find(ULONG column, ULONG tag) const {
        const SPropValue* value = At(column);
        return value != nullptr && value->ulPropTag == tag ? value : nullptr;
    }

  private:
    const SPropValue* values_;
    ULONG count_;
};

// The text of a string value; empty when missing or null. Never null; the bytes are the provider's.
inline const char* GetColumnString(const PropertyValues& values, ULONG column, ULONG tag) {
    const SPropValue* value = values.Find(column, tag);
    return value != nullptr && value->Value.lpszA != nullptr ? value->Value.lpszA : "";
}

// The 16 bits of a PT_I2 value; 0 when missing.
inline uint16_t GetColumnShort(const PropertyValues& values, ULONG column, ULONG tag) {
    const SPropValue* value = values.Find(column, tag);
    return value != nullptr ? static_cast<uint16_t>(value->Value.i) : uint16_t{0};
}

// The 32 bits of a PT_LONG value; 0 when missing.
inline uint32_t GetColumnLong(const PropertyValues& values, ULONG column, ULONG tag) {
    const SPropValue* value = values.Find(column, tag);
    return value != nullptr ? static_cast<uint32_t>(value->Value.l) : 0;
}

// The object type of a row, read without looking at the value's tag; 0 when the row has no such value.
inline uint32_t GetObjectType(const PropertyValues& values, ULONG column) {
    const SPropValue* value = values.At(column);
    return value != nullptr ? static_cast<uint32_t>(value->Value.l) : 0;
}

// Whether the provider has marked the value at a position as one that it cannot deliver.
inline bool IsError(const PropertyValues& values, ULONG column) {
    const SPropValue* value = values.At(column);
    return value != nullptr && PROP_TYPE(value->ulPropTag) == PT_ERROR;
}
