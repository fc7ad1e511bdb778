// The scripted objects of a session: address book, containers and entries, tables, and the support object.
#include <algorithm>

#include "object.h"

namespace {

// A method that the library has no reason to call.
#define NOT_RELIED_ON(name, ...)                           \
    HRESULT STDMETHODCALLTYPE name(__VA_ARGS__) override { \
        return this->Unexpected(#name);                    \
    }

class ScriptedTable : public Object<IMAPITable> {
  public:
    ScriptedTable(std::string name, const Table& rows) : Object(std::move(name)), table_(&rows) {}

    HRESULT STDMETHODCALLTYPE SetColumns(const SPropTagArray* tags, ULONG flags) override {
        return Begin("SetColumns", ShowAll(Show(tags), Show(flags))).Answer(S_OK, [&] {
            columns_.assign(&tags->cValues, tags->aulPropTag + tags->cValues);
        });
    }
    HRESULT STDMETHODCALLTYPE GetRowCount(ULONG flags, ULONG* count) override {
        return Begin("GetRowCount", Show(flags)).Answer(S_OK, [&] {
            *count = table_->statedCount.value_or(static_cast<ULONG>(table_->rows.size()));
            if (table_->statedCount) ++CurrentScript().totals.hostileAnswers;
        });
    }
    HRESULT STDMETHODCALLTYPE SeekRow(ULONG origin, LONG rows, LONG* sought) override {
        return Begin("SeekRow", ShowAll(Show(origin), std::to_string(rows), Show(sought))).Answer(S_OK, [&] {
            next_ = 0;
        });
    }
    HRESULT STDMETHODCALLTYPE QueryRows(LONG rows, ULONG flags, SRowSet** rowSet) override {
        const Call call = Begin("QueryRows", ShowAll(std::to_string(rows), Show(flags)));
        if (rows < 0) CurrentScript().Misused(label_ + ".QueryRows backwards");
        return call.Answer(S_OK, [&] {
            const bool hostile = batch_ < table_->batches.size();
            if (hostile) ++CurrentScript().totals.hostileAnswers;
            const size_t wanted = hostile ? table_->batches[batch_++] : static_cast<size_t>(std::max<LONG>(rows, 0));
            *rowSet = MakeRowSet(table_->endless ? wanted : std::min(table_->rows.size() - next_, wanted));
        });
    }

    NOT_RELIED_ON(GetLastError, HRESULT, ULONG, MAPIERROR**)
    NOT_RELIED_ON(Advise, ULONG, IUnknown*, ULONG_PTR*)
    NOT_RELIED_ON(Unadvise, ULONG_PTR)
    NOT_RELIED_ON(GetStatus, ULONG*, ULONG*)
    NOT_RELIED_ON(QueryColumns, ULONG, SPropTagArray**)
    NOT_RELIED_ON(SeekRowApprox, ULONG, ULONG)
    NOT_RELIED_ON(QueryPosition, ULONG*, ULONG*, ULONG*)
    NOT_RELIED_ON(FindRow, SRestriction*, ULONG, ULONG)
    NOT_RELIED_ON(Restrict, SRestriction*, ULONG)
    NOT_RELIED_ON(CreateBookmark, ULONG*)
    NOT_RELIED_ON(FreeBookmark, ULONG)
    NOT_RELIED_ON(SortTable, SSortOrderSet*, ULONG)
    NOT_RELIED_ON(QuerySortOrder, SSortOrderSet**)
    NOT_RELIED_ON(Abort)
    NOT_RELIED_ON(ExpandRow, ULONG, BYTE*, ULONG, ULONG, SRowSet**, ULONG*)
    NOT_RELIED_ON(CollapseRow, ULONG, BYTE*, ULONG, ULONG*)
    NOT_RELIED_ON(WaitForCompletion, ULONG, ULONG, ULONG*)
    NOT_RELIED_ON(GetCollapseState, ULONG, ULONG, BYTE*, ULONG*, BYTE**)
    NOT_RELIED_ON(SetCollapseState, ULONG, ULONG, BYTE*, ULONG*)

  private:
    void Retire() override {
        Object::Retire();
        std::vector<ULONG>().swap(columns_);
    }
    SRowSet* MakeRowSet(size_t rows) {
        Loan loan{Kind::RowSet, {}};
        auto* set = static_cast<SRowSet*>(Allocate(offsetof(SRowSet, aRow) + rows * sizeof(SRow), loan));
        set->cRows = static_cast<ULONG>(rows);
        for (size_t i = 0; i < rows; ++i) {
            SRow& row = set->aRow[i];
            row.lpProps = MakeValues(table_->rows[next_++ % table_->rows.size()],
                                     reinterpret_cast<const SPropTagArray*>(columns_.data()), loan, row.cValues);
        }
        CurrentScript().Lend(set, std::move(loan));
        return set;
    }

    const Table* table_;
    std::vector<ULONG> columns_{0};  // laid out as an SPropTagArray
    size_t next_ = 0;
    size_t batch_ = 0;
};

// What containers, entries and the address book have in common.
template <class Interface>
class MapiObject : public Object<Interface> {
  public:
    using Object<Interface>::Object;

    NOT_RELIED_ON(GetLastError, HRESULT, ULONG, MAPIERROR**)
    NOT_RELIED_ON(SaveChanges, ULONG)
    NOT_RELIED_ON(GetPropList, ULONG, SPropTagArray**)
    NOT_RELIED_ON(OpenProperty, ULONG, const IID*, ULONG, ULONG, IUnknown**)
    NOT_RELIED_ON(SetProps, ULONG, SPropValue*, SPropProblemArray**)
    NOT_RELIED_ON(DeleteProps, const SPropTagArray*, SPropProblemArray**)
    NOT_RELIED_ON(CopyTo, ULONG, const IID*, const SPropTagArray*, ULONG_PTR, IUnknown*, const IID*, void*, ULONG,
                  SPropProblemArray**)
    NOT_RELIED_ON(CopyProps, const SPropTagArray*, ULONG_PTR, IUnknown*, const IID*, void*, ULONG, SPropProblemArray**)
    NOT_RELIED_ON(GetNamesFromIDs, SPropTagArray**, GUID*, ULONG, ULONG*, MAPINAMEID***)
    NOT_RELIED_ON(GetIDsFromNames, ULONG, MAPINAMEID**, ULONG, SPropTagArray**)
};

class ScriptedEntry : public MapiObject<IABContainer> {
  public:
    ScriptedEntry(std::string name, const Entry& content) : MapiObject(std::move(name)), entry_(&content) {}

    HRESULT STDMETHODCALLTYPE GetProps(const SPropTagArray* tags, ULONG flags, ULONG* count,
                                       SPropValue** values) override {
        return Begin("GetProps", ShowAll(Show(tags), Show(flags))).Answer(S_OK, [&] {
            Loan loan{Kind::PropertyArray, {}};
            *values = MakeValues(entry_->properties, tags, loan, *count);
            if (*values != nullptr) CurrentScript().Lend(*values, std::move(loan));
        });
    }
    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG flags, IMAPITable** table) override {
        const Call call = Begin("GetContentsTable", Show(flags));
        if (entry_->type == MAPI_MAILUSER) Unexpected("GetContentsTable");
        return call.Answer(entry_->contentsResult,
                           [&] { *table = new ScriptedTable(label_ + ".contents", entry_->contents); });
    }
    HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG flags, IMAPITable** table) override {
        const Call call = Begin("GetHierarchyTable", Show(flags));
        if (entry_->type == MAPI_MAILUSER) Unexpected("GetHierarchyTable");
        return call.Answer(S_OK, [&] { *table = new ScriptedTable(label_ + ".hierarchy", entry_->hierarchy); });
    }

    NOT_RELIED_ON(OpenEntry, ULONG, BYTE*, const IID*, ULONG, ULONG*, IUnknown**)
    NOT_RELIED_ON(SetSearchCriteria, SRestriction*, SBinaryArray*, ULONG)
    NOT_RELIED_ON(GetSearchCriteria, ULONG, SRestriction**, SBinaryArray**, ULONG*)
    NOT_RELIED_ON(CreateEntry, ULONG, BYTE*, ULONG, IMAPIProp**)
    NOT_RELIED_ON(CopyEntries, SBinaryArray*, ULONG_PTR, IUnknown*, ULONG)
    NOT_RELIED_ON(DeleteEntries, SBinaryArray*, ULONG)
    NOT_RELIED_ON(ResolveNames, const SPropTagArray*, ULONG, ADRLIST*, FlagList*)

  private:
    const Entry* entry_;
};

// The identifier of a recipient, or empty.
std::string IdentifierOf(const ADRENTRY& recipient) {
    for (ULONG i = 0; i < recipient.cValues && recipient.rgPropVals != nullptr; ++i) {
        const SPropValue& value = recipient.rgPropVals[i];
        if (value.ulPropTag == PR_ENTRYID)
            return {reinterpret_cast<const char*>(value.Value.bin.lpb), value.Value.bin.cb};
    }
    return {};
}

void SetValues(ADRENTRY& recipient, const Row& row, const SPropTagArray* tags) {
    Loan loan{Kind::PropertyArray, {}};
    recipient.rgPropVals = MakeValues(row, tags, loan, recipient.cValues);
    if (recipient.rgPropVals != nullptr) CurrentScript().Lend(recipient.rgPropVals, std::move(loan));
}

class ScriptedAddressBook : public MapiObject<IAddrBook> {
  public:
    using MapiObject::MapiObject;

    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, BYTE* bytes, const IID* interfaceId, ULONG flags, ULONG* type,
                                        IUnknown** object) override {
        const Call call = Begin("OpenEntry", ShowAll(ShowIdentifier(size, bytes), Show(interfaceId), Show(flags)));
        const std::string id(reinterpret_cast<const char*>(bytes), size);
        const auto found = CurrentScript().entries.find(id);
        const bool exists = found != CurrentScript().entries.end();
        static const Entry nothing;
        return call.Answer(exists ? S_OK : MAPI_E_NOT_FOUND, [&] {
            const Entry& entry = exists ? found->second : nothing;
            *type = entry.type;
            *object = MakeEntry(id, entry);
        });
    }
    HRESULT STDMETHODCALLTYPE PrepareRecips(ULONG flags, const SPropTagArray* tags, ADRLIST* list) override {
        const Call call =
            Begin("PrepareRecips", ShowAll(Show(flags), Show(tags), Show(list->cEntries) + " recipients"));
        return call.Answer(S_OK, [&] {
            for (ULONG i = 0; i < list->cEntries; ++i) {
                ADRENTRY& recipient = list->aEntries[i];
                const auto found = CurrentScript().entries.find(IdentifierOf(recipient));
                if (recipient.rgPropVals != nullptr)
                    CurrentScript().TakeBack(recipient.rgPropVals, Kind::PropertyArray, "PrepareRecips");
                SetValues(recipient, found == CurrentScript().entries.end() ? Row() : found->second.properties, tags);
            }
        });
    }

    NOT_RELIED_ON(GetProps, const SPropTagArray*, ULONG, ULONG*, SPropValue**)
    NOT_RELIED_ON(CompareEntryIDs, ULONG, BYTE*, ULONG, BYTE*, ULONG, ULONG*)
    NOT_RELIED_ON(Advise, ULONG, BYTE*, ULONG, IUnknown*, ULONG_PTR*)
    NOT_RELIED_ON(Unadvise, ULONG_PTR)
    NOT_RELIED_ON(CreateOneOff, char*, char*, char*, ULONG, ULONG*, BYTE**)
    NOT_RELIED_ON(NewEntry, ULONG_PTR, ULONG, ULONG, BYTE*, ULONG, BYTE*, ULONG*, BYTE**)
    NOT_RELIED_ON(ResolveName, ULONG_PTR, ULONG, char*, ADRLIST*)
    NOT_RELIED_ON(Address, ULONG_PTR*, ADRPARM*, ADRLIST**)
    NOT_RELIED_ON(Details, ULONG_PTR*, void*, void*, ULONG, BYTE*, void*, void*, char*, ULONG)
    NOT_RELIED_ON(RecipOptions, ULONG_PTR, ULONG, ADRENTRY*)
    NOT_RELIED_ON(QueryDefaultRecipOpt, char*, ULONG, ULONG*, SPropValue**)
    NOT_RELIED_ON(GetPAB, ULONG*, BYTE**)
    NOT_RELIED_ON(SetPAB, ULONG, BYTE*)
    NOT_RELIED_ON(GetDefaultDir, ULONG*, BYTE**)
    NOT_RELIED_ON(SetDefaultDir, ULONG, BYTE*)
    NOT_RELIED_ON(GetSearchPath, ULONG, SRowSet**)
    NOT_RELIED_ON(SetSearchPath, ULONG, SRowSet*)
};

ADRLIST* MakeAddressList(size_t byteCount) {
    Loan loan{Kind::AddressList, {}};
    auto* list = static_cast<ADRLIST*>(Allocate(byteCount, loan));
    CurrentScript().Lend(list, std::move(loan));
    return list;
}

class ScriptedSupport : public Object<SessionSupport> {
  public:
    using Object::Object;

    HRESULT STDMETHODCALLTYPE AllocateAddressList(ULONG byteCount, ADRLIST** list) override {
        return Begin("AllocateAddressList", Show(byteCount)).Answer(S_OK, [&] { *list = MakeAddressList(byteCount); });
    }
    HRESULT STDMETHODCALLTYPE FreeProperties(SPropValue* values) override {
        const Call call = Begin("FreeProperties", "");
        CurrentScript().TakeBack(values, Kind::PropertyArray, "FreeProperties");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE FreeAddressList(ADRLIST* list) override {
        const Call call = Begin("FreeAddressList", "");
        FreeAddressListAndValues(list, "FreeAddressList");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ExpandRecipients(ULONG flags, ADRLIST** list) override {
        const bool wellFormed = *list != nullptr && (*list)->cEntries == 1;
        const Call call = Begin("ExpandRecipients",
                                ShowAll(Show(flags), wellFormed ? ShowValues((*list)->aEntries[0]) : "not one entry"));
        if (!wellFormed) CurrentScript().Misused("ExpandRecipients needs a list of one entry");
        const auto found = wellFormed ? CurrentScript().entries.find(IdentifierOf((*list)->aEntries[0]))
                                      : CurrentScript().entries.end();
        const bool exists = found != CurrentScript().entries.end();
        return call.Answer(exists ? S_OK : MAPI_E_NOT_FOUND, [&] {
            static const PropTagArray<3> recipientTags{.aulPropTag = {PR_ENTRYID, PR_RECIPIENT_TYPE, PR_DISPLAY_NAME}};
            const std::vector<std::string> members = exists ? found->second.members : std::vector<std::string>();
            ADRLIST* expanded = MakeAddressList(offsetof(ADRLIST, aEntries) + members.size() * sizeof(ADRENTRY));
            expanded->cEntries = static_cast<ULONG>(members.size());
            for (size_t i = 0; i < members.size(); ++i) {
                if (members[i].empty()) {
                    ++CurrentScript().totals.hostileAnswers;
                    expanded->aEntries[i] = {0, recipientTags.cValues, nullptr};
                    continue;
                }
                SetValues(expanded->aEntries[i], {Identifier(members[i]), Number(PR_RECIPIENT_TYPE, MAPI_TO)},
                          recipientTags.Get());
            }
            FreeAddressListAndValues(*list, "ExpandRecipients");
            *list = expanded;
        });
    }

    NOT_RELIED_ON(Reserved3)
    NOT_RELIED_ON(Reserved5)
    NOT_RELIED_ON(Reserved7)
    NOT_RELIED_ON(Reserved9)

  private:
    static std::string ShowValues(const ADRENTRY& recipient) {
        std::string all;
        for (ULONG i = 0; i < recipient.cValues; ++i) {
            const SPropValue& value = recipient.rgPropVals[i];
            std::string text = "?";
            switch (PROP_TYPE(value.ulPropTag)) {
                case PT_STRING8:
                    text = Show(value.Value.lpszA);
                    break;
                case PT_BINARY:
                    text = ShowIdentifier(value.Value.bin.cb, value.Value.bin.lpb);
                    break;
                case PT_LONG:
                    text = std::to_string(value.Value.l);
                    break;
            }
            if (i > 0) all += ' ';
            all += Show(value.ulPropTag) + '=' + text;
        }
        return all;
    }
};

class ScriptedServices : public Object<ServiceAdministration> {
  public:
    using Object::Object;

    HRESULT STDMETHODCALLTYPE CreateService(const char* serviceName, const char* displayName, ULONG flags,
                                            ULONG_PTR reserved1, ULONG_PTR reserved2) override {
        return Begin("CreateService", ShowAll(Show(serviceName), Show(displayName), Show(flags),
                                              std::to_string(reserved1), std::to_string(reserved2)))
            .Answer(S_OK);
    }
    NOT_RELIED_ON(Reserved3)
    NOT_RELIED_ON(Reserved4)
};

class ScriptedAdministration : public Object<ProfileAdministration> {
  public:
    using Object::Object;

    HRESULT STDMETHODCALLTYPE CreateProfile(const char* profileName, const char* password, ULONG flags) override {
        return Begin("CreateProfile", ShowAll(Show(profileName), Show(password), Show(flags))).Answer(S_OK);
    }
    HRESULT STDMETHODCALLTYPE ShowAdministration(const char* profileName, ULONG_PTR window, ULONG flags) override {
        return Begin("ShowAdministration", ShowAll(Show(profileName), std::to_string(window), Show(flags)))
            .Answer(CurrentScript().showResult);
    }
    HRESULT STDMETHODCALLTYPE AdministerServices(const char* profileName, const char* password,
                                                 ServiceAdministration** services) override {
        return Begin("AdministerServices", ShowAll(Show(profileName), Show(password))).Answer(S_OK, [&] {
            *services = new ScriptedServices("services");
        });
    }
    NOT_RELIED_ON(Reserved3)
    NOT_RELIED_ON(Reserved4)
    NOT_RELIED_ON(Reserved6)
    NOT_RELIED_ON(Reserved8)
    NOT_RELIED_ON(Reserved9)
    NOT_RELIED_ON(Reserved10)
};

}  // namespace

IUnknown* MakeEntry(const std::string& id, const Entry& entry) {
    return new ScriptedEntry(id.empty() ? "root" : id.substr(0, 16), entry);
}
IAddrBook* MakeAddressBook() {
    return new ScriptedAddressBook("addressBook");
}
SessionSupport* MakeSupport() {
    return new ScriptedSupport("support");
}
ProfileAdministration* MakeAdministration() {
    return new ScriptedAdministration("administration");
}
