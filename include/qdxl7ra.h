// qdxl7ra.h: what the provider library QDXL7RA.DLL says about the address files that it reads, for programs that
// explain them to a user: which numbers it took for fax numbers and why, what it could not read, whom it did not find.
// A provider of another maker need not have this function.
//
// All text is UTF-8, NUL-terminated and never null unless it says so. Reports and all that they point to live for the
// call of the receiver only. Lines are counted from 1; line 0 stands for the file as a whole.
#pragma once

#include <windows.h>

// An address book, or a container in one.
struct VOKBookReport {
    ULONG number;      // different for each one; the same in two calls while no book is added or taken away
    ULONG parent;      // of an address book: its own number
    const char* name;  // as callers of the address book see it
};

// One file, after all of it was read.
struct VOKFileReport {
    const char* path;
    ULONG cardCount;  // with those left out
    ULONG personCount;
    ULONG groupCount;
    // Fax numbers by kind. A number that stands in a card twice is counted once.
    ULONG businessCount;
    ULONG homeCount;
    ULONG otherCount;
    ULONG primaryCount;
    ULONG unplacedCount;         // fax numbers that the style of the address book has no place for
    ULONG missingMemberCount;    // members of groups that are on no card of the profile
    ULONG namelessCount;         // cards left out, because nothing in them can be a name
    const char* guessedCharset;  // of text without a label; null where nothing had to be guessed
};

// One telephone property of a card, a number in a row of a CSV file, or a value of a directory's attribute.
struct VOKTelephoneReport {
    ULONG line;
    const char* source;  // what the file says of the number: "TEL;TYPE=WORK,FAX, label Depot" or a column's heading
    const char* number;  // as it is dialled
    const char* kind;    // business, home, other, primary; empty: no fax number
    const char* place;   // where callers find it: the business, home, primary or extended column, or an entry of its
                         // own; empty: nowhere
    const char* rule;    // why, as a sentence
};

struct VOKCardReport {
    const char* path;
    ULONG line;
    const char* name;  // whole, also where callers see a character that the active code page lacks as another one
    BOOL isGroup;
    ULONG telephoneCount;
    const VOKTelephoneReport* telephones;
};

// Something that a user should know or do.
struct VOKMessageReport {
    const char* path;
    ULONG line;
    const char* what;
    const char* advice;
};

// Implemented by the program. A negative result ends the diagnosis and becomes its result.
struct VOKDiagnosisReceiver {
    // The answer is S_OK to read the book's files, S_FALSE to pass over them; its containers come next in any case.
    virtual HRESULT STDMETHODCALLTYPE OnBook(const VOKBookReport* book) = 0;
    // The answer is S_OK to hear of each of the file's cards, S_FALSE for no more of the file.
    virtual HRESULT STDMETHODCALLTYPE OnFile(const VOKFileReport* file) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnCard(const VOKCardReport* card) = 0;
    // At any time; those of a file come before the file, and each comes once.
    virtual void STDMETHODCALLTYPE OnMessage(const VOKMessageReport* message) = 0;
};

extern "C" {

// Exported as VOKDiagnose: reads the address books of a profile, or of a folder or file, and says what is in them.
// `profileName` is null or empty for the default profile; it is not looked at where there is a `location`. The result
// is that of opening the profile, or the receiver's.
using VOKDiagnoseFunction = HRESULT STDAPICALLTYPE(const char* profileName, const char* location,
                                                   VOKDiagnosisReceiver* receiver);

// Exported as VOKCountUnread: how often in this process an answer, to the library or of the diagnosis, was made without
// something that could not be read, or could not be made for want of memory: a file, one behind some point, a folder,
// settings. The library's functions deliver what there is and do not tell. A program whose lists must be whole asks
// before and after it makes one: the same number says that nothing is missing in it; the diagnostics name what is.
using VOKCountUnreadFunction = ULONG STDAPICALLTYPE();

}  // extern "C"
