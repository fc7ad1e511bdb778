// The calls in the order of the library, with a look at each answer.
#include "developer/provider_checker.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "client/record_text.h"
#include "client/results.h"
#include "mapi/group_recipient_tags.h"
#include "model/contents_row.h"
#include "model/fax_kinds.h"
#include "provider/table_cursor.h"
#include "queries/hierarchy_row.h"

namespace {

constexpr auto batchRows = static_cast<LONG>(TableCursor::largestBatch);
constexpr size_t mostRows = 1'000'000;
constexpr size_t mostContainers = 10'000;
// Of one container: opening each entry of a large directory server would take long.
constexpr size_t mostEntries = 200;

// What several findings mean.
constexpr char noSession[] = "no session opens";
constexpr char noProfiles[] = "profiles can be neither made nor shown";
constexpr char nothingListed[] = "what is in it is not listed";
constexpr char rowsMissing[] = "rows are missing from the list";
constexpr char valueMissing[] = "the value counts as missing";
constexpr char textsMissing[] = "what its row marks PT_ERROR is missing, and the number of a fax entry";
constexpr char notExpanded[] = "a fax to the group may reach none of its members";
constexpr char memoryLost[] = "its memory may be lost";
constexpr char neverCalled[] = "the library never calls it; other programs may";

constexpr PropTagArray<2> personTags{.aulPropTag = {PR_ORIGINAL_DISPLAY_NAME, PR_DISPLAY_NAME}};

std::string Quoted(const std::string& codePageText) {
    return '"' + FromActiveCodePage(codePageText) + '"';
}

}  // namespace

bool ProviderChecker::LookAt(bool isRight, ProviderFinding::Kind kind, const std::string& where,
                             const std::string& what, const char* meaning) {
    ++checkCount_;
    if (isRight) return true;
    const auto [place, isNew] = findingPlaces_.try_emplace({where, what}, findings_.size());
    if (isNew) findings_.push_back({kind, where, what, meaning});
    ++findings_[place->second].times;
    return false;
}

bool ProviderChecker::Expect(bool isRight, const std::string& where, const std::string& what, const char* meaning) {
    return LookAt(isRight, ProviderFinding::Kind::Fault, where, what, meaning);
}

bool ProviderChecker::Prefer(bool isUsual, const std::string& where, const std::string& what, const char* meaning) {
    return LookAt(isUsual, ProviderFinding::Kind::Remark, where, what, meaning);
}

bool ProviderChecker::ExpectSuccess(HRESULT result, const std::string& where, const char* meaning) {
    return Expect(result >= 0, where, "answers " + ResultText(result), meaning);
}

template <class Function>
Function* ProviderChecker::Find(const char* name, ProviderFinding::Kind kind, const char* meaning) {
    const FARPROC function = GetProcAddress(module_.Handle(), name);
    LookAt(function != nullptr, kind, name, "is not exported", meaning);
    return std::bit_cast<Function*>(function);
}

bool ProviderChecker::ExpectValue(const SPropValue& value, ULONG tag, const std::string& where) {
    const bool isMissing = value.ulPropTag == CHANGE_PROP_TYPE(tag, PT_ERROR);
    if (!Expect(isMissing || value.ulPropTag == tag, where,
                "gives the property " + HexText(value.ulPropTag) + " where " + HexText(tag) + " belongs", valueMissing))
        return false;
    if (isMissing) return false;
    if (PROP_TYPE(tag) == PT_STRING8)
        return Expect(value.Value.lpszA != nullptr, where, "gives a null pointer for the text " + HexText(tag),
                      valueMissing);
    if (PROP_TYPE(tag) == PT_BINARY)
        return Expect(value.Value.bin.cb == 0 || value.Value.bin.lpb != nullptr, where,
                      "gives a null pointer for the bytes " + HexText(tag), valueMissing);
    return true;
}

void ProviderChecker::ExpectValues(const SPropValue* values, ULONG count, const SPropTagArray& tags,
                                   const std::string& where) {
    if (!Expect(values != nullptr, where, "gives no values", "all values count as missing")) return;
    const std::string counts =
        "gives " + std::to_string(count) + " values for " + std::to_string(tags.cValues) + " tags";
    Expect(count >= tags.cValues, where, counts, "the last ones count as missing");
    Prefer(count <= tags.cValues, where, counts, "those beyond the tags are not looked at");
    for (ULONG i = 0; i < std::min(count, tags.cValues); ++i) ExpectValue(values[i], (&tags.aulPropTag[0])[i], where);
}

void ProviderChecker::CheckReferences(IUnknown& object, const std::string& where) {
    const ULONG more = object.AddRef();
    const ULONG less = object.Release();
    Expect(more >= 2 && less == more - 1, where,
           "counts " + std::to_string(more) + " references after AddRef and " + std::to_string(less) + " after Release",
           "it may go while it is used, or never");
}

void ProviderChecker::Check(const std::string& profile) {
    constexpr auto fault = ProviderFinding::Kind::Fault, remark = ProviderFinding::Kind::Remark;
    Find<VOKAllocateBufferFunction>("VOKAllocateBuffer", remark, neverCalled);
    Find<VOKAllocateMoreFunction>("VOKAllocateMore", remark, neverCalled);
    Find<VOKFreeBufferFunction>("VOKFreeBuffer", remark, neverCalled);
    freeRows_ = Find<VOKFreeProwsFunction>("VOKFreeProws", fault, "no table is read");
    const auto setResources = Find<SetResourceDllHandleFunction>("SetResourceDllHandle", remark,
                                                                 "the caller's resources are not handed over");
    const auto administer = Find<VOKAdminProfilesFunction>("VOKAdminProfiles", fault, noProfiles);
    const auto open = Find<VOKOpenFunction>("VOKOpen", fault, noSession);
    if (setResources != nullptr) ExpectSuccess(setResources(nullptr), "SetResourceDllHandle", noSession);
    if (administer != nullptr) {
        Held<ProfileAdministration> administration;
        const HRESULT result = administer(VOK_ADMIN_DISPLAY, 0, profile.c_str(), 0, administration.Receive());
        if (ExpectSuccess(result, "VOKAdminProfiles", noProfiles) &&
            Expect(bool{administration}, "VOKAdminProfiles", "gives no object", noProfiles))
            CheckReferences(*administration.Get(), "VOKAdminProfiles");
    }
    if (open == nullptr) return;
    Held<IAddrBook> addressBook;
    Held<SessionSupport> support;
    const HRESULT result = open(nullptr, profile.empty() ? nullptr : profile.c_str(), 0, nullptr, VOK_OPEN_FLAG,
                                nullptr, nullptr, nullptr, addressBook.Receive(), support.Receive());
    if (!ExpectSuccess(result, "VOKOpen", noSession)) return;
    Expect(bool{addressBook}, "VOKOpen", "gives no address book", noSession);
    Expect(bool{support}, "VOKOpen", "gives no session support object", noSession);
    if (addressBook && support) CheckSession(*addressBook.Get(), *support.Get());
}

bool ProviderChecker::CheckType(ULONG type, ULONG wantedType, const std::string& where, const char* meaning) {
    const std::string what = "gives an object of type " + std::to_string(type);
    const bool lacksTables = type == MAPI_MAILUSER && wantedType != MAPI_MAILUSER;
    if (!Expect(!lacksTables, where + ": OpenEntry", what, meaning)) return false;
    Prefer(type == 0 || type == wantedType, where + ": OpenEntry", what, "the object is used all the same");
    return true;
}

bool ProviderChecker::CheckIdentifier(const Row& row, const char* meaning) {
    return Expect(row.identifier.has_value(), Quoted(row.name), "has no PR_ENTRYID", meaning) &&
           Prefer(!row.identifier->empty(), Quoted(row.name), "has a PR_ENTRYID of 0 bytes",
                  "it opens the root container, or nothing");
}

template <class Interface>
Held<Interface> ProviderChecker::Open(IAddrBook& addressBook, const std::string& identifier, ULONG wantedType,
                                      const std::string& where, const char* meaning) {
    std::vector<BYTE> bytes(identifier.begin(), identifier.end());
    ULONG type = 0;
    Held<Interface> opened;
    const HRESULT result =
        addressBook.OpenEntry(static_cast<ULONG>(bytes.size()), bytes.empty() ? nullptr : bytes.data(), nullptr, 0,
                              &type, opened.ReceiveUnknown());
    const bool isRight = ExpectSuccess(result, where + ": OpenEntry", meaning) &&
                         Expect(bool{opened}, where + ": OpenEntry", "succeeds and gives no object", meaning) &&
                         CheckType(type, wantedType, where, meaning);
    if (isRight)
        CheckReferences(*opened.Get(), where);
    else
        opened.Release();
    return opened;
}

ProviderChecker::Row ProviderChecker::ReadRow(const SRow& row, const SPropTagArray& columns) {
    Row read;
    for (ULONG i = 0; i < std::min(row.cValues, columns.cValues); ++i) {
        const SPropValue& value = row.lpProps[i];
        if (value.ulPropTag != (&columns.aulPropTag[0])[i]) continue;
        if (value.ulPropTag == PR_OBJECT_TYPE) read.type = static_cast<ULONG>(value.Value.l);
        const SBinary& bytes = value.Value.bin;
        if (value.ulPropTag == PR_ENTRYID && (bytes.lpb != nullptr || bytes.cb == 0))
            read.identifier.emplace(reinterpret_cast<const char*>(bytes.lpb), bytes.cb);
        for (const auto& [tag, text] :
             {std::pair(PR_DISPLAY_NAME, &read.name), std::pair(PR_ADDRTYPE, &read.addressType),
              std::pair(PR_EMAIL_ADDRESS, &read.address)})
            if (value.ulPropTag == tag && value.Value.lpszA != nullptr) *text = value.Value.lpszA;
    }
    return read;
}

std::vector<ProviderChecker::Row> ProviderChecker::ReadTable(IMAPITable& table, const SPropTagArray& columns,
                                                             const std::string& where) {
    std::vector<Row> rows;
    ULONG counted = 0;
    if (freeRows_ == nullptr || !ExpectSuccess(table.SetColumns(&columns, 0), where + ": SetColumns", rowsMissing) ||
        !ExpectSuccess(table.SeekRow(BOOKMARK_BEGINNING, 0, nullptr), where + ": SeekRow", rowsMissing) ||
        !ExpectSuccess(table.GetRowCount(0, &counted), where + ": GetRowCount", rowsMissing))
        return rows;
    const std::string query = where + ": QueryRows";
    // One more query than there are rows: behind the last one there is nothing.
    for (bool isEnd = false; !isEnd && rows.size() < mostRows;) {
        SRowSet* set = nullptr;
        const HRESULT result = table.QueryRows(batchRows, 0, &set);
        if (!ExpectSuccess(result, query, rowsMissing) ||
            !Expect(set != nullptr, query, "succeeds and gives no row set", rowsMissing)) {
            if (set != nullptr) freeRows_(set);
            return rows;
        }
        Prefer(set->cRows <= static_cast<ULONG>(batchRows), query, "gives more rows than it was asked for",
               "all of them are taken");
        for (ULONG i = 0; i < set->cRows; ++i) {
            const SRow& row = set->aRow[i];
            ExpectValues(row.lpProps, row.cValues, columns, query);
            rows.push_back(row.lpProps != nullptr ? ReadRow(row, columns) : Row());
        }
        isEnd = set->cRows == 0;
        freeRows_(set);
    }
    const std::string counts =
        "counts " + std::to_string(counted) + " rows, and QueryRows gives " + std::to_string(rows.size());
    Expect(rows.size() <= counted, where + ": GetRowCount", counts, "the list ends where the count is reached");
    Prefer(rows.size() >= counted, where + ": GetRowCount", counts, "the list has the rows that there are");
    return rows;
}

void ProviderChecker::CheckSession(IAddrBook& addressBook, SessionSupport& support) {
    CheckReferences(addressBook, "the address book");
    CheckReferences(support, "the session support object");
    BYTE nonsense[] = "no identifier of this provider";
    ULONG type = 0;
    Held<IUnknown> nothing;
    const HRESULT result = addressBook.OpenEntry(sizeof nonsense, nonsense, nullptr, 0, &type, nothing.Receive());
    Expect(result < 0 && !nothing, "OpenEntry", "opens an identifier that it never gave",
           "what a program remembers of an entry that is gone may open another");

    constexpr char noBooks[] = "no address book is listed";
    const auto root = Open<IABContainer>(addressBook, "", MAPI_ABCONT, "the root container", noBooks);
    if (!root) return;
    Held<IMAPITable> table;
    ExpectSuccess(root->GetHierarchyTable(0, table.Receive()), "the root container: GetHierarchyTable", noBooks);
    if (!Expect(bool{table}, "the root container: GetHierarchyTable", "gives no table", noBooks)) return;
    std::vector<Row> containers = ReadTable(*table.Get(), *HierarchyColumns.Get(), "the address books");
    Prefer(!containers.empty(), "the address books", "there are none",
           "nothing is listed, and nothing more can be looked at; another --profile may have some");
    std::set<std::string> seen;
    for (size_t i = 0; i < containers.size() && seen.size() < mostContainers; ++i) {
        const Row container = containers[i];
        if (CheckIdentifier(container, nothingListed) && seen.insert(*container.identifier).second)
            CheckContainer(addressBook, support, container, containers);
    }
}

void ProviderChecker::CheckContainer(IAddrBook& addressBook, SessionSupport& support, const Row& container,
                                     std::vector<Row>& containers) {
    const std::string where = Quoted(container.name);
    const auto opened = Open<IABContainer>(addressBook, *container.identifier, MAPI_ABCONT, where, nothingListed);
    if (!opened) return;
    Held<IMAPITable> table;
    ExpectSuccess(opened->GetHierarchyTable(0, table.Receive()), where + ": GetHierarchyTable",
                  "the containers in it are not listed");
    if (table) {
        const std::vector<Row> below = ReadTable(*table.Get(), *HierarchyColumns.Get(), "the containers in " + where);
        containers.insert(containers.end(), below.begin(), below.end());
    }
    const HRESULT style = opened->GetContentsTable(0, table.Receive());
    const bool isGiven = ExpectSuccess(style, where + ": GetContentsTable", nothingListed);
    if (isGiven) Expect(bool{table}, where + ": GetContentsTable", "succeeds and gives no table", nothingListed);
    if (!table) return;
    size_t persons = 0, groups = 0;
    for (const Row& row : ReadTable(*table.Get(), *ContentsColumns.Get(), "the contents of " + where)) {
        const bool isKnown = row.type == MAPI_MAILUSER || row.type == MAPI_DISTLIST;
        if (!Prefer(isKnown, "the contents of " + where, "has a row of type " + std::to_string(row.type),
                    "only persons and groups are listed"))
            continue;
        if (!CheckIdentifier(row, row.type == MAPI_DISTLIST ? notExpanded : textsMissing)) continue;
        if (row.type == MAPI_DISTLIST && groups++ < mostEntries) CheckGroup(addressBook, support, row);
        if (row.type == MAPI_MAILUSER && persons++ < mostEntries)
            CheckPerson(addressBook, support, row,
                        static_cast<uint32_t>(style) == contentsStyleFaxEntries && row.addressType == "FAX");
    }
}

void ProviderChecker::CheckPerson(IAddrBook& addressBook, SessionSupport& support, const Row& person, bool isFaxEntry) {
    const std::string where = Quoted(person.name);
    const auto opened = Open<IMAPIProp>(addressBook, *person.identifier, MAPI_MAILUSER, where, textsMissing);
    if (!opened) return;
    ULONG count = 0;
    SPropValue* values = nullptr;
    ExpectSuccess(opened->GetProps(personTags.Get(), 0, &count, &values), where + ": GetProps", textsMissing);
    ExpectValues(values, count, *personTags.Get(), where + ": GetProps");
    if (values == nullptr) return;
    if (isFaxEntry && count > 0 && values[0].ulPropTag == PR_ORIGINAL_DISPLAY_NAME && values[0].Value.lpszA != nullptr)
        Expect(person.address.size() > std::strlen(values[0].Value.lpszA) + 1, where,
               "its PR_EMAIL_ADDRESS has no number behind PR_ORIGINAL_DISPLAY_NAME and one character",
               "it is listed without its number");
    ExpectSuccess(support.FreeProperties(values), where + ": FreeProperties", memoryLost);
}

void ProviderChecker::CheckGroup(IAddrBook& addressBook, SessionSupport& support, const Row& group) {
    const std::string where = Quoted(group.name);
    ADRLIST* list = nullptr;
    const HRESULT allocated = support.AllocateAddressList(sizeof(ADRLIST), &list);
    if (!ExpectSuccess(allocated, "AllocateAddressList", notExpanded) ||
        !Expect(list != nullptr, "AllocateAddressList", "succeeds and gives no list", notExpanded))
        return;
    *list = {};
    if (const auto opened = Open<IABContainer>(addressBook, *group.identifier, MAPI_DISTLIST, where, notExpanded)) {
        Held<IMAPITable> table;
        ExpectSuccess(opened->GetContentsTable(0, table.Receive()), where + ": GetContentsTable",
                      "its details name none of its members");
        if (table) ReadTable(*table.Get(), *ContentsColumns.Get(), "the members of " + where);
        ADRENTRY& entry = list->aEntries[0];
        ExpectSuccess(opened->GetProps(GroupRecipientTags.Get(), 0, &entry.cValues, &entry.rgPropVals),
                      where + ": GetProps", notExpanded);
        ExpectValues(entry.rgPropVals, entry.cValues, *GroupRecipientTags.Get(), where + ": GetProps");
        if (entry.rgPropVals != nullptr && entry.cValues > recipientTypePosition) {
            list->cEntries = 1;
            entry.rgPropVals[recipientTypePosition].ulPropTag = PR_RECIPIENT_TYPE;
            entry.rgPropVals[recipientTypePosition].Value.l = MAPI_TO;
            const bool isExpanded =
                ExpectSuccess(support.ExpandRecipients(0, &list), where + ": ExpandRecipients", notExpanded);
            if (!Expect(list != nullptr, where + ": ExpandRecipients", "leaves no list", notExpanded)) return;
            if (isExpanded && ExpectSuccess(addressBook.PrepareRecips(0, ContentsColumns.Get(), list),
                                            where + ": PrepareRecips", notExpanded))
                for (ULONG i = 0; i < list->cEntries; ++i)
                    ExpectValues((&list->aEntries[0])[i].rgPropVals, (&list->aEntries[0])[i].cValues,
                                 *ContentsColumns.Get(), where + ": PrepareRecips");
        }
    }
    ExpectSuccess(support.FreeAddressList(list), where + ": FreeAddressList", memoryLost);
}
