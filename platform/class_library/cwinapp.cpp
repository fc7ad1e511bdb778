// The library's entry point for the loader: it drives the module object.
#include "class_library/cwinapp.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* /*reserved*/) {
    CWinApp& app = GetApp();
    if (reason == DLL_PROCESS_ATTACH) {
        app.m_hInstance = instance;
        return app.InitInstance();
    }
    if (reason == DLL_PROCESS_DETACH) app.ExitInstance();
    return TRUE;
}
