// Windows: a table of windows with a parent and a style, which is all that the functions here tell of them.
#include <algorithm>
#include <map>
#include <mutex>

#include "host.h"

namespace {

struct Window {
    HWND parent;
    DWORD style;
};

class WindowTable {
  public:
    // Handles are never used again, so that a handle of a destroyed window stays invalid.
    HWND Create(HWND parent, DWORD style) {
        const auto handle = reinterpret_cast<HWND>(nextHandle_);
        windows_.emplace(handle, Window{parent, style});
        nextHandle_ += 2;
        return handle;
    }

    // The windows below go with it, the lowest first.
    void Destroy(HWND handle) {
        const auto isBelow = [handle](const auto& entry) { return entry.second.parent == handle; };
        for (auto child = windows_.begin(); (child = std::ranges::find_if(windows_, isBelow)) != windows_.end();) {
            Destroy(child->first);
        }
        windows_.erase(handle);
    }

    // Null, with the last error, when there is no such window.
    Window* Find(HWND handle) {
        const auto found = windows_.find(handle);
        if (found != windows_.end()) return &found->second;
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }

    std::mutex lock;

  private:
    std::map<HWND, Window> windows_;
    UINT_PTR nextHandle_ = 0x10000;
};

WindowTable& GetWindows() {
    static WindowTable windows;
    return windows;
}

}  // namespace

extern "C" {

HWND HostCreateWindow(HWND parent, DWORD style) {
    WindowTable& windows = GetWindows();
    const std::lock_guard lock(windows.lock);
    const bool parentMissing = parent != nullptr ? windows.Find(parent) == nullptr : (style & WS_CHILD) != 0;
    return parentMissing ? nullptr : windows.Create(parent, style);
}

BOOL HostDestroyWindow(HWND window) {
    WindowTable& windows = GetWindows();
    const std::lock_guard lock(windows.lock);
    if (windows.Find(window) == nullptr) return FALSE;
    windows.Destroy(window);
    return TRUE;
}

BOOL WINAPI IsWindow(HWND hWnd) {
    WindowTable& windows = GetWindows();
    const std::lock_guard lock(windows.lock);
    return windows.Find(hWnd) != nullptr;
}

// A child's parent or a popup window's owner; an overlapped window has an owner without telling it here.
HWND WINAPI GetParent(HWND hWnd) {
    WindowTable& windows = GetWindows();
    const std::lock_guard lock(windows.lock);
    const Window* window = windows.Find(hWnd);
    return window != nullptr && (window->style & (WS_CHILD | WS_POPUP)) != 0 ? window->parent : nullptr;
}

LONG_PTR WINAPI GetWindowLongPtrA(HWND hWnd, int nIndex) {
    WindowTable& windows = GetWindows();
    const std::lock_guard lock(windows.lock);
    const Window* window = windows.Find(hWnd);
    if (window == nullptr) return 0;
    if (nIndex != GWL_STYLE) {
        SetLastError(ERROR_INVALID_INDEX);
        return 0;
    }
    return static_cast<LONG_PTR>(window->style);
}

BOOL WINAPI IsWindowEnabled(HWND hWnd) {
    WindowTable& windows = GetWindows();
    const std::lock_guard lock(windows.lock);
    const Window* window = windows.Find(hWnd);
    return window != nullptr && (window->style & WS_DISABLED) == 0;
}

// True when the window was disabled before.
BOOL WINAPI EnableWindow(HWND hWnd, BOOL bEnable) {
    WindowTable& windows = GetWindows();
    const std::lock_guard lock(windows.lock);
    Window* window = windows.Find(hWnd);
    if (window == nullptr) return FALSE;
    const bool wasDisabled = (window->style & WS_DISABLED) != 0;
    window->style = bEnable ? window->style & ~WS_DISABLED : window->style | WS_DISABLED;
    return wasDisabled;
}

}  // extern "C"
