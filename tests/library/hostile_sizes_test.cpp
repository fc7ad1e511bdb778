// Hierarchies and tables of sizes that no address book has: they end, and cost no stack. In a test run of several code
// pages one is enough for them.
#include "provider/table_cursor.h"
#include "queries/containers_reader.h"
#include "support/library_test.h"

namespace {

class HostileSizesTest : public LibraryTest {
  protected:
    HostileSizesTest() { script_.keepsCalls = false; }

    uint32_t CountBooks(AddressBookEntry parent) {
        uint32_t count = 0;
        EXPECT_EQ(library_.GetAddressBookList(session_, 0, parent, &count, nullptr), 1);
        return count;
    }
};

TEST_F(HostileSizesTest, HierarchiesMayBeDeep) {
    constexpr size_t depth = 100'000;
    std::string parent;
    for (size_t i = 0; i <= depth; ++i) {
        const std::string id = "c" + std::to_string(i);
        AddContainer(parent, id, id);
        parent = id;
    }
    session_ = Open();
    const auto containers = ListBooks(session_, ListBooks(session_)[0].entry);
    ASSERT_EQ(containers.size(), depth);
    EXPECT_TRUE(SameBytes(
        containers[depth - 1],
        ExpectedContainer(containers[depth - 1], parent, const_cast<AddressBookRecord*>(&containers[depth - 2]))));
}

// A million containers side by side are listed; more than the most, side by side or in a table without end, are not.
TEST_F(HostileSizesTest, HierarchiesMayBeWide) {
    AddContainer("", "b", "Book");
    script_.entries["b"].hierarchy = {{ContainerRow("", "Leaf")}, 1'000'000, {}, true};
    session_ = Open();
    AddressBookEntry book = ListBooks(session_)[0].entry;
    EXPECT_EQ(CountBooks(book), 1'000'000u);

    script_.entries["b"].hierarchy.statedCount = 0xFFFFFFFF;
    book = ListBooks(session_)[0].entry;
    EXPECT_EQ(CountBooks(book), mostContainers);
    script_.entries[""].hierarchy = {{ContainerRow("b", "Book")}, 0xFFFFFFFF, {}, true};
    EXPECT_EQ(CountBooks(nullptr), mostContainers);
}

// Each level refers to the next one twice, so the paths double with every level.
TEST_F(HostileSizesTest, SharedContainersMayHaveAnyNumberOfPlaces) {
    AddContainer("", "0", "Book");
    for (int level = 0; level < 40; ++level)
        for (const char* name : {"left", "right"}) AddContainer(std::to_string(level), std::to_string(level + 1), name);
    session_ = Open();
    EXPECT_EQ(CountBooks(ListBooks(session_)[0].entry), mostContainers);
}

TEST_F(HostileSizesTest, TablesWithoutEndEnd) {
    Row nothing;
    nothing.withoutValues = true;
    DestinationsOf({});
    const AddressBookEntry book = ListBooks(session_)[0].entry;
    script_.entries["b"].contents = {{nothing}, 0xFFFFFFFF, {}, true};
    script_.Forget();
    EXPECT_TRUE(ListDestinations(session_, book).empty());
    EXPECT_EQ(script_.CountOf("QueryRows"), TableCursor::mostRows / 10'000);
}

}  // namespace
