// Libraries are loaded by their full path and from nowhere else.
#include "loaded_module.h"

#include <filesystem>

#include "command_failure.h"
#include "platform/files.h"
#include "text.h"

namespace {

std::string ProgramFolder() {
    std::string path(MAX_PATH, '\0');
    DWORD length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length >= path.size() - 1) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    const size_t separator = path.find_last_of("\\/");
    path.resize(separator == std::string::npos ? 0 : separator + 1);
    return path;
}

}  // namespace

LoadedModule::LoadedModule(const std::string& fileName) : path_(ProgramFolder() + fileName) {
    Load("put it beside this program");
}

LoadedModule::LoadedModule(const AtPath& where)
    : path_(InCodePage(Utf8Of(std::filesystem::absolute(PathOfUtf8(where.path))), "the path")) {
    Load("name a library of this system's kind, 64 bits wide");
}

void LoadedModule::Load(const char* advice) {
    handle_.reset(LoadLibraryA(path_.c_str()));
    if (handle_) return;
    throw CommandFailure("cannot load " + Utf8(path_) + " (system error " + std::to_string(GetLastError()) + "); " +
                         advice);
}

FARPROC LoadedModule::FindFunction(const char* name) const {
    const FARPROC function = GetProcAddress(Handle(), name);
    if (!function) {
        throw CommandFailure(Utf8(path_) + " has no function " + name +
                             "; put the library of this program's version there");
    }
    return function;
}
