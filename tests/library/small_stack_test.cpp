// The library on a thread with 64 KB of stack, as a fax program's printing thread may be: a whole scenario, and input
// of any depth and size.
#include <functional>

#include "support/scenario.h"

#ifndef _WIN32
#include <pthread.h>
#endif

namespace {

// The sanitizers keep a multiple of every frame.
#if defined(__SANITIZE_ADDRESS__)
constexpr size_t stackSize = 256 * 1024;
#else
constexpr size_t stackSize = 64 * 1024;
#endif

using Work = std::function<void()>;

#ifdef _WIN32
void RunOnSmallStack(Work work) {
    const auto run = [](void* argument) -> DWORD {
        (*static_cast<Work*>(argument))();
        return 0;
    };
    const HANDLE thread = CreateThread(nullptr, stackSize, run, &work, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    ASSERT_NE(thread, nullptr);
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    CloseHandle(thread);
}
#else
void RunOnSmallStack(Work work) {
    const auto run = [](void* argument) -> void* {
        (*static_cast<Work*>(argument))();
        return nullptr;
    };
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, stackSize), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}
#endif

class SmallStackTest : public LibraryTest {};

TEST_F(SmallStackTest, RunsEveryExport) {
    MakeScenario();
    std::string seen;
    RunOnSmallStack([&] { seen = RunScenario(library_); });
    EXPECT_EQ(seen, undisturbedScenario);
}

TEST_F(SmallStackTest, ReadsInputOfAnySize) {
    script_.keepsCalls = false;
    constexpr size_t depth = 5000;
    std::string parent;
    for (size_t i = 0; i <= depth; ++i) {
        const std::string id = "c" + std::to_string(i);
        AddContainer(parent, id, id);
        parent = id;
    }
    const std::string large(1 << 20, 'x');
    script_.entries["c0"].contents.rows = {PersonRow(large, large, {Text(PR_PRIMARY_FAX_NUMBER, large)}),
                                           GroupRow("g", large)};
    script_.entries["g"] = {.type = MAPI_DISTLIST, .properties = {Identifier("g")}};
    script_.entries["g"].members.assign(5000, "m");
    script_.entries["g"].contents.rows.assign(5000, PersonRow("m", "Member"));
    script_.entries["m"].properties = PersonRow("m", "Member", {Text(PR_PRIMARY_FAX_NUMBER, "1")});
    RunOnSmallStack([&] {
        session_ = Open();
        const std::vector<AddressBookRecord> books = ListBooks(session_);
        EXPECT_EQ(ListBooks(session_, books[0].entry).size(), depth);
        const std::vector<DestinationRecord> destinations = ListDestinations(session_, books[0].entry);
        ASSERT_EQ(destinations.size(), 2u);
        EXPECT_GT(Details(session_, destinations[0].entry).size(), 2 * large.size());
        EXPECT_EQ(Details(session_, destinations[1].entry).size(), 5000u * 8 - 2);
        EXPECT_EQ(ListMembers(session_, destinations[1].entry).size(), 5000u);
        Close(session_);
    });
}

}  // namespace
