// CWinApp: the module object of a shared library. A library has exactly one, a global object, whose InitInstance runs
// when the library has been loaded and whose ExitInstance runs before it is unloaded.
#pragma once

#include <windows.h>

class CWinApp {
  public:
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    // False refuses the loading of the library.
    virtual BOOL InitInstance() { return TRUE; }
    virtual int ExitInstance() { return 0; }

    // This library's own instance handle; null until the library has been loaded.
    HINSTANCE m_hInstance = nullptr;

  protected:
    constexpr CWinApp() = default;
    ~CWinApp() = default;
};

// The library's module object, which the library defines.
CWinApp& GetApp();

// This library's own instance handle.
inline HINSTANCE GetModuleInstance() {
    return GetApp().m_hInstance;
}
