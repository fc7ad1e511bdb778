// Finds the dialog that another thread of this process shows and does to it what a user would.
#pragma once

#include <windows.h>

#include <string>

class DialogRobot {
  public:
    explicit DialogRobot(DWORD threadId) : threadId_(threadId) {}

    // What the thread shows and the user can reach: profiles, name, browse, message, menu, or none.
    std::string Kind() const;
    std::string Caption() const;
    // The longest text that stands in the dialog itself: what a message box says.
    std::string Message() const;
    bool IsOwnerEnabled() const;

    // Of the control with the id. They throw std::runtime_error when there is no dialog or no such control.
    bool IsEnabled(int id) const;
    // The items of a list or combo box, the selected one with a * behind, with | between.
    std::string Items(int id) const;
    void Press(int id) const;
    void Type(int id, const std::string& text) const;
    void Choose(int id, const std::string& item) const;
    // In the system's dialog for folders; the name of what is selected then.
    std::string ChooseLocation(const std::string& path) const;
    void CloseByMenu() const;
    void PressKey(WORD key) const;

  private:
    HWND Find() const;
    HWND Need() const;
    HWND NeedControl(int id) const;

    DWORD threadId_;
};
