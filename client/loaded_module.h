// A library, loaded for as long as the object lives.
#pragma once

#include <windows.h>

#include <bit>
#include <memory>
#include <string>
#include <type_traits>

// The full path of a file in this program's folder; the name is ASCII.
std::string PathBesideProgram(const std::string& fileName);

struct ModuleCloser {
    void operator()(HMODULE module) const { FreeLibrary(module); }
};
using ModuleHandle = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleCloser>;

class LoadedModule {
  public:
    // From this program's folder; the name is ASCII. What it needs comes from the system. Throws ClientError when
    // the file cannot be loaded.
    explicit LoadedModule(const std::string& fileName);
    // From where the user says, in UTF-8. What it needs may lie beside it.
    struct AtPath {
        std::string path;
    };
    explicit LoadedModule(const AtPath& where);

    HMODULE Handle() const { return handle_.get(); }
    // Throws ClientError when the library has no function of that name.
    template <typename Function>
    Function* Resolve(const char* name) const {
        return std::bit_cast<Function*>(FindFunction(name));
    }

  private:
    void Load(DWORD searchFlags, const char* advice);
    FARPROC FindFunction(const char* name) const;

    std::string path_;
    ModuleHandle handle_;
};
