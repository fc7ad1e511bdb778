// WindowDisabler: finding the top-level window.
#include "frame/window_disabler.h"

WindowDisabler::WindowDisabler(HWND window) {
    while (window != nullptr && (GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD) != 0) window = GetParent(window);
    if (window == nullptr || !IsWindowEnabled(window)) return;
    EnableWindow(window, FALSE);
    disabled_ = window;
}

WindowDisabler::~WindowDisabler() {
    if (disabled_ != nullptr) EnableWindow(disabled_, TRUE);
}
