// What only the host build has beside Windows' functions: windows for tests, a module's string table, and what every
// shared library of ours tells the module loader about itself (module_glue.cpp).
#pragma once

#include <windows.h>

// A module's strings. A shared library that defines hostStrings and hostStringCount has LoadStringA find them; a text
// is ASCII and must live as long as its module.
struct HostString {
    UINT id;
    const char* text;
};
#pragma GCC visibility push(hidden)
extern const HostString hostStrings[];
extern const std::size_t hostStringCount;
#pragma GCC visibility pop

using HostDllMain = BOOL(WINAPI*)(HINSTANCE, DWORD, LPVOID);

#pragma GCC visibility push(default)
extern "C" {
// A window of the style: with WS_CHILD a child of `parent`, else a top-level window that `parent` (or nobody) owns.
// Null when `parent` is no window, or null for a child.
HWND HostCreateWindow(HWND parent, DWORD style);
// Destroys the window and all below it.
BOOL HostDestroyWindow(HWND window);

// The module's string table from now on, until it is unmapped, in place of an earlier one; null: the program's. False
// when the handle is no module.
BOOL HostRegisterStrings(HINSTANCE instance, const HostString* strings, std::size_t count);

// Called when a shared library has been mapped and before it is unmapped. `address` lies inside the library; the entry
// point and the strings may be null. The result is the handle that LoadLibraryA gives for the library. LoadLibraryA
// calls the entry point when the library's static objects are there; what the program is linked with is attached here.
HINSTANCE HostModuleMapped(const void* address, HostDllMain entryPoint, const HostString* strings,
                           std::size_t stringCount);
void HostModuleUnmapped(HINSTANCE instance);
}
#pragma GCC visibility pop
