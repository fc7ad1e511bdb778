// What the scripted provider answers, what it was asked, and what it has handed out. The test program owns the one
// Script; every copy of the provider that gets loaded finds it through the program's export FindScript.
//
// Objects, row sets, property arrays and address lists are entered in the ledger when they are handed out and struck
// off by the function that takes them back; anything else that happens to them is kept as a fault.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "mapi/mapi_types.h"
#include "mapi/result_codes.h"

// One property value. Its member is chosen by the type in the tag: bytes for strings and identifiers, else number.
struct Value {
    ULONG tag;
    LONG number = 0;
    std::string bytes = {};
    bool isNull = false;  // a null pointer under a right tag; of an identifier, number says how long it claims to be
};

Value Text(ULONG tag, std::string text);
Value Number(ULONG tag, LONG number);
Value Identifier(std::string id);
// A value that the provider cannot deliver.
Value Missing(ULONG tag, LONG code = MAPI_E_NOT_FOUND);

// The values of one row, entry or recipient. The provider puts them under the columns asked for by their property
// identifier, keeping the type given here, and marks the columns that have none as missing.
struct Row {
    std::vector<Value> values;
    bool asGiven = false;         // the values as they stand here, whatever the columns
    std::optional<ULONG> length;  // only the first columns
    bool withoutValues = false;   // a null array that claims to have all columns

    Row() = default;
    Row(std::initializer_list<Value> list) : values(list) {}
};

struct Table {
    std::vector<Row> rows;
    std::optional<ULONG> statedCount;  // what GetRowCount says instead of the truth
    std::vector<ULONG> batches;  // how many rows the successive calls of QueryRows give instead of those asked for
    bool endless = false;        // the rows again and again
};

// A container, person or distribution list.
struct Entry {
    ULONG type = MAPI_ABCONT;
    HRESULT contentsResult = S_OK;  // GetContentsTable: not negative, it is the contents style
    Table hierarchy = {};
    Table contents = {};
    Row properties = {};  // for GetProps, and for PrepareRecips as a recipient
    // Of a distribution list: the identifiers that its expansion gives; an empty one gives an entry that has no values
    // and claims to have them.
    std::vector<std::string> members = {};
};

// An answer other than the scripted one.
struct Fault {
    std::string function;  // empty: any
    unsigned call = 1;     // which of the calls of that function, counted from 1 and from the last Forget
    HRESULT result = S_OK;
    bool gives = false;  // hand out what the call hands out nevertheless
};

enum class Kind { Object, RowSet, PropertyArray, AddressList };

// One thing handed out, with all its memory.
struct Loan {
    Kind kind;
    std::vector<std::pair<void*, size_t>> blocks;
};

// What happened in the whole run.
struct Totals {
    unsigned long long calls = 0;
    unsigned long long hostileAnswers = 0;  // answers that no provider should give
    unsigned long long lent = 0;
    unsigned long long takenBack = 0;
};

struct Script {
    // Answers.
    std::unordered_map<std::string, Entry> entries;  // by identifier; the root container has the empty one
    HRESULT openResult = S_OK;
    bool opensAddressBook = true;  // what VOKOpen hands out
    bool opensSupport = true;
    HRESULT resourceResult = S_OK;
    HRESULT showResult = S_OK;
    std::vector<Fault> faults;
    // Runs inside every provider call, before it answers; the function's name is given.
    std::function<void(const std::string&)> during;

    // What was asked: one line a call, such as addressBook.OpenEntry(b1, null, 0).
    std::vector<std::string> calls;
    bool keepsCalls = true;
    std::map<std::string, unsigned> callCounts;
    unsigned callCount = 0;
    std::vector<std::string> loaded;  // the paths of the provider modules that were attached
    unsigned unloadCount = 0;
    HMODULE resourceModule = nullptr;

    // The ledger.
    std::unordered_map<void*, Loan> loans;
    std::vector<void*> retired;  // memory of released objects, kept so that their further use is noticed
    std::vector<std::string> misuses;
    int depth = 0;  // how many provider calls are under way

    Totals totals;

    // Everything as at the start, but for the totals.
    void Reset();
    // The calls made so far no longer count or show.
    void Forget();
    // The lines of the calls whose function is one of these, joined by new lines.
    std::string CallsOf(const std::vector<std::string>& functions) const;
    unsigned CountOf(const std::string& function) const;
    // Empty, or what is not as it must be once everything has been given back.
    std::string Imbalance() const;

    void Lend(void* key, Loan loan);
    // Fills the memory with junk and frees it.
    void TakeBack(void* key, Kind kind, const std::string& function);
    void Misused(std::string what);
};

// The program's own script. Exported by the test program.
using FindScriptFunction = Script*();
