// The program: finds the files beside it and says at the end how much was exercised.
#include <cstdio>
#include <cstdlib>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "support/library_test.h"

namespace {

std::filesystem::path programFolder;
std::filesystem::path registryFile;

class RunSummary : public testing::Environment {
  public:
    void SetUp() override {
        std::filesystem::remove_all(ScratchFolder());
        std::filesystem::create_directories(ScratchFolder());
    }
    void TearDown() override {
        const Totals& totals = TheScript().totals;
        std::printf(
            "%llu provider calls, %llu hostile answers, %llu failed allocations, %llu records compared, "
            "%llu objects and buffers lent, %llu given back; code page %u\n",
            totals.calls, totals.hostileAnswers, failedAllocations, recordsCompared, totals.lent, totals.takenBack,
            GetACP());
        EXPECT_EQ(totals.lent, totals.takenBack);
        std::filesystem::remove(registryFile);
    }
};

}  // namespace

std::filesystem::path ScriptedFolder() {
    return programFolder / "scripted";
}
std::filesystem::path ScratchFolder() {
    return programFolder / "scratch";
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    programFolder = std::filesystem::absolute(argv[0]).parent_path();
#ifndef _WIN32
    // The host's registry is a file that is synchronised at every write; in memory that costs nothing.
    const std::filesystem::path memory = "/dev/shm";
    registryFile = (std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path()) /
                   ("library_tests-registry-" + std::to_string(getpid()));
    setenv("HOST_REGISTRY", registryFile.c_str(), 1);
#endif
    testing::AddGlobalTestEnvironment(new RunSummary);
    return RUN_ALL_TESTS();
}
