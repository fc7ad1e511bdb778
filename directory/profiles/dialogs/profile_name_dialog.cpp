// Takes a name, with blanks in place of what a profile's name cannot hold.
#include "profiles/dialogs/profile_name_dialog.h"

#include "objects/guard.h"
#include "profiles/dialogs/wide_text.h"
#include "resources/resource_ids.h"
#include "resources/string_ids.h"
#include "text/ascii.h"

namespace {

// ProfileLock stands under a registry key of the profile's name: the longest that Windows allows.
constexpr WPARAM longestName = 255;

}  // namespace

ProfileNameDialog::ProfileNameDialog(HMODULE resources, Make make)
    : Dialog(resources, IDD_PROFILE_NAME), make_(std::move(make)) {}

INT_PTR ProfileNameDialog::Handle(UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) {
        SendMessageW(Control(IDC_PROFILE_NAME), EM_SETLIMITTEXT, longestName, 0);
        return TRUE;
    }
    if (message != WM_COMMAND) return FALSE;
    if (LOWORD(wParam) == IDOK)
        TakeName();
    else if (LOWORD(wParam) == IDCANCEL)
        End(MAPI_E_USER_CANCEL);
    else
        return FALSE;
    return TRUE;
}

void ProfileNameDialog::TakeName() {
    const std::string name = ReadName();
    if (name.empty()) return Refuse(IDS_NO_PROFILE_NAME);
    const HRESULT result = Guarded([&] {
        make_(name);
        return S_OK;
    });
    if (result == MAPI_E_COLLISION) return Refuse(IDS_PROFILE_EXISTS);
    End(result);
}

std::string ProfileNameDialog::ReadName() const {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(Control(IDC_PROFILE_NAME))) + 1, L'\0');
    text.resize(
        static_cast<size_t>(GetWindowTextW(Control(IDC_PROFILE_NAME), text.data(), static_cast<int>(text.size()))));
    // Pasted text can hold tabs.
    for (wchar_t& c : text)
        if (c < L' ') c = L' ';
    return std::string(Trimmed(Utf8FromWide(text)));
}

void ProfileNameDialog::Refuse(UINT stringId) {
    Say(stringId, MB_OK | MB_ICONEXCLAMATION);
    SendMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_PROFILE_NAME)), TRUE);
}
