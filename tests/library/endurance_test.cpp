// A fax program that runs for months: it opens and closes address books many thousand times, and has in the end what it
// had after the hundredth time. ENDURANCE_ROUNDS says how often.
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <thread>

#include "support/process_resources.h"
#include "support/scenario.h"

namespace {

constexpr size_t settlingRounds = 100;
// A process has 1,088 indexes of threads.
constexpr size_t usualRounds = 1'200;

size_t RoundCount() {
    const char* const wanted = std::getenv("ENDURANCE_ROUNDS");
    return wanted != nullptr ? std::strtoul(wanted, nullptr, 10) : usualRounds;
}

// Runs the round that often, and compares what the process has after the last one with what it had when everything that
// is made once had been made.
template <class Round>
void ExpectNothingTaken(const Round& round) {
    const size_t count = RoundCount();
    ASSERT_GT(count, settlingRounds);
    ProcessResources before;
    for (size_t i = 1; i <= count; ++i) {
        round();
        if (testing::Test::HasFailure()) FAIL() << "in round " << i;
        if (i == settlingRounds) before = CountProcessResources();
    }
    const ProcessResources after = CountProcessResources();
    std::cout << "after " << settlingRounds << " rounds: " << before << "\nafter " << count << " rounds: " << after
              << "\n";
    EXPECT_TRUE(after.handles > 0 && after.modules > 0) << "they cannot be counted here";
    EXPECT_EQ(after.threadIndexes, before.threadIndexes);
    EXPECT_EQ(after.fiberIndexes, before.fiberIndexes);
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
    EXPECT_EQ(after.userObjects, before.userObjects);
    EXPECT_EQ(after.modules, before.modules);
    // Heaps settle to the byte; their memory comes from the system 64 KB at a time.
    EXPECT_LT(after.heapBytes, before.heapBytes + 2 * (count - settlingRounds));
    EXPECT_LE(after.privateBytes, before.privateBytes + 65536);
}

class EnduranceTest : public testing::Test {
  protected:
    ~EnduranceTest() override { TheScript().Reset(); }

    void RunScriptedSession(const LibraryUnderTest& library) {
        EXPECT_EQ(RunSession(library), undisturbed_);
        EXPECT_EQ(TheScript().Imbalance(), "");
    }
    // The script keeps what it has seen.
    static void BeginAnew() {
        TheScript().Reset();
        TheScript().keepsCalls = false;
        MakeScenario();
    }

  private:
    const std::string undisturbed_ =
        std::string(undisturbedScenario).substr(0, std::string_view(undisturbedScenario).find("profile: "));
};

TEST_F(EnduranceTest, SessionsOnTheScriptedProvider) {
    const LibraryUnderTest library(ScriptedFolder() / "QDXL7RC.DLL");
    ExpectNothingTaken([&] {
        BeginAnew();
        RunScriptedSession(library);
    });
}

TEST_F(EnduranceTest, ALibraryThatIsLoadedForEachSession) {
    ExpectNothingTaken([&] {
        BeginAnew();
        RunScriptedSession(LibraryUnderTest(ScriptedFolder() / "QDXL7RC.DLL"));
    });
}

// The shipped provider, on a small file.
class ShippedProviderEnduranceTest : public testing::Test {
  protected:
    ShippedProviderEnduranceTest() {
        const std::filesystem::path contacts = ScratchFolder() / "contacts",
                                    profiles = ScratchFolder() / "profiles.ini";
        std::filesystem::create_directories(contacts);
        std::ofstream(contacts / "Team.vcf") << "BEGIN:VCARD\nVERSION:3.0\nUID:1\nFN:Ada\nTEL;TYPE=FAX:11\nEND:VCARD\n"
                                                "BEGIN:VCARD\nVERSION:4.0\nKIND:group\nFN:Team\nMEMBER:urn:uuid:1\n"
                                                "END:VCARD\n";
        std::ofstream(profiles) << "[profile profile]\nservice = VCARD\n";
        SetVariable("FAXBOOK_CONTACTS", contacts.string());
        SetVariable("FAXBOOK_PROFILES", profiles.string());
        SetVariable("FAXBOOK_DIAGNOSTICS", "off");
    }

    void RunWholeSession() {
        EXPECT_EQ(RunSession(library_),
                  "open: opened\nbooks: 1\nbook list: Team/VCARD/0 \ncontainers: 0\ncontainer list: \n"
                  "destinations 0: 2\ndestination list 0: Ada:11:: group Team \ndetails 0: Ada|11 [Business]\n"
                  "details 1: Ada\nrecipients: 1\nmembers: Ada:11 \n");
    }
    // The provider throws an exception inside itself.
    void FailToOpen() {
        EXPECT_EQ(library_.OpenAddressBook(nullptr, "no such profile", 0, nullptr, 0, nullptr), nullptr);
    }

    const LibraryUnderTest library_{ScriptedFolder().parent_path().parent_path() / "bin" / "QDXL7RC.DLL"};

  private:
    static void SetVariable(const char* name, const std::string& value) {
#ifdef _WIN32
        _putenv_s(name, value.c_str());
#else
        setenv(name, value.c_str(), 1);
#endif
    }
#ifdef _WIN32
    // As in every program with windows; the provider would load and unload them.
    const LoadedModule shell_{"shell32.dll"}, objects_{"ole32.dll"};
#endif
};

TEST_F(ShippedProviderEnduranceTest, Sessions) {
    ExpectNothingTaken([&] {
        RunWholeSession();
        FailToOpen();
    });
}

// What an exception takes of a thread goes with the thread, while the provider stays.
TEST_F(ShippedProviderEnduranceTest, ThreadsThatEnd) {
    constexpr size_t threadCount = 500;
    SessionHandle* const session = library_.OpenAddressBook(nullptr, "profile", 0, nullptr, 0, nullptr);
    size_t before = 0;
    for (size_t i = 0; i < threadCount; ++i) {
        std::thread([&] { FailToOpen(); }).join();
        if (i == settlingRounds) before = CountProcessResources().heapBytes;
    }
    EXPECT_LT(CountProcessResources().heapBytes, before + 4096);
    EXPECT_EQ(library_.CloseAddressBook(session), 1);
}

}  // namespace
