// The script that the provider finds through the program, and loading by a path of any characters.
#include "support/loaded_library.h"

int exportDepth = 0;

Script& TheScript() {
    static Script script;
    return script;
}

extern "C" {
#ifdef _WIN32
__declspec(dllexport)
#else
__attribute__((visibility("default")))
#endif
    Script* FindScript();

Script* FindScript() {
    return &TheScript();
}
}

// On Windows a path need not be one that the code page can say.
LoadedModule::LoadedModule(const std::filesystem::path& path)
#ifdef _WIN32
    : handle_(LoadLibraryW(path.c_str())){}
#else
    : handle_(LoadLibraryA(path.c_str())) {
}
#endif
