// The calls in the order of the library, with a look at each answer.
#include "provider_checker.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "model/contents_columns.h"
#include "model/fax_kinds.h"
#include "provider/table_cursor.h"
#include "queries/group_recipient_tags.h"
#include "queries/hierarchy_columns.h"
#include "results.h"
#include "text.h"

namespace {

constexpr auto batchRows = static_cast<LONG>(TableCursor::largestBatch);
constexpr size_t mostRows = 1'000'000;
constexpr size_t mostContainers = 10'000;
// Of one container: opening each entry of a large directory server would take long.
constexpr size_t mostEntries = 200;

constexpr PropTagArray<2> personTags{.aulPropTag = {PR_ORIGINAL_DISPLAY_NAME, PR_DISPLAY_NAME}};

std::string Quoted(const std::string& codePageText) {
    return '"' + Utf8(codePageText) + '"';
}

}  // namespace

bool ProviderChecker::Expect(bool isRight, const std::string& where, const std::string& what) {
    ++checkCount_;
    if (isRight) return true;
    const auto [place, isNew] = faultPlaces_.try_emplace({where, what}, faults_.size());
    if (isNew) faults_.push_back({where, what});
    ++faults_[place->second].times;
    return false;
}

bool ProviderChecker::ExpectSuccess(HRESULT result, const std::string& where) {
    return Expect(result >= 0, where, "answers " + ResultText(result));
}

template <class Function>
Function* ProviderChecker::Find(const char* name, const char* without) {
    const FARPROC function = GetProcAddress(module_.Handle(), name);
    Expect(function != nullptr, name, std::string("is not exported: ") + without);
    return std::bit_cast<Function*>(function);
}

bool ProviderChecker::ExpectValue(const SPropValue& value, ULONG tag, const std::string& where) {
    const bool isMissing = value.ulPropTag == CHANGE_PROP_TYPE(tag, PT_ERROR);
    if (!Expect(isMissing || value.ulPropTag == tag, where,
                "gives the property " + HexText(value.ulPropTag) + " where " + HexText(tag) + " belongs"))
        return false;
    if (isMissing) return false;
    if (PROP_TYPE(tag) == PT_STRING8)
        return Expect(value.Value.lpszA != nullptr, where, "gives a null pointer for the text " + HexText(tag));
    if (PROP_TYPE(tag) == PT_BINARY)
        return Expect(value.Value.bin.cb == 0 || value.Value.bin.lpb != nullptr, where,
                      "gives a null pointer for the bytes " + HexText(tag));
    return true;
}

void ProviderChecker::ExpectValues(const SPropValue* values, ULONG count, const SPropTagArray& tags,
                                   const std::string& where) {
    if (!Expect(values != nullptr, where, "gives no values")) return;
    Expect(count == tags.cValues, where,
           "gives " + std::to_string(count) + " values for " + std::to_string(tags.cValues) + " tags");
    for (ULONG i = 0; i < std::min(count, tags.cValues); ++i) ExpectValue(values[i], (&tags.aulPropTag[0])[i], where);
}

void ProviderChecker::CheckReferences(IUnknown& object, const std::string& where) {
    const ULONG more = object.AddRef();
    const ULONG less = object.Release();
    Expect(
        more >= 2 && less == more - 1, where,
        "counts " + std::to_string(more) + " references after AddRef and " + std::to_string(less) + " after Release");
}

void ProviderChecker::Check(const std::string& profile) {
    Find<VOKAllocateBufferFunction>("VOKAllocateBuffer", "a provider should have it, though it is never called");
    Find<VOKAllocateMoreFunction>("VOKAllocateMore", "a provider should have it, though it is never called");
    Find<VOKFreeBufferFunction>("VOKFreeBuffer", "a provider should have it, though it is never called");
    freeRows_ = Find<VOKFreeProwsFunction>("VOKFreeProws", "no table is read");
    const auto setResources =
        Find<SetResourceDllHandleFunction>("SetResourceDllHandle", "resources are not handed over");
    const auto administer = Find<VOKAdminProfilesFunction>("VOKAdminProfiles", "profiles cannot be made or shown");
    const auto open = Find<VOKOpenFunction>("VOKOpen", "no session opens");
    if (setResources != nullptr) ExpectSuccess(setResources(nullptr), "SetResourceDllHandle");
    if (administer != nullptr) {
        Held<ProfileAdministration> administration;
        const HRESULT result = administer(VOK_ADMIN_DISPLAY, 0, profile.c_str(), 0, administration.Receive());
        if (ExpectSuccess(result, "VOKAdminProfiles") &&
            Expect(bool{administration}, "VOKAdminProfiles", "gives no object"))
            CheckReferences(*administration.Get(), "VOKAdminProfiles");
    }
    if (open == nullptr) return;
    Held<IAddrBook> addressBook;
    Held<SessionSupport> support;
    const HRESULT result = open(nullptr, profile.empty() ? nullptr : profile.c_str(), 0, nullptr, VOK_OPEN_FLAG,
                                nullptr, nullptr, nullptr, addressBook.Receive(), support.Receive());
    if (!ExpectSuccess(result, "VOKOpen")) return;
    Expect(bool{addressBook}, "VOKOpen", "gives no address book");
    Expect(bool{support}, "VOKOpen", "gives no session support object");
    if (addressBook && support) CheckSession(*addressBook.Get(), *support.Get());
}

template <class Interface>
Held<Interface> ProviderChecker::Open(IAddrBook& addressBook, const std::string& identifier, ULONG wantedType,
                                      const std::string& where) {
    std::vector<BYTE> bytes(identifier.begin(), identifier.end());
    ULONG type = 0;
    Held<Interface> opened;
    const HRESULT result =
        addressBook.OpenEntry(static_cast<ULONG>(bytes.size()), bytes.empty() ? nullptr : bytes.data(), nullptr, 0,
                              &type, opened.ReceiveUnknown());
    const bool isRight = ExpectSuccess(result, where + ": OpenEntry") &&
                         Expect(bool{opened}, where + ": OpenEntry", "succeeds and gives no object") &&
                         Expect(type == 0 || type == wantedType, where + ": OpenEntry",
                                "gives an object of type " + std::to_string(type));
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
        if (value.ulPropTag == PR_ENTRYID && value.Value.bin.lpb != nullptr)
            read.identifier.assign(reinterpret_cast<const char*>(value.Value.bin.lpb), value.Value.bin.cb);
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
    if (freeRows_ == nullptr || !ExpectSuccess(table.SetColumns(&columns, 0), where + ": SetColumns") ||
        !ExpectSuccess(table.SeekRow(BOOKMARK_BEGINNING, 0, nullptr), where + ": SeekRow") ||
        !ExpectSuccess(table.GetRowCount(0, &counted), where + ": GetRowCount"))
        return rows;
    const std::string query = where + ": QueryRows";
    // One more query than there are rows: behind the last one there is nothing.
    for (bool isEnd = false; !isEnd && rows.size() < mostRows;) {
        SRowSet* set = nullptr;
        const HRESULT result = table.QueryRows(batchRows, 0, &set);
        if (!ExpectSuccess(result, query) || !Expect(set != nullptr, query, "succeeds and gives no row set")) {
            if (set != nullptr) freeRows_(set);
            return rows;
        }
        Expect(set->cRows <= static_cast<ULONG>(batchRows), query, "gives more rows than it was asked for");
        for (ULONG i = 0; i < set->cRows; ++i) {
            const SRow& row = set->aRow[i];
            ExpectValues(row.lpProps, row.cValues, columns, query);
            rows.push_back(row.lpProps != nullptr ? ReadRow(row, columns) : Row());
        }
        isEnd = set->cRows == 0;
        freeRows_(set);
    }
    Expect(rows.size() == counted, where + ": GetRowCount",
           "counts " + std::to_string(counted) + " rows, and QueryRows gives " + std::to_string(rows.size()));
    return rows;
}

void ProviderChecker::CheckSession(IAddrBook& addressBook, SessionSupport& support) {
    CheckReferences(addressBook, "the address book");
    CheckReferences(support, "the session support object");
    BYTE nonsense[] = "no identifier of this provider";
    ULONG type = 0;
    Held<IUnknown> nothing;
    const HRESULT result = addressBook.OpenEntry(sizeof nonsense, nonsense, nullptr, 0, &type, nothing.Receive());
    Expect(result < 0 && !nothing, "OpenEntry", "opens an identifier that it never gave");

    const auto root = Open<IABContainer>(addressBook, "", MAPI_ABCONT, "the root container");
    if (!root) return;
    Held<IMAPITable> table;
    ExpectSuccess(root->GetHierarchyTable(0, table.Receive()), "the root container: GetHierarchyTable");
    if (!Expect(bool{table}, "the root container: GetHierarchyTable", "gives no table")) return;
    std::vector<Row> containers = ReadTable(*table.Get(), *HierarchyColumns.Get(), "the address books");
    Expect(!containers.empty(), "the address books", "there are none: a session without any lists nothing");
    std::set<std::string> seen;
    for (size_t i = 0; i < containers.size() && seen.size() < mostContainers; ++i) {
        const Row container = containers[i];
        const bool isNamed = Expect(!container.identifier.empty(), Quoted(container.name), "has no PR_ENTRYID");
        if (isNamed && seen.insert(container.identifier).second)
            CheckContainer(addressBook, support, container, containers);
    }
}

void ProviderChecker::CheckContainer(IAddrBook& addressBook, SessionSupport& support, const Row& container,
                                     std::vector<Row>& containers) {
    const std::string where = Quoted(container.name);
    const auto opened = Open<IABContainer>(addressBook, container.identifier, MAPI_ABCONT, where);
    if (!opened) return;
    Held<IMAPITable> table;
    ExpectSuccess(opened->GetHierarchyTable(0, table.Receive()), where + ": GetHierarchyTable");
    if (table) {
        const std::vector<Row> below = ReadTable(*table.Get(), *HierarchyColumns.Get(), "the containers in " + where);
        containers.insert(containers.end(), below.begin(), below.end());
    }
    const HRESULT style = opened->GetContentsTable(0, table.Receive());
    const bool isGiven = ExpectSuccess(style, where + ": GetContentsTable");
    if (isGiven) Expect(bool{table}, where + ": GetContentsTable", "succeeds and gives no table");
    if (!table) return;
    size_t persons = 0, groups = 0;
    for (const Row& row : ReadTable(*table.Get(), *ContentsColumns.Get(), "the contents of " + where)) {
        const bool isKnown = row.type == MAPI_MAILUSER || row.type == MAPI_DISTLIST;
        if (!Expect(isKnown, "the contents of " + where,
                    "has a row of type " + std::to_string(row.type) + ", which is passed over"))
            continue;
        if (!Expect(!row.identifier.empty(), Quoted(row.name), "has no PR_ENTRYID")) continue;
        if (row.type == MAPI_DISTLIST && groups++ < mostEntries) CheckGroup(addressBook, support, row);
        if (row.type == MAPI_MAILUSER && persons++ < mostEntries)
            CheckPerson(addressBook, support, row,
                        static_cast<uint32_t>(style) == contentsStyleFaxEntries && row.addressType == "FAX");
    }
}

void ProviderChecker::CheckPerson(IAddrBook& addressBook, SessionSupport& support, const Row& person, bool isFaxEntry) {
    const std::string where = Quoted(person.name);
    const auto opened = Open<IMAPIProp>(addressBook, person.identifier, MAPI_MAILUSER, where);
    if (!opened) return;
    ULONG count = 0;
    SPropValue* values = nullptr;
    ExpectSuccess(opened->GetProps(personTags.Get(), 0, &count, &values), where + ": GetProps");
    ExpectValues(values, count, *personTags.Get(), where + ": GetProps");
    if (values == nullptr) return;
    if (isFaxEntry && count > 0 && values[0].ulPropTag == PR_ORIGINAL_DISPLAY_NAME && values[0].Value.lpszA != nullptr)
        Expect(person.address.size() > std::strlen(values[0].Value.lpszA) + 1, where,
               "its PR_EMAIL_ADDRESS has no number behind PR_ORIGINAL_DISPLAY_NAME and one character");
    ExpectSuccess(support.FreeProperties(values), where + ": FreeProperties");
}

void ProviderChecker::CheckGroup(IAddrBook& addressBook, SessionSupport& support, const Row& group) {
    const std::string where = Quoted(group.name);
    ADRLIST* list = nullptr;
    const HRESULT allocated = support.AllocateAddressList(sizeof(ADRLIST), &list);
    if (!ExpectSuccess(allocated, "AllocateAddressList") ||
        !Expect(list != nullptr, "AllocateAddressList", "succeeds and gives no list"))
        return;
    *list = {};
    if (const auto opened = Open<IABContainer>(addressBook, group.identifier, MAPI_DISTLIST, where)) {
        Held<IMAPITable> table;
        ExpectSuccess(opened->GetContentsTable(0, table.Receive()), where + ": GetContentsTable");
        if (table) ReadTable(*table.Get(), *ContentsColumns.Get(), "the members of " + where);
        ADRENTRY& entry = list->aEntries[0];
        ExpectSuccess(opened->GetProps(GroupRecipientTags.Get(), 0, &entry.cValues, &entry.rgPropVals),
                      where + ": GetProps");
        ExpectValues(entry.rgPropVals, entry.cValues, *GroupRecipientTags.Get(), where + ": GetProps");
        if (entry.rgPropVals != nullptr && entry.cValues > recipientTypePosition) {
            list->cEntries = 1;
            entry.rgPropVals[recipientTypePosition].ulPropTag = PR_RECIPIENT_TYPE;
            entry.rgPropVals[recipientTypePosition].Value.l = MAPI_TO;
            const bool isExpanded = ExpectSuccess(support.ExpandRecipients(0, &list), where + ": ExpandRecipients");
            if (!Expect(list != nullptr, where + ": ExpandRecipients", "leaves no list")) return;
            if (isExpanded &&
                ExpectSuccess(addressBook.PrepareRecips(0, ContentsColumns.Get(), list), where + ": PrepareRecips"))
                for (ULONG i = 0; i < list->cEntries; ++i)
                    ExpectValues((&list->aEntries[0])[i].rgPropVals, (&list->aEntries[0])[i].cValues,
                                 *ContentsColumns.Get(), where + ": PrepareRecips");
        }
    }
    ExpectSuccess(support.FreeAddressList(list), where + ": FreeAddressList");
}
