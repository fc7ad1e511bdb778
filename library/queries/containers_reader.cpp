// Containers reader: one walk down the provider's hierarchy with a stack of open tables.
#include "queries/containers_reader.h"

#include <unordered_set>
#include <vector>

#include "provider/entry_opener.h"
#include "queries/hierarchy_row.h"

namespace {

class ContainersReader {
  public:
    ContainersReader(QueryContext& context, CObList& theChildren)
        : blocks_(context.addressBookTree->blocks),
          children_(theChildren),
          opener_(context.session->addressBook.Get()) {}

    void Read(const CAddressBookEntry& book);

  private:
    // A container whose table is being read. Its row set goes back first, then the table, then the container.
    struct Level {
        const CContainerEntry* entry;  // null for the address book
        std::string_view identifier;
        Held<IABContainer> container;
        TableCursor rows;
    };

    void Enter(const EntryId* entryId, const CContainerEntry* entry);
    void Leave();

    MemoryBlocks& blocks_;
    CObList& children_;
    EntryOpener opener_;
    std::vector<Level> path_;                               // from the address book down
    std::unordered_set<std::string_view> openIdentifiers_;  // of the containers on the path
};

void ContainersReader::Read(const CAddressBookEntry& book) {
    Enter(book.entryId, nullptr);
    while (!path_.empty()) {
        std::optional<PropertyValues> values;
        if (children_.GetCount() < mostContainers) values = path_.back().rows.Next();
        if (!values) {
            Leave();
            continue;
        }
        const HierarchyRow row(*values);
        CContainerEntry* entry = blocks_.Create<CContainerEntry>(
            CString(blocks_, row.GetString(HierarchyColumn::DisplayName)), path_.back().entry, children_.GetCount());
        children_.AddTail(entry);
        SetEntryId(*entry, blocks_, row.GetEntryId(), PR_ENTRYID);
        if (!GetBytes(entry->entryId).empty()) Enter(entry->entryId, entry);
    }
}

// A container that is open already is not entered again: a hierarchy that refers back to an ancestor ends there.
void ContainersReader::Enter(const EntryId* entryId, const CContainerEntry* entry) {
    const std::string_view identifier = GetBytes(entryId);
    if (openIdentifiers_.contains(identifier)) return;
    Held<IABContainer> container = opener_.OpenContainer(entryId);
    if (!container) return;
    openIdentifiers_.insert(identifier);
    TableCursor rows = ReadHierarchy(container);
    path_.push_back({entry, identifier, std::move(container), std::move(rows)});
}

void ContainersReader::Leave() {
    openIdentifiers_.erase(path_.back().identifier);
    path_.pop_back();
}

}  // namespace

TableCursor ReadHierarchy(const Held<IABContainer>& container) {
    Held<IMAPITable> table;
    if (!container || FAILED(container->GetHierarchyTable(0, table.Receive()))) table.Release();
    return TableCursor(std::move(table), HierarchyColumns.Get());
}

void ReadContainers(QueryContext& context, CAddressBookEntry& book) {
    if (book.children != nullptr) return;
    MemoryBlocks& blocks = context.addressBookTree->blocks;
    MemoryRollback rollback(blocks);
    CObList* children = blocks.Create<CObList>();
    ContainersReader(context, *children).Read(book);
    book.children = children;
    rollback.Keep();
}
