/* fax_list: prints the fax destinations of every address book of a profile, and the members of every group. A whole use
 * of the library in C; docs/caller-guide.md walks through it.
 *
 * usage: fax_list [PROFILE]
 */
#include <stdio.h>
#include <stdlib.h>

#include "qdxl7rc.h"

/* The numbers of the members of one group. */
static void print_members(SessionHandle* session, DestinationEntry group) {
    uint32_t count = 0;
    if (!GetDestinationsInGroup(session, 0, group, &count, NULL) || count == 0) return;
    GroupMemberRecord* members = calloc(count, sizeof *members);
    if (members == NULL) return;
    RecordListDescriptor records = {0};
    records.recordStorage = members;
    /* A recipient can give two records in an address book of fax entries: what fits is there also when this fails. */
    GetDestinationsInGroup(session, 0, group, &count, &records);
    for (uint32_t i = 0; i < count; ++i) {
        if (members[i].businessFax[0] != '\0') printf("    %s: %s\n", members[i].name, members[i].businessFax);
        if (members[i].homeFax[0] != '\0') printf("    %s: %s\n", members[i].name, members[i].homeFax);
        if (members[i].extendedFax[0] != '\0') printf("    %s: %s\n", members[i].name, members[i].extendedFax);
    }
    free(members);
}

static void print_destinations(SessionHandle* session, AddressBookEntry book) {
    uint32_t count = 0;
    if (!GetDestinationList(session, 0, book, &count, NULL) || count == 0) return;
    DestinationRecord* destinations = calloc(count, sizeof *destinations);
    DestinationRecord** addresses = calloc(count, sizeof *addresses);
    RecordListDescriptor records = {0};
    records.recordStorage = addresses;
    if (destinations != NULL && addresses != NULL) {
        for (uint32_t i = 0; i < count; ++i) addresses[i] = &destinations[i];
        if (GetDestinationList(session, 0, book, &count, &records)) {
            for (uint32_t i = 0; i < count; ++i) {
                printf("  %s: %s\n", destinations[i].name,
                       destinations[i].type == DESTINATION_GROUP ? "group" : destinations[i].faxNumber);
                if (destinations[i].type == DESTINATION_GROUP) print_members(session, destinations[i].entry);
            }
        }
    }
    free(addresses);
    free(destinations);
}

int main(int argc, char** argv) {
    SessionHandle* session = OpenAddressBook(NULL, argc > 1 ? argv[1] : NULL, 0, NULL, 0, NULL);
    if (session == NULL) {
        fprintf(stderr, "The address book cannot be opened: result 0x%08X\n", (unsigned)GetLastVOKError(NULL));
        return 1;
    }
    uint32_t count = 0;
    if (GetAddressBookList(session, 0, NULL, &count, NULL)) {
        AddressBookRecord* books = calloc(count, sizeof *books);
        RecordListDescriptor records = {sizeof *books, {0}, books};
        if (books != NULL && GetAddressBookList(session, 0, NULL, &count, &records)) {
            for (uint32_t i = 0; i < count; ++i) {
                printf("%s\n", books[i].name);
                print_destinations(session, books[i].entry);
            }
        }
        free(books);
    }
    CloseAddressBook(session);
    return 0;
}
