// The system's own dialog for folders, with files in it.
#include "profiles/dialogs/location_chooser.h"

#include <objbase.h>
#include <shlobj.h>

#include <array>
#include <memory>

namespace fs = std::filesystem;

namespace {

// The dialog reads the folders of the desktop through COM objects. A thread that has chosen the other kind of
// apartment keeps it.
class ComApartment {
  public:
    ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ComApartment() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

  private:
    HRESULT result_;
};

struct TaskMemoryFreer {
    void operator()(void* memory) const { CoTaskMemFree(memory); }
};

// Empty for what is not in the file system.
fs::path PathOf(PCIDLIST_ABSOLUTE item) {
    std::array<wchar_t, MAX_PATH> path{};
    return item != nullptr && SHGetPathFromIDListW(item, path.data()) ? fs::path(path.data()) : fs::path();
}

int CALLBACK HandleBrowserMessage(HWND window, UINT message, LPARAM lParam, LPARAM current) {
    if (message == BFFM_INITIALIZED) SendMessageW(window, BFFM_SETSELECTIONW, TRUE, current);
    if (message == BFFM_SELCHANGED)
        SendMessageW(window, BFFM_ENABLEOK, 0, !PathOf(reinterpret_cast<PCIDLIST_ABSOLUTE>(lParam)).empty());
    return 0;
}

}  // namespace

std::optional<fs::path> ChooseLocation(HWND owner, const std::wstring& title, const fs::path& current) {
    const ComApartment apartment;
    BROWSEINFOW browser{};
    browser.hwndOwner = owner;
    browser.lpszTitle = title.c_str();
    browser.ulFlags = BIF_BROWSEINCLUDEFILES;
    browser.lpfn = HandleBrowserMessage;
    browser.lParam = reinterpret_cast<LPARAM>(current.c_str());
    const std::unique_ptr<ITEMIDLIST, TaskMemoryFreer> chosen(SHBrowseForFolderW(&browser));
    fs::path path = PathOf(chosen.get());
    if (path.empty()) return std::nullopt;
    return path;
}
