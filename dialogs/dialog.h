// A modal dialog made from a template of the caller's resource module.
#pragma once

#include <windows.h>

#include <exception>
#include <string>

class Dialog {
  public:
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Shows the dialog until it ends; its result. MAPI_E_USER_CANCEL when it ends by itself, because its owner or the
    // program does; MAPI_E_CALL_FAILED when it cannot be shown. What Handle throws ends the dialog and is thrown here.
    HRESULT Run(HWND owner);

  protected:
    // The title of its message boxes, and its own where the template has none, is a string of the resource module.
    Dialog(HMODULE resources, int templateId, UINT titleId)
        : resources_(resources), templateId_(templateId), titleId_(titleId) {}
    ~Dialog() = default;

    // What a dialog procedure does and returns.
    virtual INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    void End(HRESULT result);
    HMODULE Resources() const { return resources_; }
    HWND Window() const { return window_; }
    HWND Control(int id) const { return GetDlgItem(window_, id); }
    std::wstring String(UINT id) const;
    // A message box, with a string of the resource module or a text of one's own; the button that the user
    // pressed.
    int Say(UINT stringId, UINT style) const { return Say(String(stringId), style); }
    int Say(const std::wstring& text, UINT style) const;

  private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Begin(HWND window);

    HMODULE resources_;
    int templateId_;
    UINT titleId_;
    HWND window_ = nullptr;
    HRESULT result_;
    std::exception_ptr thrown_;
};
