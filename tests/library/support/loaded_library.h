// The library under test, loaded from a file beside the scripted provider, and the script that this provider follows.
#pragma once

#include <filesystem>

#include "qdxl7rc.h"
#include "script.h"

// The one script of this program.
Script& TheScript();

// A module, loaded for as long as this lives.
class LoadedModule {
  public:
    explicit LoadedModule(const std::filesystem::path& path);
    ~LoadedModule() {
        if (handle_ != nullptr) FreeLibrary(handle_);
    }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    HMODULE Handle() const { return handle_; }
    template <class Function>
    Function* Find(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(handle_, name)));
    }

  private:
    HMODULE handle_;
};

// How many calls of the library are under way.
extern int exportDepth;

// An export of the library, called as the function itself.
template <class Function>
class Export;
template <class Result, class... Arguments>
class Export<Result(Arguments...)> {
  public:
    explicit Export(Result (*exported)(Arguments...)) : function_(exported) {}
    Result operator()(Arguments... arguments) const {
        ++exportDepth;
        const Result result = function_(arguments...);
        --exportDepth;
        return result;
    }

  private:
    Result (*function_)(Arguments...);
};

// The library, with its exports under their names.
struct LibraryUnderTest : LoadedModule {
    using LoadedModule::LoadedModule;

#define EXPORTED(name) const Export<decltype(::name)> name{Find<decltype(::name)>(#name)}
    EXPORTED(OpenAddressBook);
    EXPORTED(CloseAddressBook);
    EXPORTED(GetLastVOKError);
    EXPORTED(DisplayRecipSelect);
    EXPORTED(DisplayRecipSelectEx);
    EXPORTED(GetAddressBookList);
    EXPORTED(GetDestinationList);
    EXPORTED(GetDestinationDetails);
    EXPORTED(GetDestinationsInGroup);
    EXPORTED(CreateProfile);
    EXPORTED(DisplayAdminProfiles);
#undef EXPORTED
};
