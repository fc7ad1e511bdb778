// What a group is read with before it is expanded: the values of the one entry of the address list.
#pragma once

#include "mapi/mapi_types.h"

inline constexpr PropTagArray<5> GroupRecipientTags{
    .aulPropTag = {PR_ENTRYID, PR_RECIPIENT_TYPE, PR_DISPLAY_NAME, PR_ADDRTYPE, PR_OBJECT_TYPE}};

// Of the value that is overwritten, with PR_RECIPIENT_TYPE as MAPI_TO.
inline constexpr ULONG recipientTypePosition = 1;
