// The rows of contents tables. A table shows its cards as they were when it was made.
#include "mapi_objects/destination.h"
#include "mapi_objects/table.h"
#include "session/categories.h"
#include "session/group_members.h"
#include "session/unplaced_numbers.h"

namespace {

class ContentsRows final : public RowSource {
  public:
    ContentsRows(std::shared_ptr<Session> session, std::uint32_t node, ContentsStyle style)
        : node_(node), style_(style) {
        shared_->session = std::move(session);
    }

    // All cards of a file, or none when there is no memory for them.
    void AddCards(const std::shared_ptr<const CardSet>& cards, std::uint32_t file);
    void AddCard(const std::shared_ptr<const CardSet>& cards, std::uint32_t file, std::uint32_t card);

    size_t Count() const override { return rows_.size(); }
    std::shared_ptr<const void> Owner() const override { return shared_; }
    size_t ExtraBytesPerRow() const override { return entryIdSize; }
    std::vector<ULONG> DefaultColumns() const override {
        return {PR_DISPLAY_NAME, PR_ENTRYID, PR_OBJECT_TYPE, PR_ADDRTYPE};
    }

    void Write(size_t row, const std::vector<ULONG>& tags, SPropValue* values, ResultBuffer& buffer) const override {
        const Row& wanted = rows_[row];
        const FileCards& set = shared_->sets[wanted.set];
        const EntryId id{wanted.kind, node_, set.file, wanted.card, wanted.faxNumber, set.cards->Edition()};
        const Destination destination(*set.cards, id, style_, shared_->session->Number());
        for (const ULONG tag : tags) {
            ValueWriter writer(tag, *values++, buffer);
            destination.Write(writer);
        }
    }

  private:
    struct Row {
        std::uint32_t set;
        EntryId::Kind kind;
        std::uint32_t card;
        std::uint32_t faxNumber;
    };
    // What rows point into: it outlives the table as long as a row set does.
    struct Shared {
        std::shared_ptr<Session> session;
        std::vector<FileCards> sets;
    };

    std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
    std::uint32_t node_;
    ContentsStyle style_;
    std::vector<Row> rows_;
};

void ContentsRows::AddCard(const std::shared_ptr<const CardSet>& cards, std::uint32_t file, std::uint32_t card) {
    std::vector<FileCards>& sets = shared_->sets;
    if (sets.empty() || sets.back().cards != cards) sets.push_back({cards, file});
    const auto set = static_cast<std::uint32_t>(sets.size() - 1);
    ForEachEntryId(*cards, file, card, node_, style_, [&](const EntryId& id) {
        rows_.push_back({set, id.kind, id.card, id.faxNumber});
    });
}

void ContentsRows::AddCards(const std::shared_ptr<const CardSet>& cards, std::uint32_t file) {
    const size_t rowCount = rows_.size();
    const size_t setCount = shared_->sets.size();
    try {
        const auto count = static_cast<std::uint32_t>(cards->Cards().size());
        rows_.reserve(rowCount + count);
        for (std::uint32_t card = 0; card < count; ++card) AddCard(cards, file, card);
    } catch (const std::bad_alloc&) {
        rows_.resize(rowCount);
        shared_->sets.resize(setCount);
        shared_->session->ForgetFile(file);
    }
}

}  // namespace

std::unique_ptr<const RowSource> ContentsOfContainer(const std::shared_ptr<Session>& session, std::uint32_t node) {
    const BookSettings& settings = session->ReadSettings(node);
    const std::vector<std::uint32_t> files = session->ListFiles(node, settings);
    auto rows = std::make_unique<ContentsRows>(session, node, settings.Style());
    for (const std::uint32_t file : files) {
        const std::shared_ptr<const CardSet> cards =
            session->ReadFile(file, {.categories = settings.ShowsCategories()});
        rows->AddCards(cards, file);
        ReportUnplacedNumbers(*session, file, *cards, settings.Style());
    }
    if (settings.ShowsCategories()) {
        const std::uint32_t groups = MakeCategoryGroups(*session, node, files);
        rows->AddCards(session->ReadFile(groups), groups);
    }
    return rows;
}

std::unique_ptr<const RowSource> MembersOfGroup(const std::shared_ptr<Session>& session, std::uint32_t node,
                                                const CardReference& group, ContentsStyle style) {
    // A member is one row here, however many fax numbers it has.
    const ContentsStyle shown = style == ContentsStyle::FaxEntries ? ContentsStyle::Plain : style;
    auto rows = std::make_unique<ContentsRows>(session, node, shown);
    MessagePass pass(session->Messages());
    for (const CardReference& member : MemberFinder(*session).FindMembers(node, group).cards)
        rows->AddCard(member.cards, member.file, member.card);
    pass.Finish();
    return rows;
}
