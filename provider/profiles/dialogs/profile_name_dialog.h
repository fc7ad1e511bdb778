// The dialog that asks for the name of a new profile.
#pragma once

#include <functional>

#include "dialogs/dialog.h"

class ProfileNameDialog final : public Dialog {
  public:
    // `make` makes the profile. While it throws ProfileError because the name is taken the user is told and may change
    // the name; what else it throws ends the dialog and comes out of Run.
    using Make = std::function<void(const std::string& name)>;
    ProfileNameDialog(HMODULE resources, Make make);

  private:
    INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
    void TakeName();
    std::string ReadName() const;
    void Refuse(const std::wstring& text);

    Make make_;
};
