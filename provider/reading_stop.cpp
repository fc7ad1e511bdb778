// One stop ends all that is being read in the process, and no more than that.
#include "reading_stop.h"

#include <atomic>

#include "failure.h"
#include "unread.h"

namespace {

std::atomic<int> readings = 0;
std::atomic<bool> isStopped = false;

}  // namespace

StoppableReading::StoppableReading() noexcept {
    if (readings++ == 0) isStopped = false;
}

StoppableReading::~StoppableReading() {
    --readings;
}

void StopReading() noexcept {
    if (readings != 0) isStopped = true;
}

void RequireNotStopped() {
    if (!isStopped.load(std::memory_order_relaxed)) return;
    CountUnread();
    throw Failure(MAPI_E_USER_CANCEL, "the reading was stopped");
}
