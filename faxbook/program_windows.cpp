// Arguments come from the UTF-16 command line; files get LF line ends as they are written.
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#include <stdio.h>

#include <memory>

#include "command_failure.h"
#include "program.h"
#include "text.h"

std::vector<std::string> ProgramArguments(int, char**) {
    int count = 0;
    const auto freeList = [](LPWSTR* list) { LocalFree(list); };
    const std::unique_ptr<LPWSTR, decltype(freeList)> list(CommandLineToArgvW(GetCommandLineW(), &count), freeList);
    if (!list) throw CommandFailure("Windows cannot read the command line");
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i) arguments.push_back(Utf8(std::wstring_view(list.get()[i])));
    return arguments;
}

Utf8Streams::Utf8Streams() {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    consoleCodePage = GetConsoleOutputCP();
    if (consoleCodePage != 0) SetConsoleOutputCP(CP_UTF8);
}

Utf8Streams::~Utf8Streams() {
    if (consoleCodePage != 0) SetConsoleOutputCP(consoleCodePage);
}
