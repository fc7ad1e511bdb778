// The dialog procedure that all dialogs share, and what each does when it opens.
#include "dialogs/dialog.h"

#include <utility>

#include "mapi/result_codes.h"

namespace {

// The templates leave a dialog in the upper left corner: of its owner, or without one of the screen.
void MoveToMiddle(HWND window) {
    RECT around{};
    const HWND owner = GetWindow(window, GW_OWNER);
    if (owner == nullptr || !IsWindowVisible(owner) || IsIconic(owner) || !GetWindowRect(owner, &around))
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &around, 0);
    RECT own{};
    GetWindowRect(window, &own);
    SetWindowPos(window, nullptr, (around.left + around.right - (own.right - own.left)) / 2,
                 (around.top + around.bottom - (own.bottom - own.top)) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    // An owner at the edge of the screen must not take the dialog off it.
    SendMessageW(window, DM_REPOSITION, 0, 0);
}

}  // namespace

HRESULT Dialog::Run(HWND owner) {
    result_ = MAPI_E_USER_CANCEL;
    const INT_PTR ended =
        DialogBoxParamW(resources_, MAKEINTRESOURCEW(templateId_), owner, Procedure, reinterpret_cast<LPARAM>(this));
    if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
    return ended == -1 ? MAPI_E_CALL_FAILED : result_;
}

void Dialog::End(HRESULT result) {
    result_ = result;
    EndDialog(window_, 0);
}

std::wstring Dialog::String(UINT id) const {
    const wchar_t* text = nullptr;
    // With no room for a copy the system gives the place of the string itself, which has no end mark.
    const int length = LoadStringW(resources_, id, reinterpret_cast<wchar_t*>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<size_t>(length)) : std::wstring();
}

int Dialog::Say(const std::wstring& text, UINT style) const {
    return MessageBoxW(window_, text.c_str(), String(titleId_).c_str(), style);
}

void Dialog::Begin(HWND window) {
    window_ = window;
    if (GetWindowTextLengthW(window) == 0) SetWindowTextW(window, String(titleId_).c_str());
    MoveToMiddle(window);
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) SetWindowLongPtrW(window, DWLP_USER, lParam);
    const auto dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (dialog == nullptr) return FALSE;
    // No exception may pass the system's message loop.
    try {
        if (message == WM_INITDIALOG) dialog->Begin(window);
        return dialog->Handle(message, wParam, lParam);
    } catch (...) {
        dialog->thrown_ = std::current_exception();
        dialog->End(MAPI_E_CALL_FAILED);
        return TRUE;
    }
}
