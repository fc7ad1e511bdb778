// The Extended MAPI layouts and values that are exchanged with a provider, as published for 64-bit Windows: property
// values, tag arrays, row sets, address lists, property tags, object and display types, flags. Strings are 8-bit.
#pragma once

#include <windows.h>

#include <cstddef>

struct SBinary {
    ULONG cb;
    BYTE* lpb;
};

// The members of MAPI's property value union that this system meets.
union PropertyValue {
    short i;
    LONG l;
    char* lpszA;
    SBinary bin;
    LONG err;
};

struct SPropValue {
    ULONG ulPropTag;
    ULONG dwAlignPad;
    PropertyValue Value;
};

// Arrays of a length that is not known to the type: the declared length is 1, the count says how many there are.
struct SPropTagArray {
    ULONG cValues;
    ULONG aulPropTag[1];
};

struct SRow {
    ULONG ulAdrEntryPad;
    ULONG cValues;
    SPropValue* lpProps;
};

struct SRowSet {
    ULONG cRows;
    SRow aRow[1];
};

struct ADRENTRY {
    ULONG ulReserved1;
    ULONG cValues;
    SPropValue* rgPropVals;
};

struct ADRLIST {
    ULONG cEntries;
    ADRENTRY aEntries[1];
};

static_assert(sizeof(SPropValue) == 24 && offsetof(SPropValue, Value) == 8);
static_assert(sizeof(SRow) == 16 && offsetof(SRowSet, aRow) == 8);
static_assert(sizeof(ADRENTRY) == 16 && offsetof(ADRLIST, aEntries) == 8 && sizeof(ADRLIST) == 24);

// A tag array of a known length, laid out as SPropTagArray.
template <ULONG length>
struct PropTagArray {
    ULONG cValues = length;
    ULONG aulPropTag[length] = {};

    const SPropTagArray* Get() const { return reinterpret_cast<const SPropTagArray*>(this); }
};

// Property types: the low half of a tag.
inline constexpr ULONG PT_UNSPECIFIED = 0x0000;
inline constexpr ULONG PT_I2 = 0x0002;
inline constexpr ULONG PT_LONG = 0x0003;
inline constexpr ULONG PT_ERROR = 0x000A;
inline constexpr ULONG PT_STRING8 = 0x001E;
inline constexpr ULONG PT_BINARY = 0x0102;

constexpr ULONG PROP_TYPE(ULONG tag) {
    return tag & 0xFFFF;
}
constexpr ULONG PROP_ID(ULONG tag) {
    return tag >> 16;
}
constexpr ULONG CHANGE_PROP_TYPE(ULONG tag, ULONG type) {
    return (tag & 0xFFFF0000) | type;
}

inline constexpr ULONG PR_RECIPIENT_TYPE = 0x0C150003;
inline constexpr ULONG PR_OBJECT_TYPE = 0x0FFE0003;
inline constexpr ULONG PR_ENTRYID = 0x0FFF0102;
inline constexpr ULONG PR_BODY = 0x1000001E;
inline constexpr ULONG PR_DISPLAY_NAME = 0x3001001E;
inline constexpr ULONG PR_ADDRTYPE = 0x3002001E;
inline constexpr ULONG PR_EMAIL_ADDRESS = 0x3003001E;
inline constexpr ULONG PR_COMMENT = 0x3004001E;
inline constexpr ULONG PR_DISPLAY_TYPE = 0x30050003;
inline constexpr ULONG PR_ORIGINAL_DISPLAY_NAME = 0x3A13001E;
inline constexpr ULONG PR_COMPANY_NAME = 0x3A16001E;
inline constexpr ULONG PR_DEPARTMENT_NAME = 0x3A18001E;
inline constexpr ULONG PR_PRIMARY_FAX_NUMBER = 0x3A23001E;
inline constexpr ULONG PR_BUSINESS_FAX_NUMBER = 0x3A24001E;
inline constexpr ULONG PR_HOME_FAX_NUMBER = 0x3A25001E;
inline constexpr ULONG PR_SERVICE_NAME = 0x3D09001E;

// Properties of the provider's own meaning, carried to the caller unchanged.
inline constexpr ULONG PR_VOK_BUSINESS_FAX_NOTE = 0x5801001E;
inline constexpr ULONG PR_VOK_BUSINESS_FAX_ATTR1 = 0x5802001E;
inline constexpr ULONG PR_VOK_BUSINESS_FAX_ATTR2 = 0x5803001E;
inline constexpr ULONG PR_VOK_HOME_FAX_NOTE = 0x5804001E;
inline constexpr ULONG PR_VOK_HOME_FAX_ATTR1 = 0x5805001E;
inline constexpr ULONG PR_VOK_HOME_FAX_ATTR2 = 0x5806001E;
inline constexpr ULONG PR_VOK_BUSINESS_FAX_ATTR3 = 0x5807001E;
inline constexpr ULONG PR_VOK_HOME_FAX_ATTR3 = 0x5808001E;
inline constexpr ULONG PR_VOK_EXTRA_TEXT = 0x5809001E;
inline constexpr ULONG PR_VOK_EXTRA_SHORT_TEXT = 0x580A001E;
inline constexpr ULONG PR_VOK_EXTENDED_FAX_VALUE1 = 0x580B0002;
inline constexpr ULONG PR_VOK_EXTENDED_FAX_VALUE2 = 0x580C0002;
inline constexpr ULONG PR_VOK_EXTENDED_FAX = 0x580E001E;
inline constexpr ULONG PR_VOK_EXTENDED_FAX_ATTR1 = 0x580F001E;
inline constexpr ULONG PR_VOK_EXTENDED_FAX_ATTR2 = 0x5810001E;
inline constexpr ULONG PR_VOK_EXTENDED_FAX_NOTE = 0x5811001E;
inline constexpr ULONG PR_VOK_PROVIDER_VALUE = 0x60000003;

// Values of PR_OBJECT_TYPE and of the type that OpenEntry reports.
inline constexpr ULONG MAPI_ADDRBOOK = 2;
inline constexpr ULONG MAPI_ABCONT = 4;
inline constexpr ULONG MAPI_MAILUSER = 6;
inline constexpr ULONG MAPI_DISTLIST = 8;

// PR_RECIPIENT_TYPE: a primary recipient.
inline constexpr LONG MAPI_TO = 1;

// The first row of a table, for SeekRow.
inline constexpr ULONG BOOKMARK_BEGINNING = 0;

// Flags that callers may pass: for strings of 16-bit units, and for a hierarchy of all depths.
inline constexpr ULONG MAPI_UNICODE = 0x80000000;
inline constexpr ULONG CONVENIENT_DEPTH = 0x00000001;

// Values of PR_DISPLAY_TYPE.
inline constexpr LONG DT_MAILUSER = 0x00000000;
inline constexpr LONG DT_DISTLIST = 0x00000001;
inline constexpr LONG DT_LOCAL = 0x00030000;
