// CDLLEntry: the one module object.
#include "frame/dll_entry.h"

#include "frame/export_guard.h"
#include "resources/string_table.h"

namespace {

constinit CDLLEntry theApp;

}  // namespace

CWinApp& GetApp() {
    return theApp;
}

BOOL CDLLEntry::InitInstance() {
    return GuardAgainstExceptions(FALSE, [this] {
        lineSeparator = LoadLibraryString(IDS_LINE_SEPARATOR);
        return CWinApp::InitInstance();
    });
}

int CDLLEntry::ExitInstance() {
    return CWinApp::ExitInstance();
}
