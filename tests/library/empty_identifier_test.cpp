// An identifier of 0 bytes is one, the root container's; none at all opens nothing.
#include "support/library_test.h"

namespace {

class EmptyIdentifierTest : public LibraryTest {
  protected:
    std::string Opened() {
        const std::string calls = script_.CallsOf({"OpenEntry"});
        script_.Forget();
        return calls;
    }
};

const std::string rootOpened = "addressBook.OpenEntry(null, null, 0)\n";

TEST_F(EmptyIdentifierTest, OpensAddressBooksGroupsAndExpansions) {
    Entry& root = script_.entries[""];
    root.hierarchy.rows = {ContainerRow("", "Book"), ContainerRow("c", "Container")};
    root.contents.rows = {
        GroupRow("", "Group"),
        PersonRow("p", "Ada", {Text(PR_COMPANY_NAME, ""), Text(PR_DEPARTMENT_NAME, ""), Text(PR_COMMENT, "")})};
    root.properties = {Identifier(""), Text(PR_DISPLAY_NAME, "Root")};
    root.members = {"p"};
    script_.entries["c"];
    session_ = Open();
    const AddressBookEntry book = ListBooks(session_)[0].entry;
    Opened();
    // Its container of the same identifier is listed and not entered.
    EXPECT_EQ(ListBooks(session_, book).size(), 2u);
    EXPECT_EQ(Opened(), rootOpened + "addressBook.OpenEntry(c, null, 0)\n");
    const std::vector<DestinationRecord> destinations = ListDestinations(session_, book);
    ASSERT_EQ(destinations.size(), 2u);
    EXPECT_EQ(Opened(), rootOpened);
    EXPECT_EQ(Details(session_, destinations[0].entry), "Ada\r\nGroup");
    EXPECT_EQ(Opened(), rootOpened);
    uint32_t count = 0;
    EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, destinations[0].entry, &count, nullptr), 1);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(Opened(), rootOpened);
}

TEST_F(EmptyIdentifierTest, NoIdentifierOpensNothing) {
    const Row none{Text(PR_DISPLAY_NAME, "Nobody"), Missing(PR_ENTRYID), Number(PR_OBJECT_TYPE, MAPI_DISTLIST)};
    const DestinationEntry group = DestinationsOf({none})[0].entry;
    script_.entries[""].hierarchy.rows = {none};
    Opened();
    EXPECT_EQ(Details(session_, group), "");
    uint32_t count = 3;
    EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, group, &count, nullptr), 1);
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(Opened(), "");
    const AddressBookEntry book = ListBooks(session_)[0].entry;
    Opened();
    EXPECT_TRUE(ListDestinations(session_, book).empty());
    EXPECT_EQ(Opened(), "");
}

// What a person is asked for has nothing to ask where the person has no bytes.
TEST_F(EmptyIdentifierTest, PersonsWithoutBytesAreNotReadAgain) {
    for (const HRESULT style : {0, 4}) {
        session_ = nullptr;
        DestinationsOf({PersonRow("", "Ada", {Missing(PR_COMPANY_NAME), Text(PR_ADDRTYPE, "FAX")})}, style);
        EXPECT_EQ(script_.CountOf("GetProps"), 0u);
    }
}

}  // namespace
