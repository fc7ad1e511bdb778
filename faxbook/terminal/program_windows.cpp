// Arguments come from the UTF-16 command line; files get LF line ends as they are written.
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#include <stdio.h>

#include <atomic>
#include <iostream>
#include <memory>

#include "client/record_text.h"
#include "command_line.h"
#include "commands/command_failure.h"
#include "terminal/program.h"
#include "terminal/terminal_codes.h"
#include "text/utf16.h"

namespace {

#ifndef ENABLE_VIRTUAL_TERMINAL_PROCESSING
#define ENABLE_VIRTUAL_TERMINAL_PROCESSING 4
#endif

// What a console was like before this program, for the end and for an interrupt, which comes in a thread of its own.
struct ConsoleBefore {
    DWORD stream;
    bool isConsole = false;
    DWORD mode = 0;

    Terminal Prepare() {
        const HANDLE handle = GetStdHandle(stream);
        isConsole = GetConsoleMode(handle, &mode) != 0;
        if (!isConsole) return {};
        CONSOLE_SCREEN_BUFFER_INFO size;
        constexpr size_t usualWidth = 80;
        const size_t width = GetConsoleScreenBufferInfo(handle, &size)
                                 ? static_cast<size_t>(size.srWindow.Right - size.srWindow.Left + 1)
                                 : usualWidth;
        return {width, SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0};
    }
    void Restore() const {
        if (isConsole) SetConsoleMode(GetStdHandle(stream), mode);
    }
};

ConsoleBefore outputBefore = {STD_OUTPUT_HANDLE};
ConsoleBefore notesBefore = {STD_ERROR_HANDLE};
UINT codePageBefore = 0;  // 0: there is no console
bool outputTakesCodes = false;
std::atomic<bool> isProgressShown = false;

void Write(DWORD stream, std::string_view bytes) {
    DWORD written = 0;
    WriteFile(GetStdHandle(stream), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

void RestoreConsoles() {
    outputBefore.Restore();
    notesBefore.Restore();
    if (codePageBefore != 0) SetConsoleOutputCP(codePageBefore);
}

void LeaveTerminal() {
    if (outputTakesCodes) Write(STD_OUTPUT_HANDLE, terminal_codes::plain);
    if (isProgressShown) Write(STD_ERROR_HANDLE, terminal_codes::wipeLine);
    RestoreConsoles();
}

// The system's own action follows.
BOOL WINAPI OnInterrupt(DWORD) {
    LeaveTerminal();
    return FALSE;
}

}  // namespace

void UseSystemLibrariesOnly() {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

std::vector<std::string> ProgramArguments(int, char**) {
    int count = 0;
    const auto freeList = [](LPWSTR* list) { LocalFree(list); };
    const std::unique_ptr<LPWSTR, decltype(freeList)> list(CommandLineToArgvW(GetCommandLineW(), &count), freeList);
    if (!list) throw CommandFailure("Windows cannot read the command line");
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i) arguments.push_back(Utf8FromUtf16(Utf16View(list.get()[i])));
    return arguments;
}

StandardStreams::StandardStreams()
    : before_(std::cout.rdbuf(&buffer_)), output_(outputBefore.Prepare()), notes_(notesBefore.Prepare()) {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    codePageBefore = GetConsoleOutputCP();
    if (codePageBefore != 0) SetConsoleOutputCP(CP_UTF8);
    hasPlaceForProgress_ = notes_.takesCodes && GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) != FILE_TYPE_PIPE;
    outputTakesCodes = output_.takesCodes;
    SetConsoleCtrlHandler(OnInterrupt, TRUE);
}

StandardStreams::~StandardStreams() {
    SetConsoleCtrlHandler(OnInterrupt, FALSE);
    RestoreConsoles();
    std::cout.rdbuf(before_);
}

std::string StandardStreams::WriteOutput(std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        if (WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                      nullptr)) {
            bytes.remove_prefix(written);
            // A pipe that another program has not wait is full.
            if (written == 0) Sleep(1);
            continue;
        }
        switch (const DWORD error = GetLastError()) {
            case ERROR_BROKEN_PIPE:
            case ERROR_NO_DATA:
            case ERROR_PIPE_NOT_CONNECTED:
                LeaveTerminal();
                TerminateProcess(GetCurrentProcess(), exitReaderGone);
                [[fallthrough]];
            case ERROR_INVALID_HANDLE:
                return isClosed_;
            case ERROR_DISK_FULL:
            case ERROR_HANDLE_DISK_FULL:
                return hasNoRoom_;
            default:
                return "system error " + std::to_string(error);
        }
    }
    return {};
}

void StandardStreams::DrawProgress(std::string_view line) {
    isProgressShown = !line.empty();
    Write(STD_ERROR_HANDLE, std::string(terminal_codes::wipeLine).append(line).append("\r"));
}

void LeaveInterruptsToOtherThreads() {}
