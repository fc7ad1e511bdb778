// Each allocation inside each export fails in turn: the export answers with its failure value or does without, nothing
// is lost, and the same call made again gives the right answer.
#include "support/failing_allocations.h"
#include "support/scenario.h"

namespace {

class AllocationFailureTest : public LibraryTest {};

TEST_F(AllocationFailureTest, AnyAllocationMayFail) {
    script_.keepsCalls = false;
    MakeScenario();
    for (const bool lasting : {false, true}) {
        unsigned failedSteps = 0;
        for (unsigned n = 1;; ++n) {
            bool failed = false;
            FailAllocation(n, lasting);
            const std::string seen = RunScenario(library_, [&](const Step& step) {
                const std::optional<std::string> first = step();
                if (!HasAllocationFailed()) return first;
                failed = true;
                FailAllocation(0, false);
                if (first) return first;
                ++failedSteps;
                return step();
            });
            FailAllocation(0, false);
            ASSERT_EQ(seen, undisturbedScenario) << "after allocation " << n << (lasting ? " and all later" : "");
            ASSERT_EQ(script_.Imbalance(), "") << "after allocation " << n;
            if (!failed) break;
        }
        EXPECT_GT(failedSteps, 20u);
    }
}

}  // namespace
