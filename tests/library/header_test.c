/* The public header is C, and its records lie as every caller that was ever built expects them. */
#include "qdxl7rc.h"

#include <assert.h>
#include <stddef.h>

#define AT(record, field, offset, bytes)                                                 \
    static_assert(offsetof(record, field) == (offset), #record "." #field " has moved"); \
    static_assert(sizeof(((record*)0)->field) == (bytes), #record "." #field " has another size")

static_assert(sizeof(RecordListDescriptor) == 16, "RecordListDescriptor");
AT(RecordListDescriptor, recordSize, 0, 2);
AT(RecordListDescriptor, recordStorage, 8, 8);

static_assert(sizeof(ServiceRecord) == 48, "ServiceRecord");
AT(ServiceRecord, serviceName, 0, 32);
AT(ServiceRecord, serviceFlags, 32, 4);

AT(AddressBookRecord, parent, 0, 8);
AT(AddressBookRecord, entry, 8, 8);
AT(AddressBookRecord, providerValue, 16, 4);
AT(AddressBookRecord, name, 20, 260);
AT(AddressBookRecord, serviceName, 280, 260);

static_assert(sizeof(DestinationRecord) == 824, "DestinationRecord");
AT(DestinationRecord, type, 0, 2);
AT(DestinationRecord, entry, 8, 8);
AT(DestinationRecord, name, 16, 88);
AT(DestinationRecord, faxNumber, 104, 124);
AT(DestinationRecord, company, 228, 44);
AT(DestinationRecord, department, 272, 44);
AT(DestinationRecord, faxNote, 316, 44);
AT(DestinationRecord, comment, 360, 256);
AT(DestinationRecord, faxAttr1, 616, 24);
AT(DestinationRecord, faxAttr2, 640, 24);
AT(DestinationRecord, faxAttr3, 664, 24);
AT(DestinationRecord, extraText, 688, 88);
AT(DestinationRecord, extraShortText, 776, 44);
AT(DestinationRecord, extendedFaxValue1, 820, 2);
AT(DestinationRecord, extendedFaxValue2, 822, 2);

static_assert(sizeof(GroupMemberRecord) == 860, "GroupMemberRecord");
AT(GroupMemberRecord, contentsStyle, 0, 4);
AT(GroupMemberRecord, name, 4, 88);
AT(GroupMemberRecord, company, 92, 44);
AT(GroupMemberRecord, department, 136, 44);
AT(GroupMemberRecord, businessFax, 180, 48);
AT(GroupMemberRecord, businessFaxNote, 228, 44);
AT(GroupMemberRecord, businessFaxAttr1, 272, 24);
AT(GroupMemberRecord, businessFaxAttr2, 296, 24);
AT(GroupMemberRecord, businessFaxAttr3, 320, 24);
AT(GroupMemberRecord, homeFax, 344, 48);
AT(GroupMemberRecord, homeFaxNote, 392, 44);
AT(GroupMemberRecord, homeFaxAttr1, 436, 24);
AT(GroupMemberRecord, homeFaxAttr2, 460, 24);
AT(GroupMemberRecord, homeFaxAttr3, 484, 24);
AT(GroupMemberRecord, extendedFaxValue1, 640, 2);
AT(GroupMemberRecord, extendedFaxValue2, 642, 2);
AT(GroupMemberRecord, extendedFax, 644, 124);
AT(GroupMemberRecord, extendedFaxAttr1, 812, 24);
AT(GroupMemberRecord, extendedFaxAttr2, 836, 24);
