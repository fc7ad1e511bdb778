// Reading a row of a contents table, or a recipient of an expanded group, by its columns.
#pragma once

#include "mapi/contents_columns.h"
#include "provider/property_values.h"

// One row of a contents table, or one recipient of an expanded group.
class ContentsRow {
  public:
    explicit ContentsRow(const PropertyValues& rowValues) : values_(rowValues) {}

    const char* GetString(ContentsColumn column) const {
        return GetColumnString(values_, static_cast<ULONG>(column), GetTag(column));
    }
    uint16_t GetShort(ContentsColumn column) const {
        return GetColumnShort(values_, static_cast<ULONG>(column), GetTag(column));
    }
    // MAPI_MAILUSER, MAPI_DISTLIST or another value.
    uint32_t GetObjectType() const { return ::GetObjectType(values_, static_cast<ULONG>(ContentsColumn::ObjectType)); }
    // The value of PR_ENTRYID's position, whatever its tag; may be null.
    const SPropValue* GetEntryId() const { return values_.At(static_cast<ULONG>(ContentsColumn::EntryId)); }
    bool IsError(ContentsColumn column) const { return ::IsError(values_, static_cast<ULONG>(column)); }

  private:
    PropertyValues values_;
};
