// The dialog that lists the profiles and lets the user add, remove, look at and copy them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "dialogs/dialog.h"
#include "profiles/profile_store.h"

// Ends with S_OK by its Close button and with MAPI_E_USER_CANCEL by Escape or its system menu. Every change is in the
// profiles file at once.
class ProfileListDialog final : public Dialog {
  public:
    // Opens with `selected` marked in the list, where there is such a profile.
    ProfileListDialog(HMODULE resources, ProfileStore& store, std::string selected);

  private:
    INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
    void HandleCommand(int control, int notification);

    void Add();
    void Remove();
    void ShowProperties();
    void Copy();
    void ChooseDisplay();

    void Fill(std::string_view selected);
    void EnableButtons();
    std::string Selected() const;
    void AskForName(const std::function<void(const std::string& name)>& make);
    std::optional<size_t> ChooseService(const Profile& profile) const;

    ProfileStore& store_;
    std::string selectedFirst_;
    // What the items of both lists stand for: their item data are places in it.
    std::vector<std::string> names_;
};
