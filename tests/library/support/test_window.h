// A window for tests. It needs no display: it is made as a message-only window and takes its style and parent later.
#pragma once

#include <windows.h>

#ifdef _WIN32

class TestWindow {
  public:
    TestWindow(HWND parent, DWORD style)
        : handle(CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        SetWindowLongPtrA(handle, GWL_STYLE, static_cast<LONG_PTR>(style));
        if (parent != nullptr) SetParent(handle, parent);
    }
    ~TestWindow() { DestroyWindow(handle); }

#else

#include "host/host.h"

class TestWindow {
  public:
    TestWindow(HWND parent, DWORD style) : handle(HostCreateWindow(parent, style)) {}
    ~TestWindow() { HostDestroyWindow(handle); }

#endif
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    const HWND handle;
};
