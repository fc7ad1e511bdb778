// Opened cards: persons and fax entries, which only have properties, and groups, which also list their members.
#include "mapi_objects/destination.h"
#include "mapi_objects/entries.h"
#include "mapi_objects/table.h"
#include "reading_stop.h"
#include "session/group_members.h"

namespace {

// What an opened card holds: its session and the cards as they were when it was opened.
struct OpenedCard {
    std::shared_ptr<Session> session;
    FoundEntry entry;

    const std::shared_ptr<const CardSet>& Cards() const { return entry.card.cards; }
    ContentsStyle Style() const { return session->FindNode(entry.id.node)->settings.Style(); }
    void Write(ValueWriter& value) const { Destination(*Cards(), entry.id, Style(), session->Number()).Write(value); }
};

class MailUser final : public PropertyObject<UnsupportedProp<IMAPIProp>> {
  public:
    explicit MailUser(OpenedCard opened) : opened_(std::move(opened)) {}

  private:
    bool Answers(REFIID id) const override { return IsOneOf(id, {mapiPropInterface, mailUserInterface}); }
    void Write(ValueWriter& value) const override { opened_.Write(value); }
    void KeepAlive(ResultBuffer& buffer) const override { buffer.KeepAlive(opened_.Cards()); }

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
            const StoppableReading reading;
            const std::optional<FoundEntry> group =
                FindGroupAnew(*opened_.session, opened_.entry.id, opened_.Cards()->Text(opened_.entry.card.Get().name));
            Require(group.has_value(), MAPI_E_NOT_FOUND);
            *table = MakeTable(MembersOfGroup(opened_.session, group->id.node, group->card, opened_.Style())).release();
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
    void KeepAlive(ResultBuffer& buffer) const override { buffer.KeepAlive(opened_.Cards()); }

    OpenedCard opened_;
};

}  // namespace

Owned<IMAPIProp> MakeMailUser(std::shared_ptr<Session> session, FoundEntry entry) {
    return Owned<IMAPIProp>(new MailUser({std::move(session), std::move(entry)}));
}

Owned<IABContainer> MakeDistributionList(std::shared_ptr<Session> session, FoundEntry entry) {
    return Owned<IABContainer>(new DistributionList({std::move(session), std::move(entry)}));
}
