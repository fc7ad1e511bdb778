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
    SessionHandle* opened = library_.OpenAddressBook(window.handle, longName.c_str(), 4000000000u, data, 0, module);
    EXPECT_EQ(script_.calls.back(), "VOKOpen(" + show(window.handle) + ", \"" + longName + "\", 0xEE6B2800, " +
                                        show(data) + ", 8, null, null, null)");
    EXPECT_EQ(static_cast<void*>(script_.resourceModule), module);
    script_.Forget();
    EXPECT_EQ(library_.CloseAddressBook(opened), 1);
    EXPECT_EQ(script_.CallsOf({"Release"}), "addressBook.Release()\nsupport.Release()\n");

    for (const char* profile : {"", static_cast<const char*>(nullptr)}) {
        opened = library_.OpenAddressBook(nullptr, profile, 0, nullptr, 0x10008, nullptr);
        EXPECT_EQ(script_.calls.back(), "VOKOpen(null, " + std::string(profile == nullptr ? "null" : "\"\"") +
                                            ", 0, null, 0x10008, null, null, null)");
        EXPECT_EQ(library_.CloseAddressBook(opened), 1);
    }
}

TEST_F(SessionTest, KeepsTheResultOfTheLastOpen) {
    script_.openResult = 5;
    SessionHandle* const opened = Open();
    EXPECT_EQ(library_.GetLastVOKError(nullptr), 5);
    uint32_t count = 0;
    EXPECT_EQ(library_.GetDestinationList(opened, 0, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library_.GetLastVOKError(opened), 0);

    script_.openResult = MAPI_E_NOT_FOUND;
    EXPECT_EQ(library_.OpenAddressBook(nullptr, "unknown", 0, nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(library_.GetLastVOKError(nullptr), MAPI_E_NOT_FOUND);
    EXPECT_EQ(library_.GetLastVOKError(opened), 0);
    Close(opened);
    EXPECT_EQ(library_.CloseAddressBook(nullptr), 1);
    EXPECT_EQ(library_.GetLastVOKError(nullptr), MAPI_E_NOT_FOUND);
}

// A handle in memory that cannot be written is no handle.
TEST_F(SessionTest, RecognisesAnUnwritableHandle) {
    script_.openResult = 7;
    Open();
    const std::vector<const void*> addresses{reinterpret_cast<void*>(8), "text that cannot be written to",
                                             reinterpret_cast<void*>(~uintptr_t{15})};
    for (const void* address : addresses) {
        auto* const handle = static_cast<SessionHandle*>(const_cast<void*>(address));
        EXPECT_EQ(library_.GetLastVOKError(handle), 7);
        EXPECT_EQ(library_.CloseAddressBook(handle), 1);
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
        script_.Forget();
        script_.faults = {fault};
        EXPECT_EQ(library_.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
        EXPECT_EQ(library_.GetLastVOKError(nullptr), result);
        EXPECT_EQ(script_.Imbalance(), "");
    }
}

TEST_F(SessionTest, LoadsTheProviderOnceForAllOpenSessions) {
    SessionHandle* const first = Open();
    SessionHandle* const second = Open();
    EXPECT_EQ(script_.CountOf("SetResourceDllHandle"), 1u);
    Close(first);
    Close(Open());
    EXPECT_EQ(script_.CountOf("SetResourceDllHandle"), 1u);
    Close(second);
    Close(Open());
    EXPECT_EQ(script_.CountOf("SetResourceDllHandle"), 2u);
    script_.openResult = E_FAIL;
    EXPECT_EQ(library_.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
    script_.openResult = S_OK;
    Open();
    EXPECT_EQ(script_.CountOf("SetResourceDllHandle"), 4u) << "a failed open left the provider loaded";
}

// The module stays loaded after a refusal; the next session uses it without asking again, and unloads it at its end.
TEST_F(SessionTest, ARefusedResourceModuleFailsOneOpen) {
    script_.resourceResult = E_ACCESSDENIED;
    EXPECT_EQ(library_.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(library_.GetLastVOKError(nullptr), E_FAIL);
    EXPECT_EQ(script_.CountOf("VOKOpen"), 0u);
    Close(Open());
    EXPECT_EQ(script_.CountOf("SetResourceDllHandle"), 1u);
    EXPECT_EQ(library_.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(script_.CountOf("SetResourceDllHandle"), 2u);
    Close(Open());
}

TEST_F(SessionTest, DisablesTheTopLevelWindowDuringTheOpen) {
    const TestWindow top(nullptr, WS_POPUP);
    const TestWindow pane(top.handle, WS_CHILD);
    const TestWindow control(pane.handle, WS_CHILD);
    bool topEnabled = true, paneEnabled = false;
    script_.during = [&](const std::string& function) {
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
        script_.openResult = each.result;
        library_.CloseAddressBook(library_.OpenAddressBook(each.window, nullptr, 0, nullptr, 0, nullptr));
        EXPECT_EQ(topEnabled, each.enabledDuring);
        EXPECT_TRUE(paneEnabled);
        EXPECT_EQ(IsWindowEnabled(top.handle) != FALSE, each.enabledBefore);
    }
}

TEST_F(SessionTest, SelectionDialogsAnswerMinusOne) {
    EXPECT_EQ(library_.DisplayRecipSelect(), -1);
    EXPECT_EQ(library_.DisplayRecipSelectEx(), -1);
    using WithArguments = intptr_t(void*, intptr_t, const char*);
    EXPECT_EQ(library_.Find<WithArguments>("DisplayRecipSelectEx")(&library_, 7, "text"), -1);
    EXPECT_EQ(library_.Find<void>("DisplayRecipSelect"), library_.Find<void>("DisplayRecipSelectEx"));
}

TEST_F(SessionTest, NullArgumentsFailAndChangeNothing) {
    script_.openResult = 3;
    const std::vector<DestinationRecord> records = DestinationsOf({PersonRow("p", "Ada")});
    ASSERT_EQ(records.size(), 1u);
    const DestinationEntry entry = records[0].entry;
    const AddressBookEntry book = ListBooks(session_)[0].entry;
    script_.Forget();

    uint32_t count = 99;
    EXPECT_EQ(library_.GetAddressBookList(nullptr, 0, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library_.GetAddressBookList(session_, 0, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(library_.GetDestinationList(nullptr, 0, book, &count, nullptr), 0);
    EXPECT_EQ(library_.GetDestinationList(session_, 0, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library_.GetDestinationList(session_, 0, book, nullptr, nullptr), 0);
    EXPECT_EQ(library_.GetDestinationDetails(nullptr, entry, &count, nullptr), 0);
    EXPECT_EQ(library_.GetDestinationDetails(session_, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library_.GetDestinationDetails(session_, entry, nullptr, nullptr), 0);
    EXPECT_EQ(library_.GetDestinationsInGroup(nullptr, 0, entry, &count, nullptr), 0);
    EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, nullptr, &count, nullptr), 0);
    EXPECT_EQ(library_.GetDestinationsInGroup(session_, 0, entry, nullptr, nullptr), 0);
    EXPECT_EQ(count, 99u);
    EXPECT_EQ(script_.callCount, 0u);
    EXPECT_EQ(library_.GetLastVOKError(nullptr), 3);
}

}  // namespace
