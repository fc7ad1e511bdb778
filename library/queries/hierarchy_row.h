// Reading a row of a hierarchy table by its columns.
#pragma once

#include "mapi/hierarchy_columns.h"
#include "provider/property_values.h"

// One row of a hierarchy table.
class HierarchyRow {
  public:
    explicit HierarchyRow(const PropertyValues& rowValues) : values_(rowValues) {}

    const char* GetString(HierarchyColumn column) const {
        return GetColumnString(values_, static_cast<ULONG>(column), GetTag(column));
    }
    uint32_t GetLong(HierarchyColumn column) const {
        return GetColumnLong(values_, static_cast<ULONG>(column), GetTag(column));
    }
    // The value of PR_ENTRYID's position, whatever its tag; may be null.
    const SPropValue* GetEntryId() const { return values_.At(static_cast<ULONG>(HierarchyColumn::EntryId)); }

  private:
    PropertyValues values_;
};
