// The library and the benchmark's provider, loaded, and a session on its address book. What fails ends the program.
#pragma once

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "bench_book.h"
#include "mapi/entry_points.h"
#include "qdxl7rc.h"

[[noreturn]] inline void Fail(const char* what) {
    std::fprintf(stderr, "benchmark: %s failed\n", what);
    std::exit(1);
}

inline void Require(bool succeeded, const char* what) {
    if (!succeeded) Fail(what);
}

template <class Function>
Function* Resolve(HMODULE module, const char* name) {
    auto* function = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    if (function == nullptr) Fail(name);
    return function;
}

// The library and its provider, from the folder of the program of that path.
struct Modules {
    explicit Modules(const char* program)
        : folder(std::filesystem::absolute(program).parent_path().string()),
          provider(LoadLibraryA((folder + "/QDXL7RA.DLL").c_str())),
          library(LoadLibraryA((folder + "/QDXL7RC.DLL").c_str())) {
        Require(provider != nullptr && library != nullptr, "loading QDXL7RC.DLL and QDXL7RA.DLL beside this program");
    }
    std::string folder;
    HMODULE provider;
    HMODULE library;

#define EXPORTED(module, name, function) decltype(function)* const name = Resolve<decltype(function)>(module, #function)
    EXPORTED(library, open, OpenAddressBook);
    EXPORTED(library, close, CloseAddressBook);
    EXPORTED(library, listBooks, GetAddressBookList);
    EXPORTED(library, listDestinations, GetDestinationList);
    EXPORTED(library, showDetails, GetDestinationDetails);
    EXPORTED(library, expandGroup, GetDestinationsInGroup);
#undef EXPORTED
    BenchBook& book = *Resolve<GetBenchBookFunction>(provider, "GetBenchBook")();
    GetBenchBatchFunction* const getBatch = Resolve<GetBenchBatchFunction>(provider, "GetBenchBatch");
    VOKOpenFunction* const openProvider = Resolve<VOKOpenFunction>(provider, "VOKOpen");
};

// A session with its one address book listed.
class Session {
  public:
    explicit Session(const Modules& theModules) : modules(theModules) {
        handle = modules.open(nullptr, nullptr, 0, nullptr, 0, nullptr);
        uint32_t count = 0;
        Require(handle != nullptr && modules.listBooks(handle, 0, nullptr, &count, nullptr) == 1, "opening a session");
        const RecordListDescriptor records{sizeof book, {}, &book};
        Require(modules.listBooks(handle, 0, nullptr, &count, &records) == 1, "listing the address book");
    }
    ~Session() { Close(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void Close() {
        if (handle != nullptr) modules.close(handle);
        handle = nullptr;
    }
    uint32_t Count() const {
        uint32_t count = 0;
        Require(modules.listDestinations(handle, 0, book.entry, &count, nullptr) == 1, "counting");
        return count;
    }
    void Fill(std::vector<DestinationRecord*>& addresses) const {
        auto count = static_cast<uint32_t>(addresses.size());
        const RecordListDescriptor records{0, {}, addresses.data()};
        Require(modules.listDestinations(handle, 0, book.entry, &count, &records) == 1, "filling");
    }

    const Modules& modules;
    SessionHandle* handle = nullptr;
    AddressBookRecord book{};
};
