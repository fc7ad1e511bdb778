// Opens dialogs from a library's resources, one after the other, and describes each as Windows made it:
//
//     open_dialogs LIBRARY ID...
//
// For each dialog it prints "dialog ID", the caption and the number of controls, then one line per control in their
// order: id, class, whether the dialog finds the control by its id, and text, with tabs between. After the line "shown"
// the dialog stays until a line arrives on standard input.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

struct WindowCloser {
    using pointer = HWND;
    void operator()(HWND window) const { DestroyWindow(window); }
};

constexpr DWORD paintingMilliseconds = 300;
constexpr int longestText = 512;

INT_PTR CALLBACK HandleMessage(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG;
}

// A window's text on one line.
std::string GetText(HWND window) {
    char text[longestText];
    const int length = GetWindowTextA(window, text, longestText);
    std::string line;
    for (int i = 0; i < length; ++i)
        if (text[i] == '\n')
            line += "\\n";
        else
            line += text[i];
    return line;
}

std::string GetClass(HWND window) {
    char name[longestText];
    return {name, static_cast<size_t>(GetClassNameA(window, name, longestText))};
}

void PaintFor(HWND dialog, DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (GetTickCount64() < end) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            if (!IsDialogMessageA(dialog, &message)) DispatchMessageA(&message);
        Sleep(10);
    }
}

bool DescribeDialog(HINSTANCE library, int id) {
    const std::unique_ptr<HWND, WindowCloser> dialog(
        CreateDialogParamA(library, MAKEINTRESOURCEA(id), nullptr, HandleMessage, 0));
    if (!dialog) {
        std::printf("dialog %d cannot be opened: error %lu\n", id, GetLastError());
        return false;
    }
    ShowWindow(dialog.get(), SW_SHOW);
    PaintFor(dialog.get(), paintingMilliseconds);

    std::string controls;
    int count = 0;
    for (HWND child = GetWindow(dialog.get(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT), ++count) {
        const int childId = GetDlgCtrlID(child);
        const bool isFound = GetDlgItem(dialog.get(), childId) == child;
        controls += std::to_string(childId) + '\t' + GetClass(child) + '\t' + (isFound ? "found" : "hidden") + '\t' +
                    GetText(child) + '\n';
    }
    std::printf("dialog %d\t%s\t%d\n%sshown\n", id, GetText(dialog.get()).c_str(), count, controls.c_str());
    std::fflush(stdout);
    return std::getchar() != EOF;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3) {
        std::fputs("usage: open_dialogs LIBRARY ID...\n", stderr);
        return 2;
    }
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES};
    if (!InitCommonControlsEx(&classes)) {
        std::fputs("open_dialogs: the common controls cannot be had\n", stderr);
        return 1;
    }
    const HINSTANCE library = LoadLibraryA(arguments[1]);
    if (!library) {
        std::fprintf(stderr, "open_dialogs: %s cannot be loaded: error %lu\n", arguments[1], GetLastError());
        return 1;
    }
    bool isGood = true;
    for (int i = 2; i < argumentCount && isGood; ++i) isGood = DescribeDialog(library, std::atoi(arguments[i]));
    FreeLibrary(library);
    return isGood ? 0 : 1;
}
