// Part of every shared library of ours on the host: announces the library, its entry point and its strings to
// host_windows, as the parts of a DLL that Windows finds by itself.
#include "host.h"

#pragma GCC visibility push(hidden)
extern "C" [[gnu::weak]] BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID);
[[gnu::weak]] extern const HostString hostStrings[];
[[gnu::weak]] extern const std::size_t hostStringCount;
#pragma GCC visibility pop

namespace {

HINSTANCE thisModule = nullptr;

[[gnu::constructor]] void Announce() {
    thisModule = HostModuleMapped(&thisModule, DllMain, hostStrings, hostStrings != nullptr ? hostStringCount : 0);
}

[[gnu::destructor]] void Withdraw() {
    HostModuleUnmapped(thisModule);
}

}  // namespace
