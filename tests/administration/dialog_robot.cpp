// Dialogs are worked by messages, keys come from the keyboard's own queue.
#include "dialog_robot.h"

#include <commctrl.h>
#include <shlobj.h>

#include <stdexcept>

namespace {

constexpr int profileList = 1000, profileName = 1010;

std::wstring Wide(const std::string& utf8) {
    std::wstring wide(utf8.size(), L'\0');
    wide.resize(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                                        wide.data(), static_cast<int>(wide.size()))));
    return wide;
}

std::string Utf8(const std::wstring& wide) {
    std::string utf8(3 * wide.size(), '\0');
    utf8.resize(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()),
                                                        utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr)));
    return utf8;
}

// SendMessage asks the window's own thread; GetWindowText would look at nothing but captions from outside.
std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
    text.resize(
        static_cast<size_t>(SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

bool IsOfClass(HWND window, const wchar_t* name) {
    wchar_t own[64] = {};
    GetClassNameW(window, own, 64);
    return lstrcmpiW(own, name) == 0;
}

struct ItemMessages {
    UINT count, textLength, text, selected, select;
};

ItemMessages MessagesOf(HWND list) {
    if (IsOfClass(list, L"ComboBox")) return {CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_GETCURSEL, CB_SETCURSEL};
    return {LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT, LB_GETCURSEL, LB_SETCURSEL};
}

std::wstring ItemText(HWND list, const ItemMessages& messages, LRESULT item) {
    const auto at = static_cast<WPARAM>(item);
    std::wstring text(static_cast<size_t>(SendMessageW(list, messages.textLength, at, 0)) + 1, L'\0');
    text.resize(static_cast<size_t>(SendMessageW(list, messages.text, at, reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

}  // namespace

HWND DialogRobot::Find() const {
    HWND found = nullptr;
    EnumThreadWindows(
        threadId_,
        [](HWND window, LPARAM result) -> BOOL {
            if (!IsOfClass(window, L"#32770") || !IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
            *reinterpret_cast<HWND*>(result) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

HWND DialogRobot::Need() const {
    const HWND dialog = Find();
    if (dialog == nullptr) throw std::runtime_error("no dialog");
    return dialog;
}

HWND DialogRobot::NeedControl(int id) const {
    const HWND control = GetDlgItem(Need(), id);
    if (control == nullptr) throw std::runtime_error("no control " + std::to_string(id));
    return control;
}

std::string DialogRobot::Kind() const {
    const HWND menu = FindWindowW(L"#32768", nullptr);
    if (menu != nullptr && GetWindowThreadProcessId(menu, nullptr) == threadId_) return "menu";
    const HWND dialog = Find();
    if (dialog == nullptr) return "none";
    if (GetDlgItem(dialog, profileList) != nullptr) return "profiles";
    if (GetDlgItem(dialog, profileName) != nullptr) return "name";
    return FindWindowExW(dialog, nullptr, WC_TREEVIEWW, nullptr) != nullptr ? "browse" : "message";
}

std::string DialogRobot::Caption() const {
    return Utf8(TextOf(Need()));
}

std::string DialogRobot::Message() const {
    std::wstring longest;
    for (HWND child = GetWindow(Need(), GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        std::wstring text = TextOf(child);
        if (IsOfClass(child, L"Static") && text.size() > longest.size()) longest = std::move(text);
    }
    return Utf8(longest);
}

bool DialogRobot::IsOwnerEnabled() const {
    return IsWindowEnabled(GetWindow(Need(), GW_OWNER)) != 0;
}

bool DialogRobot::IsEnabled(int id) const {
    return IsWindowEnabled(NeedControl(id)) != 0;
}

std::string DialogRobot::Items(int id) const {
    const HWND list = NeedControl(id);
    const ItemMessages messages = MessagesOf(list);
    const LRESULT selected = SendMessageW(list, messages.selected, 0, 0);
    std::wstring items;
    for (LRESULT i = 0; i < SendMessageW(list, messages.count, 0, 0); ++i)
        items += (i == 0 ? L"" : L"|") + ItemText(list, messages, i) + (i == selected ? L"*" : L"");
    return Utf8(items);
}

// Posted: the button may open a dialog, and sending would wait for its end.
void DialogRobot::Press(int id) const {
    if (!IsEnabled(id)) throw std::runtime_error("control " + std::to_string(id) + " is disabled");
    PostMessageW(NeedControl(id), BM_CLICK, 0, 0);
}

void DialogRobot::Type(int id, const std::string& text) const {
    SendMessageW(NeedControl(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

void DialogRobot::Choose(int id, const std::string& item) const {
    const HWND list = NeedControl(id);
    const ItemMessages messages = MessagesOf(list);
    for (LRESULT i = 0; i < SendMessageW(list, messages.count, 0, 0); ++i) {
        if (ItemText(list, messages, i) != Wide(item)) continue;
        SendMessageW(list, messages.select, static_cast<WPARAM>(i), 0);
        static_assert(LBN_SELCHANGE == CBN_SELCHANGE);
        SendMessageW(Need(), WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, LBN_SELCHANGE)),
                     reinterpret_cast<LPARAM>(list));
        return;
    }
    throw std::runtime_error("no item " + item);
}

std::string DialogRobot::ChooseLocation(const std::string& path) const {
    SendMessageW(Need(), BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(Wide(path).c_str()));
    const HWND tree = FindWindowExW(Need(), nullptr, WC_TREEVIEWW, nullptr);
    wchar_t text[MAX_PATH] = {};
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
    item.pszText = text;
    item.cchTextMax = MAX_PATH;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return Utf8(item.pszText);
}

void DialogRobot::CloseByMenu() const {
    PostMessageW(Need(), WM_SYSCOMMAND, SC_CLOSE, 0);
}

void DialogRobot::PressKey(WORD key) const {
    SetForegroundWindow(Need());
    INPUT strokes[2] = {};
    for (INPUT& stroke : strokes) {
        stroke.type = INPUT_KEYBOARD;
        stroke.ki.wVk = key;
    }
    strokes[1].ki.dwFlags = KEYEVENTF_KEYUP;
    if (SendInput(2, strokes, sizeof strokes[0]) != 2) throw std::runtime_error("the key was not taken");
}
