// GetAddressBookList: the address books of a session and the containers below them.
#include <algorithm>

#include "support/library_test.h"

namespace {

class AddressBookListTest : public LibraryTest {
  protected:
    // Three address books; the second holds A (with A1 and A2) and B.
    void MakeThreeBooks() {
        AddContainer("", "one", "One", {Text(PR_SERVICE_NAME, "VCARD"), Number(PR_VOK_PROVIDER_VALUE, -2)});
        AddContainer("", "two", "Two",
                     {Missing(PR_SERVICE_NAME), Number(CHANGE_PROP_TYPE(PR_VOK_PROVIDER_VALUE, PT_I2), 7)});
        AddContainer("", "three", "Three");
        AddContainer("two", "a", "A", {Text(PR_SERVICE_NAME, "ignored"), Number(PR_VOK_PROVIDER_VALUE, 9)});
        AddContainer("two", "b", "B");
        AddContainer("a", "a1", "A1");
        AddContainer("a", "a2", "A2");
    }
    int32_t Count(uint32_t& count, AddressBookEntry parent = nullptr, uint32_t reserved = 0) {
        return library_.GetAddressBookList(session_, reserved, parent, &count, nullptr);
    }
    int32_t Fill(void* storage, uint32_t capacity, AddressBookEntry parent = nullptr, uint32_t reserved = 0,
                 int16_t recordSize = sizeof(AddressBookRecord)) {
        const RecordListDescriptor descriptor{recordSize, {}, storage};
        uint32_t count = capacity;
        const int32_t result = library_.GetAddressBookList(session_, reserved, parent, &count, &descriptor);
        EXPECT_EQ(count, capacity);
        return result;
    }
};

TEST_F(AddressBookListTest, CountsAndFillsTheTopLevel) {
    MakeThreeBooks();
    session_ = Open();
    uint32_t count = 5;
    EXPECT_EQ(Count(count), 1);
    EXPECT_EQ(count, 8u);

    std::vector<AddressBookRecord> records(4, Untouched<AddressBookRecord>());
    EXPECT_EQ(Fill(records.data(), 4), 1);
    EXPECT_TRUE(SameBytes(records[0], ExpectedBook(records[0], "One", "VCARD", 0xFFFFFFFE)));
    EXPECT_TRUE(SameBytes(records[1], ExpectedBook(records[1], "Two", "", 0)));
    EXPECT_TRUE(SameBytes(records[2], ExpectedBook(records[2], "Three", "", 0)));
    EXPECT_TRUE(SameBytes(records[3], Untouched<AddressBookRecord>()));

    records.assign(3, Untouched<AddressBookRecord>());
    EXPECT_EQ(Fill(records.data(), 2), 0);
    EXPECT_TRUE(SameBytes(records[1], ExpectedBook(records[1], "Two", "", 0)));
    EXPECT_TRUE(SameBytes(records[2], Untouched<AddressBookRecord>()));
    EXPECT_EQ(Fill(nullptr, 3), 0);
}

TEST_F(AddressBookListTest, ReadsHierarchyTablesAsAgreed) {
    MakeThreeBooks();
    session_ = Open();
    script_.Forget();
    uint32_t count = 0;
    EXPECT_EQ(Count(count), 1);
    std::string text;
    for (const std::string& call : script_.calls) text += call + '\n';
    EXPECT_EQ(text,
              "addressBook.OpenEntry(null, null, 0)\n"
              "root.GetHierarchyTable(0)\n"
              "root.hierarchy.SetColumns([3001001E 0FFF0102 0FFE0003 30050003 3D09001E 60000003], 0)\n"
              "root.hierarchy.SeekRow(0, 0, null)\n"
              "root.hierarchy.GetRowCount(0)\n"
              "root.hierarchy.QueryRows(3, 0)\n"
              "VOKFreeProws()\n"
              "root.hierarchy.Release()\n"
              "root.Release()\n");
}

TEST_F(AddressBookListTest, DescendsDepthFirst) {
    MakeThreeBooks();
    session_ = Open();
    const AddressBookEntry two = ListBooks(session_)[1].entry;
    script_.Forget();
    uint32_t count = 10;
    EXPECT_EQ(Count(count, two), 1);
    EXPECT_EQ(count, 14u);
    // A's subtree is read while the row set with A and B is still held.
    EXPECT_EQ(script_.CallsOf({"OpenEntry", "VOKFreeProws"}),
              "addressBook.OpenEntry(two, null, 0)\n"
              "addressBook.OpenEntry(a, null, 0)\n"
              "addressBook.OpenEntry(a1, null, 0)\n"
              "addressBook.OpenEntry(a2, null, 0)\n"
              "VOKFreeProws()\n"
              "addressBook.OpenEntry(b, null, 0)\n"
              "VOKFreeProws()\n");
    script_.Forget();

    std::vector<AddressBookRecord> records(5, Untouched<AddressBookRecord>());
    EXPECT_EQ(Fill(records.data(), 5, two), 1);
    EXPECT_TRUE(SameBytes(records[0], ExpectedContainer(records[0], "A", nullptr)));
    EXPECT_TRUE(SameBytes(records[1], ExpectedContainer(records[1], "A1", &records[0])));
    EXPECT_TRUE(SameBytes(records[2], ExpectedContainer(records[2], "A2", &records[0])));
    EXPECT_TRUE(SameBytes(records[3], ExpectedContainer(records[3], "B", nullptr)));
    EXPECT_TRUE(SameBytes(records[4], Untouched<AddressBookRecord>()));
    records.assign(3, Untouched<AddressBookRecord>());
    EXPECT_EQ(Fill(records.data(), 2, two), 0);
    EXPECT_TRUE(SameBytes(records[1], ExpectedContainer(records[1], "A1", &records[0])));
    EXPECT_TRUE(SameBytes(records[2], Untouched<AddressBookRecord>()));
    EXPECT_EQ(Fill(nullptr, 4, two), 0);
    EXPECT_EQ(script_.callCount, 0u) << "the subtree was read again";

    const AddressBookEntry twoAgain = ListBooks(session_)[1].entry;
    script_.Forget();
    EXPECT_EQ(ListBooks(session_, twoAgain).size(), 4u);
    EXPECT_EQ(script_.CountOf("GetHierarchyTable"), 5u);
}

TEST_F(AddressBookListTest, WritesRecordsAtAnyDistance) {
    MakeThreeBooks();
    session_ = Open();
    ListBooks(session_);
    struct {
        int16_t recordSize;
        size_t begin;
    } const cases[] = {{540, 0}, {547, 1}, {-600, 1300}};
    for (const auto& [recordSize, begin] : cases) {
        std::vector<char> storage(2000, static_cast<char>(untouched));
        std::vector<char> expected = storage;
        EXPECT_EQ(Fill(storage.data() + begin, 3, nullptr, 0, recordSize), 1);
        const char* const names[] = {"One", "Two", "Three"};
        for (int i = 0; i < 3; ++i) {
            const auto offset = static_cast<size_t>(static_cast<int>(begin) + i * recordSize);
            AddressBookRecord record;
            std::memcpy(&record, storage.data() + offset, 540);
            record = ExpectedBook(record, names[i], i == 0 ? "VCARD" : "", i == 0 ? 0xFFFFFFFE : 0);
            std::memcpy(expected.data() + offset, &record, 540);
        }
        EXPECT_TRUE(SameBytes(storage.data(), expected.data(), storage.size())) << recordSize;
    }
}

TEST_F(AddressBookListTest, CutsNamesAfter259Bytes) {
    AddContainer("", "b", std::string(300, 'n'), {Text(PR_SERVICE_NAME, std::string(259, 's') + "t")});
    AddContainer("b", "c", std::string(259, 'c') + '\xE9');
    session_ = Open();
    const auto books = ListBooks(session_);
    EXPECT_TRUE(SameBytes(books[0], ExpectedBook(books[0], std::string(259, 'n'), std::string(259, 's'), 0)));
    const auto containers = ListBooks(session_, books[0].entry);
    EXPECT_TRUE(SameBytes(containers[0], ExpectedContainer(containers[0], std::string(259, 'c'), nullptr)));
}

TEST_F(AddressBookListTest, WithoutATreeThereIsNothingToFill) {
    script_.entries.try_emplace("");
    session_ = Open();
    auto record = Untouched<AddressBookRecord>();
    uint32_t count = 3;
    EXPECT_EQ(Fill(&record, 1), 1);
    EXPECT_EQ(Count(count), 0);
    EXPECT_EQ(Fill(&record, 1), 1);
    EXPECT_EQ(Count(count, nullptr, 1), 0);
    AddContainer("", "b", "Book");
    EXPECT_EQ(Count(count, nullptr, 1), 1);
    EXPECT_EQ(Fill(&record, 1, nullptr, 1), 1);
    EXPECT_EQ(count, 3u);
    EXPECT_TRUE(SameBytes(record, Untouched<AddressBookRecord>()));
    EXPECT_EQ(Fill(&record, 1), 1);
    EXPECT_TRUE(SameBytes(record, ExpectedBook(record, "Book", "", 0)));
}

// Which address book a descend goes into is told by its identifier.
TEST_F(AddressBookListTest, FindsTheAddressBookByItsIdentifier) {
    AddContainer("", "same", "First");
    AddContainer("", "same", "Second");
    AddContainer("", std::string("sa\0me", 5), "Zero inside");
    AddContainer("", "", "Empty");
    AddContainer("", "closed", "Closed");
    script_.entries[""].hierarchy.rows.push_back({Text(PR_DISPLAY_NAME, "None"), Missing(PR_ENTRYID)});
    script_.entries.erase("closed");
    AddContainer("same", "c", "Inner");
    AddContainer(std::string("sa\0me", 5), "z", "Zero's");
    AddContainer("c", "d", "Innermost");
    session_ = Open();
    const auto books = ListBooks(session_);
    ASSERT_EQ(books.size(), 6u);

    script_.Forget();
    const auto inner = ListBooks(session_, books[1].entry);
    ASSERT_EQ(inner.size(), 2u);
    EXPECT_STREQ(inner[0].name, "Inner");
    EXPECT_EQ(ListBooks(session_, books[0].entry)[0].entry, inner[0].entry);
    EXPECT_STREQ(ListBooks(session_, books[2].entry)[0].name, "Zero's");
    EXPECT_EQ(script_.CountOf("GetHierarchyTable"), 5u);
    script_.Forget();
    // No containers: a missing identifier finds nothing, a container is no address book.
    for (const AddressBookEntry parent : {books[5].entry, inner[0].entry})
        EXPECT_TRUE(ListBooks(session_, parent).empty());
    EXPECT_EQ(script_.callCount, 0u);
    // One that cannot be opened is not tried again.
    EXPECT_TRUE(ListBooks(session_, books[4].entry).empty());
    EXPECT_TRUE(ListBooks(session_, books[4].entry).empty());
    EXPECT_EQ(script_.callCount, 1u);
    uint32_t count = 0;
    EXPECT_EQ(Count(count, books[0].entry, 1), 1);
    EXPECT_EQ(count, 0u);
}

TEST_F(AddressBookListTest, ReadsLargeTablesInEqualBatches) {
    struct {
        size_t rows;
        const char* calls;
    } const cases[] = {
        {9999, "QueryRows(9999, 0)\n"},
        {10000, "QueryRows(10000, 0)\n"},
        {25000, "QueryRows(10000, 0)\nQueryRows(10000, 0)\nQueryRows(10000, 0)\n"},
    };
    for (const auto& [rows, calls] : cases) {
        script_.entries.clear();
        script_.entries[""].hierarchy.rows.assign(rows, ContainerRow("b", "Book"));
        session_ = Open();
        script_.Forget();
        uint32_t count = 0;
        EXPECT_EQ(Count(count), 1);
        EXPECT_EQ(count, rows);
        std::string seen = script_.CallsOf({"QueryRows"});
        for (size_t at; (at = seen.find("root.hierarchy.")) != std::string::npos;) seen.erase(at, 15);
        EXPECT_EQ(seen, calls);
        Close(session_);
    }
}

// A container that holds one of its ancestors is listed, without containers.
TEST_F(AddressBookListTest, EndsWhereAHierarchyRefersBack) {
    AddContainer("", "b", "Book");
    AddContainer("b", "c", "C");
    AddContainer("c", "b", "Book again");
    AddContainer("c", "c", "C again");
    AddContainer("b", "d", "D");
    AddContainer("d", "c", "C elsewhere");
    session_ = Open();
    const auto containers = ListBooks(session_, ListBooks(session_)[0].entry);
    std::string names;
    for (const AddressBookRecord& record : containers) names += std::string(record.name) + ';';
    EXPECT_EQ(names, "C;Book again;C again;D;C elsewhere;Book again;C again;");
}

}  // namespace
