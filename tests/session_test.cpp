// Opening and closing sessions, result codes, and the arguments that the exports test.
#include "support/library_test.h"
#include "support/test_window.h"

namespace {

class SessionTest : public LibraryTest {};

TEST_F(SessionTest, HandsItsArgumentsToTheProvider) {
    const std::string longName(70, 'p');
    const TestWindow window(nullptr, WS_POPUP);
    char data[1], module[1];
    const auto show = [](const void* pointer) {
        char text[32];
        std::snprintf(text, sizeof text, "%p", pointer);
        return std::string(text);
    };
    SessionHandle* opened = library.OpenAddressBook(window.handle, longName.c_str(), 4000000000u, data, 0, module);
    EXPECT_EQ(script.calls.back(), "VOKOpen(" + show(window.handle) + ", \"" + longName + "\", 0xEE6B2800, " +
                                       show(data) + ", 8, null, null, null)");
    EXPECT_EQ(static_cast<void*>(script.resourceModule), module);
    script.Forget();
    EXPECT_EQ(library.CloseAddressBook(opened), 1);
    EXPECT_EQ(script.CallsOf({"Release"}), "addressBook.Release()\nsupport.Release()\n");

    for (const char* profile : {"", static_cast<const char*>(nullptr)}) {
        opened = library.OpenAddressBook(nullptr, profile, 0, nullptr, 0x10008, nullptr);
        EXPECT_EQ(script.calls.back(), "VOKOpen(null, " + std::string(profile == nullptr ? "null" : "\"\"") +
                                           ", 0, null, 0x10008, null, null, null)");
        EXPECT_EQ(library.CloseAddressBook(opened), 1);
    }
}

TEST_F(SessionTest, KeepsTheResultOfTheLastOpen) {
    script.openResult = 5;
    SessionHandle* const opened = Open();
    EXPECT_EQ(library.GetLastVOKError(nullptr), 5);
    uint32_t count = 0;
    EXPECT_EQ(library.GetDestinationList(opened, 0, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library.GetLastVOKError(opened), 0);

    script.openResult = MAPI_E_NOT_FOUND;
    EXPECT_EQ(library.OpenAddressBook(nullptr, "unknown", 0, nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(library.GetLastVOKError(nullptr), MAPI_E_NOT_FOUND);
    EXPECT_EQ(library.GetLastVOKError(opened), 0);
    Close(opened);
    EXPECT_EQ(library.CloseAddressBook(nullptr), 1);
    EXPECT_EQ(library.GetLastVOKError(nullptr), MAPI_E_NOT_FOUND);
}

// A handle in memory that cannot be written is no handle.
TEST_F(SessionTest, RecognisesAnUnwritableHandle) {
    script.openResult = 7;
    Open();
    const std::vector<const void*> addresses{reinterpret_cast<void*>(8), "text that cannot be written to",
                                             reinterpret_cast<void*>(~uintptr_t{15})};
    for (const void* address : addresses) {
        auto* const handle = static_cast<SessionHandle*>(const_cast<void*>(address));
        EXPECT_EQ(library.GetLastVOKError(handle), 7);
        EXPECT_EQ(library.CloseAddressBook(handle), 1);
    }
}

TEST_F(SessionTest, FailedOpensReleaseWhatTheProviderStored) {
    struct {
        Fault fault;
        HRESULT result;
    } const cases[] = {
        {{"VOKOpen", 1, MAPI_E_USER_CANCEL, true}, MAPI_E_USER_CANCEL},
        {{"VOKOpen", 1, MAPI_E_USER_CANCEL, false}, MAPI_E_USER_CANCEL},
        {{"VOKOpen", 1, S_OK, false}, E_FAIL},
    };
    for (const auto& [fault, result] : cases) {
        script.Forget();
        script.faults = {fault};
        EXPECT_EQ(library.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
        EXPECT_EQ(library.GetLastVOKError(nullptr), result);
        EXPECT_EQ(script.Imbalance(), "");
    }
}

TEST_F(SessionTest, LoadsTheProviderOnceForAllOpenSessions) {
    SessionHandle* const first = Open();
    SessionHandle* const second = Open();
    EXPECT_EQ(script.CountOf("SetResourceDllHandle"), 1u);
    Close(first);
    Close(Open());
    EXPECT_EQ(script.CountOf("SetResourceDllHandle"), 1u);
    Close(second);
    Close(Open());
    EXPECT_EQ(script.CountOf("SetResourceDllHandle"), 2u);
    script.openResult = E_FAIL;
    EXPECT_EQ(library.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
    script.openResult = S_OK;
    Open();
    EXPECT_EQ(script.CountOf("SetResourceDllHandle"), 4u) << "a failed open left the provider loaded";
}

// The module stays loaded after a refusal; the next session uses it without asking again, and unloads it at its end.
TEST_F(SessionTest, ARefusedResourceModuleFailsOneOpen) {
    script.resourceResult = E_ACCESSDENIED;
    EXPECT_EQ(library.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(library.GetLastVOKError(nullptr), E_FAIL);
    EXPECT_EQ(script.CountOf("VOKOpen"), 0u);
    Close(Open());
    EXPECT_EQ(script.CountOf("SetResourceDllHandle"), 1u);
    EXPECT_EQ(library.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(script.CountOf("SetResourceDllHandle"), 2u);
    Close(Open());
}

TEST_F(SessionTest, DisablesTheTopLevelWindowDuringTheOpen) {
    const TestWindow top(nullptr, WS_POPUP);
    const TestWindow pane(top.handle, WS_CHILD);
    const TestWindow control(pane.handle, WS_CHILD);
    bool topEnabled = true, paneEnabled = false;
    script.during = [&](const std::string& function) {
        if (function != "VOKOpen") return;
        topEnabled = IsWindowEnabled(top.handle) != FALSE;
        paneEnabled = IsWindowEnabled(pane.handle) != FALSE;
    };
    struct {
        HWND window;
        HRESULT result;
        bool enabledBefore, enabledDuring;
    } const cases[] = {
        {control.handle, S_OK, true, false},  {top.handle, S_OK, true, false}, {control.handle, E_FAIL, true, false},
        {control.handle, S_OK, false, false}, {nullptr, S_OK, true, true},
    };
    for (const auto& each : cases) {
        EnableWindow(top.handle, each.enabledBefore);
        script.openResult = each.result;
        library.CloseAddressBook(library.OpenAddressBook(each.window, nullptr, 0, nullptr, 0, nullptr));
        EXPECT_EQ(topEnabled, each.enabledDuring);
        EXPECT_TRUE(paneEnabled);
        EXPECT_EQ(IsWindowEnabled(top.handle) != FALSE, each.enabledBefore);
    }
}

TEST_F(SessionTest, SelectionDialogsAnswerMinusOne) {
    EXPECT_EQ(library.DisplayRecipSelect(), -1);
    EXPECT_EQ(library.DisplayRecipSelectEx(), -1);
    using WithArguments = intptr_t(void*, intptr_t, const char*);
    EXPECT_EQ(library.Find<WithArguments>("DisplayRecipSelectEx")(&library, 7, "text"), -1);
    EXPECT_EQ(library.Find<void>("DisplayRecipSelect"), library.Find<void>("DisplayRecipSelectEx"));
}

TEST_F(SessionTest, NullArgumentsFailAndChangeNothing) {
    script.openResult = 3;
    const std::vector<DestinationRecord> records = DestinationsOf({PersonRow("p", "Ada")});
    ASSERT_EQ(records.size(), 1u);
    const DestinationEntry entry = records[0].entry;
    const AddressBookEntry book = ListBooks(session)[0].entry;
    script.Forget();

    uint32_t count = 99;
    EXPECT_EQ(library.GetAddressBookList(nullptr, 0, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library.GetAddressBookList(session, 0, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(library.GetDestinationList(nullptr, 0, book, &count, nullptr), 0);
    EXPECT_EQ(library.GetDestinationList(session, 0, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library.GetDestinationList(session, 0, book, nullptr, nullptr), 0);
    EXPECT_EQ(library.GetDestinationDetails(nullptr, entry, &count, nullptr), 0);
    EXPECT_EQ(library.GetDestinationDetails(session, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library.GetDestinationDetails(session, entry, nullptr, nullptr), 0);
    EXPECT_EQ(library.GetDestinationsInGroup(nullptr, 0, entry, &count, nullptr), 0);
    EXPECT_EQ(library.GetDestinationsInGroup(session, 0, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library.GetDestinationsInGroup(session, 0, entry, nullptr, nullptr), 0);
    EXPECT_EQ(count, 99u);
    EXPECT_EQ(script.callCount, 0u);
    EXPECT_EQ(library.GetLastVOKError(nullptr), 3);
}

// A provider may run a message loop; what the caller does in it must not disturb the call under way.
TEST_F(SessionTest, CallsFromInsideACallDoNotDisturbIt) {
    DestinationsOf({PersonRow("p", "Ada", {Text(PR_PRIMARY_FAX_NUMBER, "1")}), GroupRow("g", "Group")});
    script.entries["g"] = {.type = MAPI_DISTLIST, .properties = {Identifier("g")}, .members = {"p"}};
    const AddressBookEntry book = ListBooks(session)[0].entry;
    const DestinationEntry group = ListDestinations(session, book)[1].entry;
    SessionHandle* const other = Open();
    unsigned tried = 0;
    script.during = [&](const std::string&) {
        if (script.depth > 1) return;  // the calls made here call the provider, too
        ++tried;
        uint32_t count = 0;
        EXPECT_EQ(library.GetAddressBookList(session, 0, nullptr, &count, nullptr), 0);
        EXPECT_EQ(library.GetDestinationList(session, 0, book, &count, nullptr), 0);
        EXPECT_EQ(library.GetDestinationDetails(session, group, &count, nullptr), 0);
        EXPECT_EQ(library.GetDestinationsInGroup(session, 0, group, &count, nullptr), 0);
        EXPECT_EQ(library.CloseAddressBook(session), 1);
        EXPECT_EQ(count, 0u);
        EXPECT_EQ(library.GetAddressBookList(other, 0, nullptr, &count, nullptr), 1);
        EXPECT_EQ(count, 1u);
        EXPECT_EQ(library.CreateProfile(0, 0, "p", 0, nullptr, nullptr), 1);
        EXPECT_EQ(library.CloseAddressBook(library.OpenAddressBook(nullptr, "p", 0, nullptr, 0, nullptr)), 1);
    };
    EXPECT_EQ(ListMembers(session, group).size(), 1u);
    EXPECT_EQ(Details(session, group), "");
    EXPECT_EQ(ListDestinations(session, book).size(), 2u);
    EXPECT_EQ(ListBooks(session).size(), 1u);
    EXPECT_GT(tried, 20u);
    tried = 0;
    Close(session);
    EXPECT_EQ(tried, 2u) << "the releases of the session's two objects";
}

}  // namespace
