/*
 * qdxl7rc.h: the callers' interface of QDXL7RC.DLL, the address-book interface library for fax programs.
 *
 * The library opens a session on an address-book profile, lists the address books and their containers, and lists
 * the fax destinations in them: one record for each fax number of a person and one for each distribution list. The
 * addresses come from the provider library QDXL7RA.DLL, which lies in the same directory and is loaded at run time.
 *
 * Conventions
 *
 *  1. Results. Reading and closing functions return 1 for success and 0 for failure. Result codes are 32-bit values
 *     in the HRESULT convention: negative is failure. The library itself produces QDXL7RC_E_FAIL and
 *     QDXL7RC_E_INVALIDARG; every other code is the provider's, unchanged. Only OpenAddressBook, CreateProfile and
 *     DisplayAdminProfiles store a result code; GetLastVOKError(NULL) reads it.
 *  2. Count, then fill. A list function is called first without records, to learn their number, and again with
 *     records. GetAddressBookList and GetDestinationList add to the caller's counter and never set it to 0: the
 *     caller does. GetDestinationsInGroup stores the number, or leaves the counter alone when the group cannot be
 *     read: the caller sets it to 0 there, too. In the second call the counter is the capacity, in records; it is
 *     read and never changed. A function that runs out of records or of memory returns 0, and what was written
 *     before that stays.
 *  3. Ownership. The caller owns every record, array, counter and buffer that it passes. The library owns what an
 *     `entry` points to; the caller only hands it back.
 *  4. Life of entries. The entries of address books and containers live until the next call of GetAddressBookList
 *     with neither parent nor records on the same session; those of destinations until the next counting call of
 *     GetDestinationList on the same session; all of them at most until CloseAddressBook. An entry that has ended
 *     must not be passed. A live entry of the wrong kind is recognised and harmless. A live entry of another session
 *     is harmless, too; the provider is asked through the session that is called, and knows it or does not.
 *  5. Text. Strings are 8-bit, NUL-terminated, in the process's ANSI code page: the system's, or UTF-8 where the
 *     system or the program's manifest says so. A text field of a record takes as many bytes as its comment says and
 *     then a NUL; a longer text is cut. Where the comment says "whole characters", the cut never leaves part of a
 *     character. Bytes after the NUL and bytes that a comment calls unused keep what the caller put there.
 *  6. Threads. The library starts no thread and takes no lock. Call its functions from one thread at a time,
 *     normally the thread of the user interface.
 *  7. Calls from inside a call. A provider may run a message loop, so a caller's code can run while a call is under
 *     way. A reading function called then on the same session, or with the entry of one of its groups, returns 0 and
 *     works again when the first call has returned. CloseAddressBook called then returns 1 and closes the session when
 *     the first call returns: from then on the session and its entries have ended, those that this call has written
 *     into records, too. Closing it once more meanwhile changes nothing. Other sessions are not affected, but for one
 *     whose group is being read or expanded: it is in use like the session that is called.
 *  8. Missing data is not an error. What a provider cannot deliver is missing from the result, and the function
 *     still returns 1.
 *  9. Memory. When memory ends, a function returns its failure value, nothing is leaked, and a later call works.
 * 10. Bounds. Of one address book at most 10,000,000 rows and 1,048,576 containers are read, and at most 1,048,576
 *     address books; what comes after them is missing. A container that several others refer to counts for each.
 * 11. Layouts are fixed: every offset and size below holds for every version. Records need no alignment.
 */
#ifndef QDXL7RC_H
#define QDXL7RC_H

#include <stdint.h>

#if defined(_WIN32) && !defined(QDXL7RC_BUILDING)
#define QDXL7RC_API __declspec(dllimport)
#elif defined(_WIN32)
#define QDXL7RC_API
#else
#define QDXL7RC_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* General failure: no memory, or the provider cannot be loaded or lacks the function asked for. */
#define QDXL7RC_E_FAIL ((int32_t)0x80004005u)
/* A required argument is null or empty. */
#define QDXL7RC_E_INVALIDARG ((int32_t)0x80070057u)

/* One open session; opaque. From OpenAddressBook until CloseAddressBook. */
typedef struct SessionHandle SessionHandle;
/* One address book or container, and one destination: opaque, see convention 4. */
typedef struct AddressBookEntryTag* AddressBookEntry;
typedef struct DestinationEntryTag* DestinationEntry;

/* Where the records of a list function go. 16 bytes. */
typedef struct RecordListDescriptor {
    int16_t recordSize; /* GetAddressBookList: distance in bytes from one record to the next, may be negative */
    uint8_t unused[6];
    void* recordStorage; /* the records, or for GetDestinationList an array of record addresses */
} RecordListDescriptor;

/* One address book or container. The fields take 540 bytes; recordSize must be at least that. */
typedef struct AddressBookRecord {
    struct AddressBookRecord* parent; /* the record of the enclosing container in the same array, or null */
    AddressBookEntry entry;
    uint32_t providerValue; /* of the provider's own meaning; written for address books only */
    char name[260];         /* at most 259 bytes */
    char serviceName[260];  /* at most 259 bytes; written for address books only */
} AddressBookRecord;

enum { DESTINATION_PERSON = 0, DESTINATION_GROUP = 1 };

/* One fax number of a person, or one distribution list. 824 bytes.
 * A person: every field but the extended values, which only a record of an extended number has. A person without a
 * fax number: type, entry, name, and empty faxNumber, faxNote and attributes. A distribution list: type, entry,
 * name, comment and extraText. Nothing else is written. */
typedef struct DestinationRecord {
    uint16_t type; /* DESTINATION_PERSON or DESTINATION_GROUP */
    uint8_t unused[6];
    DestinationEntry entry; /* the same in all records of one person */
    char name[88];          /* at most 85 bytes, whole characters */
    char faxNumber[124];    /* at most 45 bytes, of an extended number 120; whole characters */
    char company[44];       /* at most 40 bytes, whole characters */
    char department[44];    /* at most 40 bytes, whole characters */
    char faxNote[44];       /* at most 30 bytes, whole characters */
    char comment[256];      /* at most 255 bytes, whole characters */
    char faxAttr1[24];      /* at most 20 bytes, of the provider's own meaning; so the next two */
    char faxAttr2[24];
    char faxAttr3[24];
    char extraText[88];      /* at most 85 bytes, of the provider's own meaning */
    char extraShortText[44]; /* at most 40 bytes, of the provider's own meaning */
    uint16_t extendedFaxValue1;
    uint16_t extendedFaxValue2;
} DestinationRecord;

/* One fax destination of a group's member. 860 bytes. */
typedef struct GroupMemberRecord {
    uint32_t contentsStyle;    /* how the group's address book is read; of the provider's own choice */
    char name[88];             /* at most 85 bytes, whole characters */
    char company[44];          /* at most 40 bytes, whole characters */
    char department[44];       /* at most 40 bytes, whole characters */
    char businessFax[48];      /* the member's first fax number: at most 45 bytes, whole characters */
    char businessFaxNote[44];  /* always empty */
    char businessFaxAttr1[24]; /* at most 20 bytes, whole characters; so every attribute below */
    char businessFaxAttr2[24];
    char businessFaxAttr3[24];
    char homeFax[48];     /* at most 45 bytes, whole characters */
    char homeFaxNote[44]; /* always empty */
    char homeFaxAttr1[24];
    char homeFaxAttr2[24];
    char homeFaxAttr3[24];
    uint8_t unused1[132];
    uint16_t extendedFaxValue1;
    uint16_t extendedFaxValue2;
    char extendedFax[124]; /* at most 120 bytes, whole characters */
    uint8_t unused2[44];
    char extendedFaxAttr1[24];
    char extendedFaxAttr2[24];
} GroupMemberRecord;

enum { SERVICE_FLAG_1 = 1, SERVICE_FLAG_2 = 2 };

/* One message service of a new profile. 48 bytes. */
typedef struct ServiceRecord {
    char serviceName[32];  /* NUL-terminated within the field */
    uint32_t serviceFlags; /* SERVICE_FLAG_1 and SERVICE_FLAG_2 reach the provider; other bits are ignored */
    uint8_t unused[12];
} ServiceRecord;

/* Opens a session on a profile of the provider. While the provider opens it, the top-level window that holds
 * `window` is disabled (if it was enabled).
 *   window          the caller's HWND, or null; handed to the provider
 *   profileName     the profile, or null or empty for the provider's default; handed to the provider
 *   openValue       handed to the provider unchanged
 *   openData        handed to the provider unchanged
 *   flags           handed to the provider with bit 8 set
 *   resourceModule  HMODULE that the provider takes its resources from; handed over when this call loads it
 * Returns the session, or null; then GetLastVOKError(NULL) says why. */
QDXL7RC_API SessionHandle* OpenAddressBook(void* window, const char* profileName, uint32_t openValue, void* openData,
                                           uint32_t flags, void* resourceModule);

/* Closes a session and ends everything read through it. Null is ignored. Always returns 1. */
QDXL7RC_API int32_t CloseAddressBook(SessionHandle* handle);

/* The result code of a session, which is 0; or, for a null handle, of the last OpenAddressBook, CreateProfile or
 * DisplayAdminProfiles of this process. */
QDXL7RC_API int32_t GetLastVOKError(SessionHandle* handle);

/* Selection dialogs that this library does not offer: both return -1 and read no argument. */
QDXL7RC_API intptr_t DisplayRecipSelect(void);
QDXL7RC_API intptr_t DisplayRecipSelectEx(void);

/* Lists the address books of the session, or all containers below one of them, depth first.
 *   reserved     0; with any other value nothing is counted or filled
 *   parentEntry  null for the address books, or the entry of the address book whose containers are wanted
 *   count        the counter, convention 2
 *   records      null to count, or where the records go: contiguous, recordSize bytes apart
 * Counting address books reads them afresh and ends all earlier entries; the containers of an address book are read
 * once, when they are first asked for. Returns 0 for a null argument, when there are no address books, or when the
 * records do not fit. */
QDXL7RC_API int32_t GetAddressBookList(SessionHandle* handle, uint32_t reserved, AddressBookEntry parentEntry,
                                       uint32_t* count, const RecordListDescriptor* records);

/* Lists the destinations of one address book or container.
 *   reserved          not read
 *   addressBookEntry  the entry of an AddressBookRecord; the filling call only looks whether it is null
 *   count             the counter, convention 2
 *   records           null to read the destinations afresh and count them, or an array of record addresses
 * Returns 0 for a null argument, when counting for an entry that is a destination, and when filling if the records do
 * not fit: there are fewer addresses than records, or one of them is null. */
QDXL7RC_API int32_t GetDestinationList(SessionHandle* handle, uint32_t reserved, AddressBookEntry addressBookEntry,
                                       uint32_t* count, const RecordListDescriptor* records);

/* The printable text of one destination, lines joined by CR LF, without one at the end. A person: name, company,
 * department, fax number with its label, the number's note, comment; missing ones are left out. A distribution list:
 * the names of its members, persons first.
 *   entry   the entry of a DestinationRecord
 *   size    bytes of text without the NUL: receives the length when buffer is null; otherwise it is read only and
 *           says for how much text the buffer has room, so that the buffer holds *size + 1 bytes
 *   buffer  null to ask for the length, or where the text goes
 * Returns 0 for a null argument, for an entry that is no destination, or when the text does not fit: then nothing is
 * copied. */
QDXL7RC_API int32_t GetDestinationDetails(SessionHandle* handle, DestinationEntry entry, uint32_t* size, char* buffer);

/* Expands a distribution list into fax destinations of its members.
 *   reserved  0; with any other value no record is written
 *   group     the entry of a DestinationRecord. A person's gives one record with the person's own number, or none
 *             when there is no number, and leaves the counter alone when counting: a caller that passes persons
 *             provides room for one record whatever was counted
 *   count     the counter, convention 2. It receives the number of recipients; in an address book of contents style 4
 *             a recipient can give no record or two
 *   records   null to count, or where the records go: contiguous, 860 bytes each; recordSize is not read
 * Nothing is kept: each call expands the group anew. Returns 0 for a null argument or when the records do not fit. */
QDXL7RC_API int32_t GetDestinationsInGroup(SessionHandle* handle, uint32_t reserved, DestinationEntry group,
                                           uint32_t* count, const RecordListDescriptor* records);

/* Creates a profile of the provider and adds services to it, in order, up to the first that fails. Nothing is undone.
 *   uiParam         handed to the provider: an HWND, or 0
 *   flags           handed to the provider unchanged
 *   profileName     the new profile; null or empty is QDXL7RC_E_INVALIDARG
 *   serviceCount    number of services; with a null `services` it must be 0, else QDXL7RC_E_INVALIDARG
 *   resourceModule  as in OpenAddressBook
 * Returns 1 or 0; GetLastVOKError(NULL) has the provider's result code. */
QDXL7RC_API int32_t CreateProfile(uintptr_t uiParam, uint32_t flags, const char* profileName, uint32_t serviceCount,
                                  const ServiceRecord* services, void* resourceModule);

/* Shows the provider's administration of profiles, and then clears the profile's ProfileLock value in the registry.
 *   adminParam      handed to the provider's administration: the HWND of its parent window, or 0
 *   profileName     the profile to administer, may be null
 *   uiParam         handed to the provider: an HWND, or 0
 *   flags           handed to the provider with bit 0x10 set
 *   resourceModule  as in OpenAddressBook
 * Returns 1, also when the user cancelled, or 0; GetLastVOKError(NULL) has the provider's result code. */
QDXL7RC_API int32_t DisplayAdminProfiles(uintptr_t adminParam, const char* profileName, uintptr_t uiParam,
                                         uint32_t flags, void* resourceModule);

#ifdef __cplusplus
}
#endif

#endif
