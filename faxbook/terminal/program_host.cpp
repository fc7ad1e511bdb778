// The host passes arguments and output through as bytes, which are UTF-8.
#include "terminal/program.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <iostream>

#include "command_line.h"
#include "terminal/terminal_codes.h"

namespace {

constexpr int interrupts[] = {SIGINT, SIGTERM, SIGHUP};
constexpr size_t usualWidth = 80;

bool outputTakesCodes = false;
volatile sig_atomic_t isProgressShown = 0;

Terminal LookAt(int descriptor) {
    if (isatty(descriptor) == 0) return {};
    winsize size = {};
    const bool isKnown = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    const char* kind = std::getenv("TERM");
    return {isKnown ? size.ws_col : usualWidth, kind && std::string_view(kind) != "dumb"};
}

// The next file to be opened would get the number of a closed stream, and what is meant for the stream. The ones here
// refuse to be written and read.
void OccupyClosedStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) >= 0 || errno != EBADF) continue;
        open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

// May be called by a signal's handler.
void Write(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written <= 0) return;
        bytes.remove_prefix(static_cast<size_t>(written));
    }
}

void LeaveTerminal() {
    if (outputTakesCodes) Write(STDOUT_FILENO, terminal_codes::plain);
    if (isProgressShown) Write(STDERR_FILENO, terminal_codes::wipeLine);
}

// The system's own action follows: the handler is gone when it is called.
void OnInterrupt(int signal) {
    LeaveTerminal();
    raise(signal);
}

void SetHandler(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : interrupts) {
        struct sigaction old = {};
        // What the caller of this program has it ignore stays ignored.
        if (sigaction(signal, nullptr, &old) == 0 && old.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
    }
}

}  // namespace

// This system looks nowhere else.
void UseSystemLibrariesOnly() {}

std::vector<std::string> ProgramArguments(int argc, char** argv) {
    return {argv, argv + argc};
}

StandardStreams::StandardStreams()
    : before_(std::cout.rdbuf(&buffer_)), output_(LookAt(STDOUT_FILENO)), notes_(LookAt(STDERR_FILENO)) {
    OccupyClosedStreams();
    // A pipe without a reader is an error of writing, also where nobody reads the notes.
    signal(SIGPIPE, SIG_IGN);
    struct stat information = {};
    const bool isPipe = fstat(STDOUT_FILENO, &information) == 0 && S_ISFIFO(information.st_mode);
    hasPlaceForProgress_ = notes_.takesCodes && !isPipe;
    outputTakesCodes = output_.takesCodes;
    SetHandler(OnInterrupt);
}

StandardStreams::~StandardStreams() {
    SetHandler(SIG_DFL);
    std::cout.rdbuf(before_);
}

std::string StandardStreams::WriteOutput(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<size_t>(written));
            continue;
        }
        switch (errno) {
            case EINTR:
                break;
            case EAGAIN: {
                // Another program has the stream not wait.
                pollfd output = {STDOUT_FILENO, POLLOUT, 0};
                poll(&output, 1, -1);
                break;
            }
            case EPIPE:
            case ECONNRESET:
                LeaveTerminal();
                std::_Exit(exitReaderGone);
            case EBADF:
                return isClosed_;
            case ENOSPC:
            case EDQUOT:
            case EFBIG:
                return hasNoRoom_;
            default:
                return "system error " + std::to_string(errno);
        }
    }
    return {};
}

void StandardStreams::DrawProgress(std::string_view line) {
    isProgressShown = !line.empty();
    Write(STDERR_FILENO, std::string(terminal_codes::wipeLine).append(line).append("\r"));
}

void LeaveInterruptsToOtherThreads() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : interrupts) sigaddset(&set, signal);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}
