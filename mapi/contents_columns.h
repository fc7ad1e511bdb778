// The column set of every contents table, and of every recipient of an expanded group. Values are read by position.
#pragma once

#include "mapi/mapi_types.h"

enum class ContentsColumn : ULONG {
    DisplayName,
    EntryId,
    ObjectType,
    AddrType,
    PrimaryFaxNumber,
    HomeFaxNumber,
    HomeFaxAttr1,
    HomeFaxAttr2,
    HomeFaxNote,
    HomeFaxAttr3,
    BusinessFaxNumber,
    BusinessFaxAttr1,
    BusinessFaxAttr2,
    BusinessFaxNote,
    BusinessFaxAttr3,
    Comment,
    OriginalDisplayName,
    EmailAddress,
    CompanyName,
    DepartmentName,
    ExtraText,
    ExtraShortText,
    ExtendedFaxValue1,
    ExtendedFaxValue2,
    ExtendedFax,
    ExtendedFaxAttr1,
    ExtendedFaxAttr2,
    ExtendedFaxNote,
    Count,
};

inline constexpr PropTagArray<static_cast<ULONG>(ContentsColumn::Count)> ContentsColumns{
    .aulPropTag = {PR_DISPLAY_NAME,
                   PR_ENTRYID,
                   PR_OBJECT_TYPE,
                   PR_ADDRTYPE,
                   PR_PRIMARY_FAX_NUMBER,
                   PR_HOME_FAX_NUMBER,
                   PR_VOK_HOME_FAX_ATTR1,
                   PR_VOK_HOME_FAX_ATTR2,
                   PR_VOK_HOME_FAX_NOTE,
                   PR_VOK_HOME_FAX_ATTR3,
                   PR_BUSINESS_FAX_NUMBER,
                   PR_VOK_BUSINESS_FAX_ATTR1,
                   PR_VOK_BUSINESS_FAX_ATTR2,
                   PR_VOK_BUSINESS_FAX_NOTE,
                   PR_VOK_BUSINESS_FAX_ATTR3,
                   PR_COMMENT,
                   PR_ORIGINAL_DISPLAY_NAME,
                   PR_EMAIL_ADDRESS,
                   PR_COMPANY_NAME,
                   PR_DEPARTMENT_NAME,
                   PR_VOK_EXTRA_TEXT,
                   PR_VOK_EXTRA_SHORT_TEXT,
                   PR_VOK_EXTENDED_FAX_VALUE1,
                   PR_VOK_EXTENDED_FAX_VALUE2,
                   PR_VOK_EXTENDED_FAX,
                   PR_VOK_EXTENDED_FAX_ATTR1,
                   PR_VOK_EXTENDED_FAX_ATTR2,
                   PR_VOK_EXTENDED_FAX_NOTE}};

// The property tag of a column.
constexpr ULONG GetTag(ContentsColumn column) {
    return ContentsColumns.aulPropTag[static_cast<ULONG>(column)];
}
