// Shows the administration as dialogs of the resource module that the caller gave.
#include "diagnostics.h"
#include "guard.h"
#include "profiles/administration.h"
#include "profiles/dialogs/profile_list_dialog.h"
#include "profiles/resource_module.h"
#include "resources/resource_ids.h"
#include "text/code_pages.h"

namespace {

bool HasDialogs(HMODULE resources) {
    if (resources == nullptr) return false;
    for (const int id : {IDD_PROFILES, IDD_PROFILE_NAME})
        if (FindResourceA(resources, MAKEINTRESOURCEA(id), RT_DIALOG) == nullptr) return false;
    return true;
}

}  // namespace

HRESULT ShowProfileAdministration(HWND window, const char* profile, ProfileStore& store) {
    Require(window == nullptr || IsWindow(window));
    const HMODULE resources = GetResourceModule();
    if (!HasDialogs(resources)) {
        Diagnostics().Report(store.File(), 0, "profiles cannot be administered without the dialogs for it",
                             "the program must give a resource module that has them, such as QDXL7RC.DLL");
        return MAPI_E_NO_SUPPORT;
    }
    return ProfileListDialog(resources, store, profile == nullptr ? std::string() : FromActiveCodePage(profile))
        .Run(window);
}
