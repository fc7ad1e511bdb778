// Each provider call of a whole scenario fails in turn, in every way. The library must come through with everything
// given back, and do the same again undisturbed.
#include "support/scenario.h"

namespace {

class ProviderFailureTest : public LibraryTest {};

TEST_F(ProviderFailureTest, AnyCallMayFailInAnyWay) {
    MakeScenario();
    script_.keepsCalls = false;
    std::vector<std::string> functions;
    script_.during = [&](const std::string& function) {
        if (function != "Release") functions.push_back(function);
    };
    EXPECT_EQ(RunScenario(library_), undisturbedScenario);
    script_.during = nullptr;
    EXPECT_GT(functions.size(), 90u);

    const Fault ways[] = {
        {"", 0, E_FAIL, false}, {"", 0, MAPI_E_USER_CANCEL, true}, {"", 0, S_OK, false}, {"", 0, 2, true}};
    for (const Fault& way : ways) {
        for (unsigned call = 1; call <= functions.size(); ++call) {
            script_.Forget();
            script_.faults = {way};
            script_.faults[0].call = call;
            const std::string seen = RunScenario(library_);
            script_.faults.clear();
            // Only for a contents table a success that is not 0 means something.
            if (way.gives && SUCCEEDED(way.result) && functions[call - 1] != "GetContentsTable") {
                EXPECT_EQ(seen, undisturbedScenario) << functions[call - 1];
            }
            const std::string again = RunScenario(library_);
            if (again != undisturbedScenario || !script_.Imbalance().empty()) {
                ADD_FAILURE() << functions[call - 1] << " as call " << call << ", result " << way.result
                              << (way.gives ? ", object given" : "") << ":\n"
                              << script_.Imbalance() << seen << "and then\n"
                              << again;
                return;
            }
        }
    }
}

}  // namespace
