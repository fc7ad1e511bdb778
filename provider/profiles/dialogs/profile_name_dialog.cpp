// Takes a name, and says why no profile can have it.
#include "profiles/dialogs/profile_name_dialog.h"

#include "mapi/entry_points.h"
#include "profiles/profile_error.h"
#include "profiles/profile_name.h"
#include "resources/resource_ids.h"
#include "resources/string_ids.h"
#include "text/ascii.h"
#include "text/utf16.h"

ProfileNameDialog::ProfileNameDialog(HMODULE resources, Make make)
    : Dialog(resources, IDD_PROFILE_NAME, IDS_PROFILE_EDITOR), make_(std::move(make)) {}

INT_PTR ProfileNameDialog::Handle(UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) {
        // As many units; the bytes are counted when the name is taken.
        SendMessageW(Control(IDC_PROFILE_NAME), EM_SETLIMITTEXT, longestProfileName, 0);
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
    if (name.empty()) return Refuse(String(IDS_NO_PROFILE_NAME));
    if (const std::string fault = FaultOfNewName(name); !fault.empty())
        return Refuse(L"No profile can have this name: " + Utf16FromUtf8(fault) + L".");
    try {
        make_(name);
        End(S_OK);
    } catch (const ProfileError& error) {
        if (error.GetReason() != ProfileError::Reason::NameTaken) throw;
        Refuse(String(IDS_PROFILE_EXISTS));
    }
}

std::string ProfileNameDialog::ReadName() const {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(Control(IDC_PROFILE_NAME))) + 1, L'\0');
    text.resize(
        static_cast<size_t>(GetWindowTextW(Control(IDC_PROFILE_NAME), text.data(), static_cast<int>(text.size()))));
    return std::string(Trimmed(Utf8FromUtf16(text)));
}

void ProfileNameDialog::Refuse(const std::wstring& text) {
    Say(text, MB_OK | MB_ICONEXCLAMATION);
    SendMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_PROFILE_NAME)), TRUE);
}
