// A library, loaded for as long as the object lives.
#pragma once

#include <windows.h>

#include <bit>
#include <memory>
#include <string>
#include <type_traits>

class LoadedModule {
  public:
    // From this program's folder; the name is ASCII. Throws CommandFailure when the file cannot be loaded.
    explicit LoadedModule(const std::string& fileName);
    // From where the user says, in UTF-8.
    struct AtPath {
        std::string path;
    };
    explicit LoadedModule(const AtPath& where);

    HMODULE Handle() const { return handle_.get(); }
    // Throws CommandFailure when the library has no function of that name.
    template <typename Function>
    Function* Resolve(const char* name) const {
        return std::bit_cast<Function*>(FindFunction(name));
    }

  private:
    struct Closer {
        void operator()(HMODULE loaded) const { FreeLibrary(loaded); }
    };

    void Load(const char* advice);
    FARPROC FindFunction(const char* name) const;

    std::string path_;
    std::unique_ptr<std::remove_pointer_t<HMODULE>, Closer> handle_;
};
