// A library of the host build has no place for Windows' resources.
#include "developer/other_resources.h"

void AddOtherResources(HMODULE, Table&, Console& console) {
    console.Note(
        "this build of the library carries its strings only; dialogs, icons, version and manifest are in the Windows "
        "library");
}
