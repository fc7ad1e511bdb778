// Windows calls the handlers of a console program in a thread of their own, the newest first: ours makes that thread
// wait. Elsewhere the signals are blocked.
#include "platform/system/interrupt_hold.h"

#ifdef _WIN32

#include <windows.h>

#include <mutex>

namespace {

std::mutex isHeld;

BOOL WINAPI WaitForTheEnd(DWORD) {
    const std::lock_guard wait(isHeld);
    return FALSE;
}

}  // namespace

InterruptHold::InterruptHold() {
    isHeld.lock();
    SetConsoleCtrlHandler(WaitForTheEnd, TRUE);
}

InterruptHold::~InterruptHold() {
    SetConsoleCtrlHandler(WaitForTheEnd, FALSE);
    isHeld.unlock();
}

#else

#include <initializer_list>

InterruptHold::InterruptHold() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, &before_);
}

InterruptHold::~InterruptHold() {
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

#endif
