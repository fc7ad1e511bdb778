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

TEST_F(StringTableTest, CarriesEveryString) {
    struct {
        UINT id;
        const char* text;
    } const strings[] = {
        {1, "Warning"},
        {2, "Primary"},
        {3, "Primary(Business)"},
        {4, "Secondary(Home)"},
        {5, "Other Fax Number"},
        {6, "No Fax Number"},
        {7, "Your selection does not contain any destinations with fax numbers."},
        {8, "The destination you selected is already in the list"},
        {9, "By Selecting Cancel At This Time, You Will Loose Your Changes\nOK To Continue?"},
        {10,
         "You have selected too many destinations in [Destination List].\r\nThe maximum number of destinations is %d."},
        {11,
         "Your selection does not contain any destinations with fax numbers that are not already in the destination "
         "list."},
        {12, "Destination Name"},
        {13, "Fax Number"},
        {14, "Information"},
        {15, "Company"},
        {16, "Dept./Div."},
        {17, "Primary Fax"},
        {18, "Business Fax"},
        {19, "Home Fax"},
        {20, "[Primary]"},
        {21, "[Business]"},
        {22, "[Secondary]"},
        {23, "[Home]"},
        {24, "[Other]"},
        {25, "Could not find any items matching the specified keyword. Specify another keyword."},
        {27, "FAX"},
        {28, "%s - %s"},
        {29, "\r\n"},
        {50, "Tessivar Address Book Profile Editor"},
        {51, "No profile name specified"},
        {52, "Profile already exists"},
        {53, "Permanently delete the selected item(s)"},
        {54, "The selected item does not support the \"Properties\" method."},
        {55, "There are no registered address books."},
        {56, "Are you sure you want to delete the selected entries?"},
        {57, "Are you sure you want to delete the selected entry?"},
        {58, "Not all items were deleted"},
        {59, "Could not register the address book due to insufficient memory."},
        {60, "SMTP"},
        {62, "The \"Delete\" method does not support Containers."},
        {63, "QDXL7RA.DLL"},
        {65, "QDXL7RC.DLL"},
        {66, "Description"},
        {67, "Notes"},
        {68, "5"},
        {69,
         "The selected destinations are already in [Destination List].\nCould not add %1!d! out of %2!d! of the "
         "selected destinations."},
        {70, "(Home Fax)"},
        {80, "(Business Fax)"},
        {90, "(Other Fax)"},
        {2007, "Select Destinations from Address Book Dialog Box"},
        {2008, "Select Destination Fax Number Dialog Box"},
        {2009, "Select Destination Fax Number Dialog Box"},
    };
    for (const auto& [id, text] : strings) EXPECT_EQ(Load(id), text) << id;
    EXPECT_NE(Load(61).find('@'), std::string::npos) << "a placeholder e-mail address";
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
