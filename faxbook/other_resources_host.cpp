// A library of the host build has no place for Windows' resources.
#include <ostream>

#include "other_resources.h"

void AddOtherResources(HMODULE, Table&, std::ostream& notes) {
    notes << "faxbook: this build of the library carries its strings only; dialogs, icons, version and manifest are in "
             "the Windows library\n";
}
