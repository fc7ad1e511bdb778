// The column set of every hierarchy table. Values are read by position.
#pragma once

#include "mapi/mapi_types.h"

enum class HierarchyColumn : ULONG { DisplayName, EntryId, ObjectType, DisplayType, ServiceName, ProviderValue, Count };

inline constexpr PropTagArray<static_cast<ULONG>(HierarchyColumn::Count)> HierarchyColumns{
    .aulPropTag = {PR_DISPLAY_NAME, PR_ENTRYID, PR_OBJECT_TYPE, PR_DISPLAY_TYPE, PR_SERVICE_NAME,
                   PR_VOK_PROVIDER_VALUE}};

// The property tag of a column.
constexpr ULONG GetTag(HierarchyColumn column) {
    return HierarchyColumns.aulPropTag[static_cast<ULONG>(column)];
}
