// The controls of the list of profiles, and what each of them does to the store.
#include "profiles/dialogs/profile_list_dialog.h"

#include <algorithm>
#include <memory>

#include "failure.h"
#include "platform/system/environment.h"
#include "profiles/dialogs/location_chooser.h"
#include "profiles/dialogs/profile_name_dialog.h"
#include "profiles/vcard_service.h"
#include "resources/resource_ids.h"
#include "resources/string_ids.h"
#include "text/utf16.h"

namespace {

// A list box and a combo box have the same messages by different numbers.
struct ListMessages {
    UINT reset, add, setData, getData, select, getSelected, getCount;
};
constexpr ListMessages listBox{LB_RESETCONTENT, LB_ADDSTRING, LB_SETITEMDATA, LB_GETITEMDATA,
                               LB_SETCURSEL,    LB_GETCURSEL, LB_GETCOUNT};
constexpr ListMessages comboBox{CB_RESETCONTENT, CB_ADDSTRING, CB_SETITEMDATA, CB_GETITEMDATA,
                                CB_SETCURSEL,    CB_GETCURSEL, CB_GETCOUNT};

WPARAM CountFromZero(LRESULT value) {
    return static_cast<WPARAM>(value);
}

// Both lists sort by themselves.
void FillList(HWND list, const ListMessages& messages, const std::vector<std::string>& names,
              std::string_view selected) {
    SendMessageW(list, messages.reset, 0, 0);
    for (size_t i = 0; i < names.size(); ++i) {
        const LRESULT place =
            SendMessageW(list, messages.add, 0, reinterpret_cast<LPARAM>(Utf16FromUtf8(names[i]).c_str()));
        if (place < 0) throw std::bad_alloc();
        SendMessageW(list, messages.setData, CountFromZero(place), static_cast<LPARAM>(i));
    }
    const LRESULT count = SendMessageW(list, messages.getCount, 0, 0);
    for (LRESULT place = 0; place < count; ++place) {
        const LRESULT name = SendMessageW(list, messages.getData, CountFromZero(place), 0);
        if (names[static_cast<size_t>(name)] == selected) SendMessageW(list, messages.select, CountFromZero(place), 0);
    }
}

// Empty when none is selected.
std::string SelectedName(HWND list, const ListMessages& messages, const std::vector<std::string>& names) {
    const LRESULT place = SendMessageW(list, messages.getSelected, 0, 0);
    if (place < 0) return {};
    return names[static_cast<size_t>(SendMessageW(list, messages.getData, CountFromZero(place), 0))];
}

std::filesystem::path LocationOf(const ProfileService& service) {
    return service.location.empty() ? ContactsFolder() : service.location;
}

struct MenuCloser {
    using pointer = HMENU;
    void operator()(HMENU menu) const { DestroyMenu(menu); }
};

// In menus and labels one & marks the next letter and two are one.
std::wstring LabelText(std::wstring text) {
    for (size_t at = 0; (at = text.find(L'&', at)) != std::wstring::npos; at += 2) text.insert(at, 1, L'&');
    return text;
}

}  // namespace

ProfileListDialog::ProfileListDialog(HMODULE resources, ProfileStore& store, std::string selected)
    : Dialog(resources, IDD_PROFILES, IDS_PROFILE_EDITOR), store_(store), selectedFirst_(std::move(selected)) {}

INT_PTR ProfileListDialog::Handle(UINT message, WPARAM wParam, LPARAM) {
    // Of the keys that the list box asks about.
    constexpr INT_PTR isDone = -2, asUsual = -1;
    switch (message) {
        case WM_INITDIALOG:
            Fill(selectedFirst_);
            return TRUE;
        case WM_VKEYTOITEM:
            if (LOWORD(wParam) != VK_DELETE) return asUsual;
            PostMessageW(Control(IDC_REMOVE_PROFILE), BM_CLICK, 0, 0);
            return isDone;
        case WM_CLOSE:
            End(MAPI_E_USER_CANCEL);
            return TRUE;
        case WM_COMMAND:
            try {
                HandleCommand(LOWORD(wParam), HIWORD(wParam));
            } catch (const ProfileError& error) {
                if (error.GetReason() != ProfileError::Reason::NotFound) throw;
                // Another program has removed the profile meanwhile.
                Fill(Selected());
            }
            return TRUE;
        default:
            return FALSE;
    }
}

void ProfileListDialog::HandleCommand(int control, int notification) {
    const bool isPressed = notification == BN_CLICKED;
    if (control == IDC_PROFILE_LIST && notification == LBN_SELCHANGE)
        EnableButtons();
    else if (control == IDC_DISPLAY_PROFILE && notification == CBN_SELCHANGE)
        ChooseDisplay();
    else if (control == IDC_ADD_PROFILE && isPressed)
        Add();
    else if (control == IDC_REMOVE_PROFILE && isPressed)
        Remove();
    else if (control == IDC_COPY_PROFILE && isPressed)
        Copy();
    else if ((control == IDC_PROPERTIES && isPressed) || (control == IDC_PROFILE_LIST && notification == LBN_DBLCLK))
        ShowProperties();
    else if (control == IDCANCEL && isPressed)
        // The button and Escape send the same: only the keyboard tells them apart.
        End(GetKeyState(VK_ESCAPE) < 0 ? MAPI_E_USER_CANCEL : S_OK);
}

void ProfileListDialog::Add() {
    AskForName([&](const std::string& name) { store_.Create({name, {{std::string(vcardServiceName), {}, 0}}}); });
}

void ProfileListDialog::Remove() {
    if (Say(IDS_DELETE_PERMANENTLY, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) != IDYES) return;
    const HWND list = Control(IDC_PROFILE_LIST);
    const LRESULT place = SendMessageW(list, LB_GETCURSEL, 0, 0);
    store_.Remove(Selected());
    Fill({});
    // The next one moves up; behind the last one there is none.
    const LRESULT last = SendMessageW(list, LB_GETCOUNT, 0, 0) - 1;
    if (last >= 0) SendMessageW(list, LB_SETCURSEL, CountFromZero(std::min(place, last)), 0);
    EnableButtons();
}

void ProfileListDialog::Copy() {
    AskForName([&, from = Selected()](const std::string& name) { store_.Copy(from, name); });
}

void ProfileListDialog::ChooseDisplay() {
    store_.SetDisplayProfile(SelectedName(Control(IDC_DISPLAY_PROFILE), comboBox, names_));
}

void ProfileListDialog::ShowProperties() {
    const std::optional<Profile> profile = store_.Find(Selected());
    if (!profile) throw ProfileError(ProfileError::Reason::NotFound);
    const std::optional<size_t> service = ChooseService(*profile);
    if (!service) return;
    const std::filesystem::path current = LocationOf(profile->services[*service]);
    const std::wstring title =
        LabelText(L"The vCards of \u201C" + Utf16FromUtf8(profile->name) + L"\u201D are in:\n" + current.wstring());
    const std::optional<std::filesystem::path> chosen = ChooseLocation(Window(), title, current);
    if (chosen && *chosen != current) store_.SetLocation(profile->name, *service, *chosen);
}

// The one service that has properties, or the one that the user picks by its location. Nothing when none is picked;
// the user has been told when there is none.
std::optional<size_t> ProfileListDialog::ChooseService(const Profile& profile) const {
    std::vector<size_t> places;
    for (size_t i = 0; i < profile.services.size(); ++i)
        if (IsServiceName(profile.services[i].name)) places.push_back(i);
    if (places.empty()) {
        Say(IDS_NO_PROPERTIES, MB_OK | MB_ICONINFORMATION);
        return std::nullopt;
    }
    if (places.size() == 1) return places.front();

    const std::unique_ptr<HMENU, MenuCloser> menu(CreatePopupMenu());
    for (const size_t place : places)
        AppendMenuW(menu.get(), MF_STRING, place + 1, LabelText(LocationOf(profile.services[place]).wstring()).c_str());
    RECT button{};
    GetWindowRect(Control(IDC_PROPERTIES), &button);
    const int picked =
        TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY, button.left, button.bottom, 0, Window(), nullptr);
    if (picked <= 0) return std::nullopt;
    return static_cast<size_t>(picked) - 1;
}

void ProfileListDialog::AskForName(const std::function<void(const std::string&)>& make) {
    std::string made;
    ProfileNameDialog dialog(Resources(), [&](const std::string& name) {
        make(name);
        made = name;
    });
    const HRESULT result = dialog.Run(Window());
    if (result == MAPI_E_USER_CANCEL) return;
    Require(SUCCEEDED(result), result);
    Fill(made);
}

void ProfileListDialog::Fill(std::string_view selected) {
    names_.clear();
    for (Profile& profile : store_.List()) names_.push_back(std::move(profile.name));
    FillList(Control(IDC_PROFILE_LIST), listBox, names_, selected);
    FillList(Control(IDC_DISPLAY_PROFILE), comboBox, names_, store_.DisplayProfile());
    EnableButtons();
}

void ProfileListDialog::EnableButtons() {
    const bool isSelected = !Selected().empty();
    for (const int id : {IDC_REMOVE_PROFILE, IDC_PROPERTIES, IDC_COPY_PROFILE}) {
        // A disabled control keeps the keyboard from the dialog.
        if (!isSelected && GetFocus() == Control(id))
            SendMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_PROFILE_LIST)), TRUE);
        EnableWindow(Control(id), isSelected);
    }
}

std::string ProfileListDialog::Selected() const {
    return SelectedName(Control(IDC_PROFILE_LIST), listBox, names_);
}
