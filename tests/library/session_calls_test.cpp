// Calls that meet: made from inside a call while the provider runs a message loop, made with entries of another
// session, and closings that come in the middle.
#include "support/library_test.h"

namespace {

class SessionCallsTest : public LibraryTest {
  protected:
    struct Listed {
        SessionHandle* session;
        AddressBookEntry book;
        DestinationEntry person;
        DestinationEntry group;
    };

    void SetUp() override {
        LibraryTest::SetUp();
        AddContainer("", "b", "Book").contents.rows = {PersonRow("p", "Ada", {Text(PR_PRIMARY_FAX_NUMBER, "1")}),
                                                       GroupRow("g", "Group")};
        AddContainer("b", "c", "Container");
        Entry& group = script_.entries["g"];
        group = {.type = MAPI_DISTLIST, .properties = {Identifier("g")}, .members = {"p", "q"}};
        group.contents.rows = {PersonRow("p", "Ada"), PersonRow("q", "Eve")};
    }

    Listed List(SessionHandle* session) {
        const AddressBookEntry book = ListBooks(session)[0].entry;
        const std::vector<DestinationRecord> destinations = ListDestinations(session, book);
        return {session, book, destinations[0].entry, destinations[1].entry};
    }

    // Every reading call that asks the provider, made for one session with the entries of another or the same one.
    void CallEverything(SessionHandle* session, const Listed& entries, const std::vector<int32_t>& expected) {
        std::vector<int32_t> results;
        uint32_t count = 0;
        results.push_back(library_.GetAddressBookList(session, 0, entries.book, &count, nullptr));
        results.push_back(library_.GetDestinationDetails(session, entries.person, &count, nullptr));
        results.push_back(library_.GetDestinationDetails(session, entries.group, &count, nullptr));
        results.push_back(library_.GetDestinationsInGroup(session, 0, entries.group, &count, nullptr));
        results.push_back(library_.GetDestinationsInGroup(session, 0, entries.person, &count, nullptr));
        results.push_back(library_.GetDestinationList(session, 0, entries.book, &count, nullptr));
        results.push_back(library_.GetAddressBookList(session, 0, nullptr, &count, nullptr));
        EXPECT_EQ(results, expected);
    }
};

TEST_F(SessionCallsTest, CallsFromInsideACallDoNotDisturbIt) {
    const Listed listed = List(Open());
    SessionHandle* const other = Open();
    unsigned tried = 0;
    script_.during = [&](const std::string&) {
        if (script_.depth > 1) return;  // the calls made here call the provider, too
        ++tried;
        CallEverything(listed.session, listed, {0, 0, 0, 0, 0, 0, 0});
        // A group of a session that is in use is in use with it; everything else of the other session works.
        CallEverything(other, listed, {1, 1, 0, 0, 1, 1, 1});
        EXPECT_EQ(library_.CreateProfile(0, 0, "p", 0, nullptr, nullptr), 1);
        EXPECT_EQ(library_.CloseAddressBook(library_.OpenAddressBook(nullptr, "p", 0, nullptr, 0, nullptr)), 1);
    };
    EXPECT_EQ(ListMembers(listed.session, listed.group).size(), 2u);
    EXPECT_EQ(Details(listed.session, listed.group), "Ada\r\nEve");
    EXPECT_EQ(ListDestinations(listed.session, listed.book).size(), 2u);
    EXPECT_EQ(ListBooks(listed.session).size(), 1u);
    EXPECT_GT(tried, 20u);
    tried = 0;
    Close(listed.session);
    EXPECT_EQ(tried, 2u) << "the releases of the session's two objects";
}

// What is read of a group belongs to its own list, whichever session reads it.
TEST_F(SessionCallsTest, EntriesOfOtherSessionsAreHarmless) {
    const Listed first = List(Open());
    for (const bool lists : {false, true}) {
        SessionHandle* const other = Open();
        if (lists) List(other);
        EXPECT_EQ(Details(other, first.group), "Ada\r\nEve");
        EXPECT_EQ(ListMembers(other, first.group).size(), 2u);
        CallEverything(other, first, {1, 1, 1, 1, 1, 1, 1});
        const Listed second = List(other);
        CallEverything(first.session, second, {1, 1, 1, 1, 1, 1, 1});
        Close(other);
        EXPECT_EQ(Details(first.session, List(first.session).group), "Ada\r\nEve");
    }
    // The members stay when the session that read them ends, and go with the list when its session ends first.
    SessionHandle* const reader = Open();
    const Listed again = List(first.session);
    EXPECT_EQ(Details(reader, again.group), "Ada\r\nEve");
    Close(reader);
    EXPECT_EQ(Details(first.session, again.group), "Ada\r\nEve");
    const Listed last = List(Open());
    EXPECT_EQ(Details(last.session, again.group), "Ada\r\nEve");
    Close(first.session);
    EXPECT_EQ(List(last.session).session, last.session);
}

// Closed in the middle of a call, twice even: the session stays to the end of the call and is gone after it.
TEST_F(SessionCallsTest, AClosingInTheMiddleOfACallTakesEffectAtItsEnd) {
    struct {
        const char* name;
        bool forAnother;  // called for another session than the one that is closed, with an entry of that one
        std::function<int32_t(SessionHandle*, const Listed&, uint32_t*)> call;
    } const cases[] = {
        {"address books", false,
         [&](auto* session, auto&, auto* count) {
             return library_.GetAddressBookList(session, 0, nullptr, count, nullptr);
         }},
        {"destinations", false,
         [&](auto* session, auto& listed, auto* count) {
             return library_.GetDestinationList(session, 0, listed.book, count, nullptr);
         }},
        {"details", false,
         [&](auto* session, auto& listed, auto* count) {
             return library_.GetDestinationDetails(session, listed.group, count, nullptr);
         }},
        {"expansion", false,
         [&](auto* session, auto& listed, auto* count) {
             return library_.GetDestinationsInGroup(session, 0, listed.group, count, nullptr);
         }},
        {"details for another", true,
         [&](auto* session, auto& listed, auto* count) {
             return library_.GetDestinationDetails(session, listed.group, count, nullptr);
         }},
        {"expansion for another", true,
         [&](auto* session, auto& listed, auto* count) {
             return library_.GetDestinationsInGroup(session, 0, listed.group, count, nullptr);
         }},
    };
    SessionHandle* const other = Open();
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        const Listed closed = List(library_.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr));
        const size_t lent = script_.loans.size();
        unsigned closings = 0;
        size_t leastLent = lent;
        script_.during = [&](const std::string& function) {
            if (script_.depth > 1 || function == "Release") return;
            EXPECT_EQ(library_.CloseAddressBook(closed.session), 1);
            CallEverything(closed.session, closed, {0, 0, 0, 0, 0, 0, 0});
            leastLent = std::min(leastLent, script_.loans.size());
            ++closings;
        };
        uint32_t count = 0;
        EXPECT_EQ(each.call(each.forAnother ? other : closed.session, closed, &count), 1);
        script_.during = nullptr;
        EXPECT_NE(count, 0u) << "the call goes on undisturbed";
        EXPECT_GT(closings, 1u);
        EXPECT_EQ(leastLent, lent);
        EXPECT_EQ(script_.loans.size(), lent - 2) << "address book and support object are back";
    }
    EXPECT_EQ(ListBooks(other).size(), 1u);
}

// A call from inside a Release finds the result that the call under way is going to return, and its own one stays.
TEST_F(SessionCallsTest, ReleasesSeeTheLastResult) {
    script_.showResult = 6;
    for (const bool create : {true, false}) {
        script_.faults = {{create ? "AdministerServices" : "ShowAdministration", 1, 6, true}};
        Close(Open());
        script_.Forget();
        std::vector<HRESULT> seen;
        script_.during = [&](const std::string& function) {
            if (function != "Release" || script_.depth > 1) return;
            seen.push_back(library_.GetLastVOKError(nullptr));
            script_.openResult = 9;
            library_.CloseAddressBook(library_.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr));
        };
        EXPECT_EQ(create ? library_.CreateProfile(0, 0, "p", 0, nullptr, nullptr)
                         : library_.DisplayAdminProfiles(0, "p", 0, 0, nullptr),
                  1);
        script_.during = nullptr;
        script_.openResult = S_OK;
        EXPECT_EQ(seen, create ? (std::vector<HRESULT>{6, 9}) : (std::vector<HRESULT>{6}));
        EXPECT_EQ(library_.GetLastVOKError(nullptr), 9);
    }
}

}  // namespace
