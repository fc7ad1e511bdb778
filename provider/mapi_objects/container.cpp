// The root container, address books and the containers below them.
#include "mapi_objects/destination.h"
#include "mapi_objects/entries.h"
#include "mapi_objects/table.h"
#include "reading_stop.h"

namespace {

// A container as a row of its parent's hierarchy table and as an object.
void WriteNode(const Session& session, std::uint32_t number, ValueWriter& value) {
    const BookNode& node = *session.FindNode(number);
    switch (value.Tag()) {
        case PR_DISPLAY_NAME:
            return value.Point(node.name.c_str());
        case PR_ENTRYID: {
            const EntryIdBytes id = EncodeEntryId({EntryId::Kind::Container, number}, session.Number());
            return value.Binary(id.data(), id.size());
        }
        case PR_OBJECT_TYPE:
            return value.Long(static_cast<LONG>(MAPI_ABCONT));
        case PR_DISPLAY_TYPE:
            return value.Long(DT_LOCAL);
        case PR_SERVICE_NAME:
            return value.Point(vcardServiceName.data());
        case PR_VOK_PROVIDER_VALUE:
            return value.Long(static_cast<LONG>(node.service));
        default:
            return;
    }
}

class HierarchyRows final : public RowSource {
  public:
    HierarchyRows(std::shared_ptr<Session> session, std::vector<std::uint32_t> nodes)
        : session_(std::move(session)), nodes_(std::move(nodes)) {}

    size_t Count() const override { return nodes_.size(); }
    std::shared_ptr<const void> Owner() const override { return session_; }
    size_t ExtraBytesPerRow() const override { return entryIdSize; }
    std::vector<ULONG> DefaultColumns() const override {
        return {PR_DISPLAY_NAME, PR_ENTRYID, PR_OBJECT_TYPE, PR_DISPLAY_TYPE};
    }
    void Write(size_t row, const std::vector<ULONG>& tags, SPropValue* values, ResultBuffer& buffer) const override {
        for (const ULONG tag : tags) {
            ValueWriter writer(tag, *values++, buffer);
            WriteNode(*session_, nodes_[row], writer);
        }
    }

  private:
    std::shared_ptr<Session> session_;
    std::vector<std::uint32_t> nodes_;
};

class NoRows final : public RowSource {
  public:
    size_t Count() const override { return 0; }
    void Write(size_t, const std::vector<ULONG>&, SPropValue*, ResultBuffer&) const override {}
    std::shared_ptr<const void> Owner() const override { return nullptr; }
    size_t ExtraBytesPerRow() const override { return 0; }
    std::vector<ULONG> DefaultColumns() const override { return {PR_DISPLAY_NAME, PR_ENTRYID, PR_OBJECT_TYPE}; }
};

class Container : public PropertyObject<UnsupportedContainer> {
  public:
    explicit Container(std::shared_ptr<Session> session) : session_(std::move(session)) {}

    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, BYTE* bytes, const IID* interfaceId, ULONG, ULONG* objectType,
                                        IUnknown** object) final {
        return ::OpenEntry(session_, size, bytes, interfaceId, objectType, object);
    }
    HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG flags, IMAPITable** table) final {
        return Guarded([&] {
            Require(table != nullptr);
            *table = nullptr;
            RequireNarrowText(flags);
            Require((flags & CONVENIENT_DEPTH) == 0, MAPI_E_NO_SUPPORT);
            const StoppableReading reading;
            *table = MakeTable(std::make_unique<HierarchyRows>(session_, ListContainers())).release();
            return S_OK;
        });
    }

  protected:
    virtual std::vector<std::uint32_t> ListContainers() = 0;
    const std::shared_ptr<Session>& GetSession() const { return session_; }

  private:
    bool Answers(REFIID id) const override {
        return IsOneOf(id, {mapiPropInterface, mapiContainerInterface, abContainerInterface});
    }

    std::shared_ptr<Session> session_;
};

class BookContainer final : public Container {
  public:
    BookContainer(std::shared_ptr<Session> session, std::uint32_t node) : Container(std::move(session)), node_(node) {}

    // The style of the contents is the result.
    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG flags, IMAPITable** table) override {
        return Guarded([&] {
            Require(table != nullptr);
            *table = nullptr;
            RequireNarrowText(flags);
            const StoppableReading reading;
            *table = MakeTable(ContentsOfContainer(GetSession(), node_)).release();
            return static_cast<HRESULT>(GetSession()->FindNode(node_)->settings.Style());
        });
    }

  private:
    std::vector<std::uint32_t> ListContainers() override { return GetSession()->ListContainers(node_); }
    void Write(ValueWriter& value) const override { WriteNode(*GetSession(), node_, value); }
    void KeepAlive(ResultBuffer& buffer) const override { buffer.KeepAlive(GetSession()); }

    std::uint32_t node_;
};

class RootContainer final : public Container {
  public:
    using Container::Container;

    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG flags, IMAPITable** table) override {
        return Guarded([&] {
            Require(table != nullptr);
            *table = nullptr;
            RequireNarrowText(flags);
            *table = MakeTable(std::make_unique<NoRows>()).release();
            return S_OK;
        });
    }

  private:
    std::vector<std::uint32_t> ListContainers() override { return GetSession()->ListBooks(); }
    void Write(ValueWriter& value) const override {
        if (value.Tag() == PR_DISPLAY_NAME) value.Point("Address Books");
        if (value.Tag() == PR_OBJECT_TYPE) value.Long(static_cast<LONG>(MAPI_ABCONT));
        if (value.Tag() == PR_DISPLAY_TYPE) value.Long(DT_LOCAL);
    }
    void KeepAlive(ResultBuffer&) const override {}
};

}  // namespace

Owned<IABContainer> MakeRootContainer(std::shared_ptr<Session> session) {
    return Owned<IABContainer>(new RootContainer(std::move(session)));
}

Owned<IABContainer> MakeContainer(std::shared_ptr<Session> session, std::uint32_t node) {
    return Owned<IABContainer>(new BookContainer(std::move(session), node));
}
