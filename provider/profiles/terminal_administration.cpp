// Shows the administration on the terminal that the program runs on.
#include <iostream>

#include "diagnostics.h"
#include "mapi/mapi_types.h"
#include "platform/system/environment.h"
#include "profiles/administration.h"

HRESULT ShowProfileAdministration(HWND, const char*, ProfileStore& store) {
    if (IsTerminalOnStandardInput()) return AskAboutProfiles(std::cin, std::cout, store);
    Diagnostics().Report(store.File(), 0, "profiles cannot be administered without a terminal",
                         "run the program on one, or edit the file");
    return MAPI_E_NO_SUPPORT;
}
