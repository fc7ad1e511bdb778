// Takes a name, and says why no profile can have it.
#include "profiles/dialogs/profile_name_dialog.h"

#include "guard.h"
#include "profiles/dialogs/wide_text.h"
#include "profiles/profile_name.h"
#include "provider/entry_points.h"
#include "resources/resource_ids.h"
#include "resources/string_ids.h"
#include "text/ascii.h"

ProfileNameDialog::ProfileNameDialog(HMODULE resources, Make make)
    : Dialog(resources, IDD_PROFILE_NAME), make_(std::move(make)) {}

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
        return Refuse(L"No profile can have this name: " + WideFromUtf8(fault) + L".");
    const HRESULT result = Guarded([&] {
        make_(name);
        return S_OK;
    });
    if (result == MAPI_E_COLLISION) return Refuse(String(IDS_PROFILE_EXISTS));
    End(result);
}

std::string ProfileNameDialog::ReadName() const {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(Control(IDC_PROFILE_NAME))) + 1, L'\0');
    text.resize(
        static_cast<size_t>(GetWindowTextW(Control(IDC_PROFILE_NAME), text.data(), static_cast<int>(text.size()))));
    return std::string(Trimmed(Utf8FromWide(text)));
}

void ProfileNameDialog::Refuse(const std::wstring& text) {
    Say(text, MB_OK | MB_ICONEXCLAMATION);
    SendMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_PROFILE_NAME)), TRUE);
}
