// Opened cards: persons and fax entries, which only have properties, and groups, which also list their members.
#include "objects/destination.h"
#include "objects/entries.h"
#include "objects/table.h"

namespace {

// What an opened card holds: its session and the cards as they were when it was opened.
struct OpenedCard {
    std::shared_ptr<Session> session;
    EntryId id;
    CardReference card;

    ContentsStyle Style() const { return session->FindNode(id.node)->settings.Style(); }
    void Write(ValueWriter& value) const { Destination(*card.cards, id, Style(), session->Number()).Write(value); }
};

class MailUser final : public PropertyObject<UnsupportedProp<IMAPIProp>> {
  public:
    explicit MailUser(OpenedCard opened) : opened_(std::move(opened)) {}

  private:
    bool Answers(REFIID id) const override { return IsOneOf(id, {mapiPropInterface, mailUserInterface}); }
    void Write(ValueWriter& value) const override { opened_.Write(value); }
    void KeepAlive(ResultBuffer& buffer) const override { buffer.KeepAlive(opened_.card.cards); }

    OpenedCard opened_;
};

class DistributionList final : public PropertyObject<UnsupportedContainer> {
  public:
    explicit DistributionList(OpenedCard opened) : opened_(std::move(opened)) {}

    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG flags, IMAPITable** table) override {
        return Guarded([&] {
            Require(table != nullptr);
            *table = nullptr;
            RequireNarrowText(flags);
            *table = MakeTable(MembersOfGroup(opened_.session, opened_.id.node, opened_.card, opened_.Style()));
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG, IMAPITable**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, BYTE* bytes, const IID* interfaceId, ULONG, ULONG* objectType,
                                        IUnknown** object) override {
        return ::OpenEntry(opened_.session, size, bytes, interfaceId, objectType, object);
    }

  private:
    bool Answers(REFIID id) const override {
        return IsOneOf(id, {mapiPropInterface, mapiContainerInterface, abContainerInterface, distListInterface});
    }
    void Write(ValueWriter& value) const override { opened_.Write(value); }
    void KeepAlive(ResultBuffer& buffer) const override { buffer.KeepAlive(opened_.card.cards); }

    OpenedCard opened_;
};

}  // namespace

IMAPIProp* MakeMailUser(std::shared_ptr<Session> session, const EntryId& id, CardReference card) {
    return new MailUser({std::move(session), id, std::move(card)});
}

IABContainer* MakeDistributionList(std::shared_ptr<Session> session, const EntryId& id, CardReference card) {
    return new DistributionList({std::move(session), id, std::move(card)});
}
