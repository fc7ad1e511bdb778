// WindowDisabler: keeps the caller's top-level window disabled while a provider may show windows of its own.
#pragma once

#include <windows.h>

class WindowDisabler {
  public:
    // Disables the first of the window and its ancestors that is no child window, if it is enabled. Null: nothing.
    explicit WindowDisabler(HWND window);
    WindowDisabler(const WindowDisabler&) = delete;
    WindowDisabler& operator=(const WindowDisabler&) = delete;
    // Enables it again.
    ~WindowDisabler();

  private:
    HWND disabled_ = nullptr;
};
