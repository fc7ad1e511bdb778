// Each value begins as missing, and is written over when there is one.
#include "mapi_objects/values.h"

#include <cstring>

#include "mapi/result_codes.h"

namespace {

constexpr ULONG properties[] = {
    PR_DISPLAY_NAME,       PR_ENTRYID,         PR_OBJECT_TYPE,         PR_DISPLAY_TYPE,     PR_ADDRTYPE,
    PR_EMAIL_ADDRESS,      PR_COMMENT,         PR_COMPANY_NAME,        PR_DEPARTMENT_NAME,  PR_ORIGINAL_DISPLAY_NAME,
    PR_PRIMARY_FAX_NUMBER, PR_HOME_FAX_NUMBER, PR_BUSINESS_FAX_NUMBER, PR_VOK_EXTENDED_FAX, PR_SERVICE_NAME,
    PR_VOK_PROVIDER_VALUE,
};

}  // namespace

const std::span<const ULONG> knownProperties = properties;

ULONG TagWithType(ULONG tag) {
    if (PROP_TYPE(tag) != PT_UNSPECIFIED) return tag;
    for (const ULONG property : properties)
        if (PROP_ID(property) == PROP_ID(tag)) return property;
    return tag;
}

ValueWriter::ValueWriter(ULONG tag, SPropValue& value, ResultBuffer& buffer)
    : tag_(tag), value_(value), buffer_(buffer) {
    value_.ulPropTag = CHANGE_PROP_TYPE(tag, PT_ERROR);
    value_.dwAlignPad = 0;
    value_.Value = {};
    value_.Value.err = MAPI_E_NOT_FOUND;
}

void ValueWriter::Point(const char* text) {
    value_.ulPropTag = tag_;
    // MAPI's strings are not const; nobody writes to a row's text.
    value_.Value.lpszA = const_cast<char*>(text);
}

void ValueWriter::Long(LONG number) {
    value_.ulPropTag = tag_;
    value_.Value.l = number;
}

void ValueWriter::Binary(const void* bytes, size_t size) {
    BYTE* const copy = buffer_.Take<BYTE>(size);
    std::memcpy(copy, bytes, size);
    value_.ulPropTag = tag_;
    value_.Value.bin = {static_cast<ULONG>(size), copy};
}

void ValueWriter::Copy(const SPropValue& other) {
    switch (PROP_TYPE(other.ulPropTag)) {
        case PT_STRING8:
            if (other.Value.lpszA != nullptr) Compose(std::string_view(other.Value.lpszA));
            break;
        case PT_BINARY:
            if (other.Value.bin.lpb != nullptr) Binary(other.Value.bin.lpb, other.Value.bin.cb);
            break;
        case PT_LONG:
            Long(other.Value.l);
            break;
        case PT_I2:
            value_.ulPropTag = tag_;
            value_.Value.i = other.Value.i;
            break;
        default:
            break;
    }
}
