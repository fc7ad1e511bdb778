// The column set of every hierarchy table. Values are read by position.
#pragma once

#include "provider/property_values.h"

enum class HierarchyColumn : ULONG { DisplayName, EntryId, ObjectType, DisplayType, ServiceName, ProviderValue, Count };

inline constexpr PropTagArray<static_cast<ULONG>(HierarchyColumn::Count)> HierarchyColumns{
    .aulPropTag = {PR_DISPLAY_NAME, PR_ENTRYID, PR_OBJECT_TYPE, PR_DISPLAY_TYPE, PR_SERVICE_NAME,
                   PR_VOK_PROVIDER_VALUE}};

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
    static constexpr ULONG GetTag(HierarchyColumn column) {
        return HierarchyColumns.aulPropTag[static_cast<ULONG>(column)];
    }
    PropertyValues values_;
};
