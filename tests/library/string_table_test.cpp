// The strings that the library carries for its callers and the provider, read from its file.
#include "support/library_test.h"

namespace {

class StringTableTest : public LibraryTest {
  protected:
    std::string Load(UINT id) const {
        char text[256];
        const int length = LoadStringA(library_.Handle(), id, text, sizeof text);
        return std::string(text, static_cast<size_t>(length));
    }
};

// Some of them; all are compared in the built Windows file.
TEST_F(StringTableTest, CarriesItsStrings) {
    struct {
        UINT id;
        const char* text;
    } const strings[] = {
        {1, "Warning"},
        {10,
         "You have selected too many destinations in [Destination List].\r\nThe maximum number of destinations is %d."},
        {29, "\r\n"},
        {63, "QDXL7RA.DLL"},
        {70, "(Home Fax)"},
        {2009, "Select Destination Fax Number Dialog Box"},
    };
    for (const auto& [id, text] : strings) EXPECT_EQ(Load(id), text) << id;
}

// Callers can tell an absent string by its emptiness; the absent suffixes end their ranges.
TEST_F(StringTableTest, CarriesNoOtherString) {
    const auto expectAbsent = [&](UINT first, UINT last) {
        for (UINT id = first; id <= last; ++id) EXPECT_EQ(Load(id), "") << id;
    };
    expectAbsent(0, 0);
    expectAbsent(26, 26);
    expectAbsent(30, 49);
    expectAbsent(64, 64);
    expectAbsent(71, 79);
    expectAbsent(81, 89);
    expectAbsent(91, 2006);
    expectAbsent(2010, 4000);
}

}  // namespace
