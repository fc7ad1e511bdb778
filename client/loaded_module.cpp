// Libraries are loaded by their full path and from nowhere else.
#include "client/loaded_module.h"

#include <filesystem>

#include "client/client_error.h"
#include "client/record_text.h"
#include "platform/system/files.h"
#include "text/utf16.h"

namespace {

// With the separator at its end, in UTF-8.
std::string ProgramFolder() {
    std::basic_string<WCHAR> path(MAX_PATH, WCHAR());
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length >= path.size() - 1) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    const std::string file = Utf8FromUtf16(Utf16View(path).substr(0, length));
    return file.substr(0, file.find_last_of("\\/") + 1);
}

}  // namespace

std::string PathBesideProgram(const std::string& fileName) {
    // A path that the code page lacks would be the path of another file in it.
    return InCodePage(ProgramFolder() + fileName, "the path of this program's library");
}

LoadedModule::LoadedModule(const std::string& fileName) : path_(PathBesideProgram(fileName)) {
    Load(LOAD_LIBRARY_SEARCH_SYSTEM32, "put it beside this program");
}

LoadedModule::LoadedModule(const AtPath& where)
    : path_(InCodePage(Utf8Of(std::filesystem::absolute(PathOfUtf8(where.path))), "the path")) {
    Load(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR,
         "name a library of this system's kind, 64 bits wide");
}

void LoadedModule::Load(DWORD searchFlags, const char* advice) {
    handle_.reset(LoadLibraryExA(path_.c_str(), nullptr, searchFlags));
    if (handle_) return;
    throw ClientError("cannot load " + FromActiveCodePage(path_) + " (system error " + std::to_string(GetLastError()) +
                      "); " + advice);
}

FARPROC LoadedModule::FindFunction(const char* name) const {
    const FARPROC function = GetProcAddress(Handle(), name);
    if (!function) {
        throw ClientError(FromActiveCodePage(path_) + " has no function " + name +
                          "; put the library of this program's version there");
    }
    return function;
}
