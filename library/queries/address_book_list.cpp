// Address book list: reading the top level, finding an address book again, writing records.
#include "queries/address_book_list.h"

#include "provider/entry_opener.h"
#include "provider/table_cursor.h"
#include "queries/containers_reader.h"
#include "queries/hierarchy_row.h"
#include "queries/record_writer.h"

namespace {

constexpr size_t longestName = 259;
constexpr TextField nameField = TEXT_FIELD(AddressBookRecord, name, longestName, Cut::Bytes);
constexpr TextField serviceNameField = TEXT_FIELD(AddressBookRecord, serviceName, longestName, Cut::Bytes);

// The caller's records, contiguous and a signed distance apart.
class RecordArray {
  public:
    RecordArray(const RecordListDescriptor& records, uint32_t theCapacity)
        : storage_(reinterpret_cast<uintptr_t>(records.recordStorage)),
          distance_(records.recordSize),
          capacity_(theCapacity) {}

    // The address of a record; null when the caller has no such record.
    AddressBookRecord* Find(uint32_t index) const {
        return index < capacity_ && storage_ != 0 ? GetAddress(index) : nullptr;
    }
    AddressBookRecord* GetAddress(uint32_t index) const {
        return reinterpret_cast<AddressBookRecord*>(storage_ + static_cast<uintptr_t>(index * distance_));
    }

  private:
    uintptr_t storage_;
    intptr_t distance_;
    uint32_t capacity_;
};

void WriteEntry(const RecordWriter& writer, const AddressBookRecord* parent, const CBaseEntry& entry) {
    const CHandleEntry* handle = &entry;
    writer.PutValue(offsetof(AddressBookRecord, parent), parent);
    writer.PutValue(offsetof(AddressBookRecord, entry), handle);
    writer.PutText(nameField, entry.name.View());
}

// There is no tree while it is read: the old one ends first.
void ReadAddressBooks(QueryContext& context) {
    std::unique_ptr<CObjectList> tree = std::move(context.addressBookTree);
    if (tree == nullptr) tree = std::make_unique<CObjectList>();
    tree->DeleteAll();
    const Held<IABContainer> root = EntryOpener(context.session->addressBook.Get()).OpenRoot();
    TableCursor rows = ReadHierarchy(root);
    while (tree->GetCount() < mostContainers) {
        const std::optional<PropertyValues> values = rows.Next();
        if (!values) break;
        const HierarchyRow row(*values);
        CAddressBookEntry* book =
            tree->blocks.Create<CAddressBookEntry>(CString(tree->blocks, row.GetString(HierarchyColumn::DisplayName)),
                                                   CString(tree->blocks, row.GetString(HierarchyColumn::ServiceName)),
                                                   row.GetLong(HierarchyColumn::ProviderValue));
        SetEntryId(*book, tree->blocks, row.GetEntryId(), PR_ENTRYID);
        tree->AddTail(book);
    }
    context.addressBookTree = std::move(tree);
}

// The first address book with the identifier of the entry that a caller's handle names, or null.
CAddressBookEntry* FindAddressBook(const CObjectList& tree, const void* parentEntry) {
    const CBaseEntry* wanted = AsAddressBookEntry(parentEntry);
    if (wanted == nullptr || wanted->entryId == nullptr) return nullptr;
    for (CAddressBookEntry& book : tree.Each<CAddressBookEntry>())
        if (book.entryId != nullptr && GetBytes(book.entryId) == GetBytes(wanted->entryId)) return &book;
    return nullptr;
}

bool FillAddressBooks(const CObjectList& tree, const RecordArray& records) {
    uint32_t index = 0;
    for (const CAddressBookEntry& book : tree.Each<CAddressBookEntry>()) {
        AddressBookRecord* record = records.Find(index++);
        if (record == nullptr) return false;
        const RecordWriter writer(record);
        WriteEntry(writer, nullptr, book);
        writer.PutValue(offsetof(AddressBookRecord, providerValue), book.providerValue);
        writer.PutText(serviceNameField, book.serviceName.View());
    }
    return true;
}

bool FillContainers(const CObList& containers, const RecordArray& records) {
    for (const CContainerEntry& container : containers.Each<CContainerEntry>()) {
        AddressBookRecord* record = records.Find(container.index);
        if (record == nullptr) return false;
        const AddressBookRecord* parent =
            container.parent != nullptr ? records.GetAddress(container.parent->index) : nullptr;
        WriteEntry(RecordWriter(record), parent, container);
    }
    return true;
}

}  // namespace

bool ListAddressBooks(QueryContext& context, uint32_t reserved, const void* parentEntry, uint32_t& count,
                      const RecordListDescriptor* records) {
    if (parentEntry == nullptr && records == nullptr) ReadAddressBooks(context);
    if (context.addressBookTree == nullptr) return true;
    CObjectList& tree = *context.addressBookTree;
    if (tree.IsEmpty()) {
        context.addressBookTree.reset();
        return false;
    }
    if (reserved != 0) return true;

    const CObList* listed = &tree;
    if (parentEntry != nullptr) {
        CAddressBookEntry* book = FindAddressBook(tree, parentEntry);
        if (book == nullptr) return true;
        ReadContainers(context, *book);
        listed = book->children;
    }
    if (records == nullptr) {
        count += listed->GetCount();
        return true;
    }
    const RecordArray array(*records, count);
    return parentEntry == nullptr ? FillAddressBooks(tree, array) : FillContainers(*listed, array);
}
