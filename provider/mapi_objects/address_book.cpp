// The address book of a session, and the opening of entries by their identifiers.
#include "mapi_objects/entries.h"
#include "mapi_objects/property_source.h"
#include "mapi_objects/recipients.h"

namespace {

class AddressBook final : public PropertyObject<UnsupportedAddressBook> {
  public:
    explicit AddressBook(std::shared_ptr<Session> session) : session_(std::move(session)) {}

    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, BYTE* bytes, const IID* interfaceId, ULONG, ULONG* objectType,
                                        IUnknown** object) override {
        return ::OpenEntry(session_, size, bytes, interfaceId, objectType, object);
    }
    HRESULT STDMETHODCALLTYPE CompareEntryIDs(ULONG size1, BYTE* bytes1, ULONG size2, BYTE* bytes2, ULONG,
                                              ULONG* result) override {
        return Guarded([&] {
            Require(result != nullptr);
            const std::optional<EntryId> first = DecodeEntryId(bytes1, size1, session_->Number());
            const std::optional<EntryId> second = DecodeEntryId(bytes2, size2, session_->Number());
            Require(first && second, MAPI_E_INVALID_ENTRYID);
            *result = Session::AreSame(*first, *second);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE PrepareRecips(ULONG flags, const SPropTagArray* tags, ADRLIST* list) override {
        return Guarded([&] {
            RequireNarrowText(flags);
            PrepareRecipients(*session_, tags, list);
            return S_OK;
        });
    }

  private:
    bool Answers(REFIID id) const override { return IsOneOf(id, {mapiPropInterface, addrBookInterface}); }
    void Write(ValueWriter& value) const override {
        if (value.Tag() == PR_OBJECT_TYPE) value.Long(static_cast<LONG>(MAPI_ADDRBOOK));
    }
    void KeepAlive(ResultBuffer&) const override {}

    std::shared_ptr<Session> session_;
};

struct Opened {
    Owned<IUnknown> object;
    ULONG type;
};

Opened Open(const std::shared_ptr<Session>& session, ULONG size, const BYTE* bytes) {
    if (size == 0 && bytes == nullptr) return {MakeRootContainer(session), MAPI_ABCONT};
    const std::optional<EntryId> id = DecodeEntryId(bytes, size, session->Number());
    Require(id && session->FindNode(id->node) != nullptr, MAPI_E_INVALID_ENTRYID);
    if (id->kind == EntryId::Kind::Container) return {MakeContainer(session, id->node), MAPI_ABCONT};
    std::optional<FoundEntry> found = session->FindEntryOrReport(*id, {});
    Require(found.has_value(), MAPI_E_NOT_FOUND);
    if (id->kind == EntryId::Kind::Group) return {MakeDistributionList(session, std::move(*found)), MAPI_DISTLIST};
    return {MakeMailUser(session, std::move(*found)), MAPI_MAILUSER};
}

}  // namespace

Owned<IAddrBook> MakeAddressBook(std::shared_ptr<Session> session) {
    return Owned<IAddrBook>(new AddressBook(std::move(session)));
}

HRESULT OpenEntry(const std::shared_ptr<Session>& session, ULONG size, const BYTE* bytes, const IID* interfaceId,
                  ULONG* objectType, IUnknown** object) {
    return Guarded([&] {
        Require(object != nullptr);
        *object = nullptr;
        if (objectType != nullptr) *objectType = 0;
        Opened opened = Open(session, size, bytes);
        if (interfaceId != nullptr) {
            void* answer = nullptr;
            const HRESULT result = opened.object->QueryInterface(*interfaceId, &answer);
            Require(SUCCEEDED(result), result);
            *object = static_cast<IUnknown*>(answer);
        } else {
            *object = opened.object.release();
        }
        if (objectType != nullptr) *objectType = opened.type;
        return S_OK;
    });
}
