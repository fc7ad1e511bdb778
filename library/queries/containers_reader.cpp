// Containers reader: one walk down the provider's hierarchy with a stack of open tables.
#include "queries/containers_reader.h"

#include <unordered_set>
#include <vector>

#include "provider/entry_opener.h"
#include "queries/hierarchy_columns.h"

namespace {

class ContainersReader {
  public:
    ContainersReader(QueryContext& context, CObList& theChildren)
        : blocks(context.addressBookTree->blocks), children(theChildren), opener(context.session->addressBook.Get()) {}

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

    MemoryBlocks& blocks;
    CObList& children;
    EntryOpener opener;
    std::vector<Level> path;                               // from the address book down
    std::unordered_set<std::string_view> openIdentifiers;  // of the containers on the path
};

void ContainersReader::Read(const CAddressBookEntry& book) {
    Enter(book.entryId, nullptr);
    while (!path.empty()) {
        std::optional<PropertyValues> values;
        if (children.GetCount() < mostContainers) values = path.back().rows.Next();
        if (!values) {
            Leave();
            continue;
        }
        const HierarchyRow row(*values);
        CContainerEntry* entry = blocks.Create<CContainerEntry>(
            CString(blocks, row.GetString(HierarchyColumn::DisplayName)), path.back().entry, children.GetCount());
        children.AddTail(entry);
        SetEntryId(*entry, blocks, row.GetEntryId(), PR_ENTRYID);
        Enter(entry->entryId, entry);
    }
}

// A container that is open already is not entered again: a hierarchy that refers back to an ancestor ends there.
void ContainersReader::Enter(const EntryId* entryId, const CContainerEntry* entry) {
    const std::string_view identifier = GetBytes(entryId);
    if (openIdentifiers.contains(identifier)) return;
    Held<IABContainer> container = opener.OpenContainer(identifier);
    if (!container) return;
    openIdentifiers.insert(identifier);
    TableCursor rows = ReadHierarchy(container);
    path.push_back({entry, identifier, std::move(container), std::move(rows)});
}

void ContainersReader::Leave() {
    openIdentifiers.erase(path.back().identifier);
    path.pop_back();
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
