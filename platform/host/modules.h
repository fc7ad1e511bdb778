// The table of the modules that LoadLibraryA has loaded or that have announced themselves, for the files of this
// folder.
#pragma once

#include <mutex>

#include "host.h"

struct Module {
    HMODULE handle = nullptr;  // null: this place of the table is free
    bool announced = false;    // has module_glue.cpp, and tells when it is unmapped
    ULONG references = 0;      // of LoadLibraryA; attached while it is not 0
    HostDllMain entryPoint = nullptr;
    const HostString* strings = nullptr;
    std::size_t stringCount = 0;
};

// Held during every change of the table and every call of an entry point, as Windows holds its loader lock.
std::recursive_mutex& GetLoaderLock();

// Null when the handle is no module of the table; a null handle stands for the program, which always is.
Module* FindModule(HMODULE handle);
