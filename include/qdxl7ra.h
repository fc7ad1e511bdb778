/* qdxl7ra.h: what the provider library QDXL7RA.DLL says about the address files that it reads, for programs that
 * explain them to a user: which numbers it took for fax numbers and why, what it could not read, whom it did not find,
 * and what profiles there are. A provider of another maker need not have these functions: look each one up by its name.
 *
 * Conventions
 *
 * 1. Text is UTF-8, NUL-terminated and never null unless it says so.
 * 2. A structure begins with its size in bytes, stored by whoever fills it in. Later versions add fields at its end: a
 *    field is there when it ends within that size.
 * 3. Reports, and all that they point to, live for the call of the receiver only.
 * 4. A receiver is a structure of functions, each called with the receiver's `context`; one that is null does not want
 *    to hear of it. The functions are called on the thread that called the provider. Messages are never lost: without a
 *    function for them they go where those go that nobody has asked for in a call (VOKSetMessageReceiver).
 */
#ifndef QDXL7RA_H
#define QDXL7RA_H

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/* How a reading ended. */
#define VOK_READ_COMPLETE 0u
#define VOK_READ_INCOMPLETE 1u  /* something of it could not be read */
#define VOK_READ_UNREACHABLE 2u /* where it is did not answer */
#define VOK_READ_REFUSED 3u     /* this user must not read it */
#define VOK_READ_TIMED_OUT 4u

/* What every report begins with. */
typedef struct VOKReportHead {
    ULONG size;        /* of the whole report */
    ULONG status;      /* VOK_READ_...: of what the report is about */
    const char* where; /* what it is about where that is no file: a server, an entry's distinguished name; else empty */
    const char* path;  /* of the file; empty where there is none */
    ULONG line;        /* counted from 1; 0 stands for the file as a whole */
} VOKReportHead;

/* An address book, or a container in one. */
typedef struct VOKBookReport {
    VOKReportHead head;
    ULONG number;     /* different for each one; the same in two calls while no book is added or taken away */
    ULONG parent;     /* of an address book: its own number */
    const char* name; /* as callers of the address book see it */
} VOKBookReport;

/* One file, after all of it was read. */
typedef struct VOKFileReport {
    VOKReportHead head;
    ULONG cardCount; /* with those left out */
    ULONG personCount;
    ULONG groupCount;
    /* Fax numbers by kind. A number that stands in a card twice is counted once. */
    ULONG businessCount;
    ULONG homeCount;
    ULONG otherCount;
    ULONG primaryCount;
    ULONG unplacedCount;        /* fax numbers that the style of the address book has no place for */
    ULONG missingMemberCount;   /* members of groups that are on no card of the profile */
    ULONG namelessCount;        /* cards left out, because nothing in them can be a name */
    const char* guessedCharset; /* of text without a label; null where nothing had to be guessed */
} VOKFileReport;

/* One telephone property of a card, a number in a row of a CSV file, or a value of a directory's attribute. */
typedef struct VOKTelephoneReport {
    VOKReportHead head;
    const char* source; /* what the file says of the number: "TEL;TYPE=WORK,FAX, label Depot" or a column's heading */
    const char* number; /* as it is dialled */
    const char* kind;   /* business, home, other, primary; empty: no fax number */
    const char* place;  /* where callers find it: the business, home, primary or extended column, or an entry of its
                           own; empty: nowhere */
    const char* rule;   /* why, as a sentence */
} VOKTelephoneReport;

typedef struct VOKCardReport {
    VOKReportHead head;
    const char* name; /* whole, also where callers see a character that the active code page lacks as another one */
    BOOL isGroup;
    ULONG telephoneCount;
    const VOKTelephoneReport* const* telephones;
} VOKCardReport;

/* Something that a user should know or do. */
typedef struct VOKMessageReport {
    VOKReportHead head;
    const char* what;
    const char* advice; /* may be empty */
} VOKMessageReport;

typedef void(STDAPICALLTYPE VOKMessageFunction)(void* context, const VOKMessageReport* message);

/* What a diagnosis tells. A negative answer ends the diagnosis and becomes its result. */
typedef struct VOKDiagnosisReceiver {
    ULONG size;
    void* context;
    /* The answer is S_OK to read the book's files, S_FALSE to pass over them; its containers come next in any case.
     * Without this function the files of all books are read. */
    HRESULT(STDAPICALLTYPE* OnBook)(void* context, const VOKBookReport* book);
    /* The answer is S_OK to hear of each of the file's cards, S_FALSE for no more of the file. */
    HRESULT(STDAPICALLTYPE* OnFile)(void* context, const VOKFileReport* file);
    HRESULT(STDAPICALLTYPE* OnCard)(void* context, const VOKCardReport* card);
    /* At any time; those of a file come before the file, and each comes once. */
    VOKMessageFunction* OnMessage;
} VOKDiagnosisReceiver;

/* Exported as VOKDiagnose: reads the address books of a profile, or of a folder or file, and says what is in them.
 * `profileName` is null or empty for the default profile; it is not looked at where there is a `location`. The result
 * is that of opening the profile, or the receiver's. */
typedef HRESULT(STDAPICALLTYPE VOKDiagnoseFunction)(const char* profileName, const char* location,
                                                    const VOKDiagnosisReceiver* receiver);

/* One service of a profile: where addresses come from. */
typedef struct VOKServiceReport {
    VOKReportHead head;
    const char* name;
    const char* location; /* empty: the service's own usual place */
    ULONG flags;
} VOKServiceReport;

/* One profile. The path is that of the file of the profiles. */
typedef struct VOKProfileReport {
    VOKReportHead head;
    const char* name;
    BOOL isForDisplay; /* the one that the user has chosen for displaying the address book */
    ULONG serviceCount;
    const VOKServiceReport* const* services;
} VOKProfileReport;

typedef struct VOKProfileReceiver {
    ULONG size;
    void* context;
    /* The file of the profiles, before the first of them; it need not exist. */
    void(STDAPICALLTYPE* OnProfilesFile)(void* context, const char* path);
    /* A negative answer ends the listing and becomes its result. */
    HRESULT(STDAPICALLTYPE* OnProfile)(void* context, const VOKProfileReport* profile);
    VOKMessageFunction* OnMessage;
} VOKProfileReceiver;

/* Exported as VOKListProfiles: the profiles of the user in the order of their file. MAPI_E_CORRUPT_DATA or
 * MAPI_E_NO_ACCESS when the file cannot be understood or read; a message says why. */
typedef HRESULT(STDAPICALLTYPE VOKListProfilesFunction)(const VOKProfileReceiver* receiver);

/* Who gets messages that nobody has asked for in a call: for programs with windows, which have no standard error. */
typedef struct VOKMessageReceiver {
    ULONG size;
    void* context;
    VOKMessageFunction* OnMessage;
} VOKMessageReceiver;

/* Exported as VOKSetMessageReceiver: from now on messages go to this receiver and not to standard error; a file of
 * diagnostics that the environment names gets them, too. It is copied. Null: standard error again. What another call is
 * about to tell may still come to the one before. */
typedef HRESULT(STDAPICALLTYPE VOKSetMessageReceiverFunction)(const VOKMessageReceiver* receiver);

/* Exported as VOKStopReading: what is being read in this process, to list, to expand or to diagnose, ends soon, and the
 * call that asked for it fails with MAPI_E_USER_CANCEL. What is asked for later is read as always. The one function of
 * a provider that may be called from any thread at any time. */
typedef void(STDAPICALLTYPE VOKStopReadingFunction)(void);

/* Exported as VOKCountUnread: how often in this process an answer, to the library or of the diagnosis, was made without
 * something that could not be read, or could not be made for want of memory: a file, one behind some point, a folder,
 * settings. The library's functions deliver what there is and do not tell. A program whose lists must be whole asks
 * before and after it makes one: the same number says that nothing is missing in it; the diagnostics name what is. */
typedef ULONG(STDAPICALLTYPE VOKCountUnreadFunction)(void);

#ifdef __cplusplus
}
#endif

#endif
