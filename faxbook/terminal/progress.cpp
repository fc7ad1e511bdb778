// The line is drawn anew five times a second.
#include "terminal/progress.h"

#include <new>
#include <utility>

#include "terminal/program.h"

Progress::Progress(Draw drawLine, std::chrono::milliseconds firstWait)
    : draw_(std::move(drawLine)), thread_([this, firstWait] { Run(firstWait); }) {}

Progress::~Progress() {
    {
        const std::lock_guard lock(mutex_);
        isOver_ = true;
    }
    over_.notify_one();
    thread_.join();
    Wipe();
}

void Progress::Say(const std::string& text) {
    const std::lock_guard lock(mutex_);
    what_ = text;
}

void Progress::Wipe() {
    const std::lock_guard lock(mutex_);
    if (std::exchange(isShown_, false)) draw_("");
}

void Progress::Run(std::chrono::milliseconds firstWait) try {
    LeaveInterruptsToOtherThreads();
    std::unique_lock lock(mutex_);
    for (auto wait = firstWait; !over_.wait_for(lock, wait, [this] { return isOver_; });
         wait = std::chrono::milliseconds(200)) {
        isShown_ = true;
        draw_(Line());
    }
} catch (const std::bad_alloc&) {
    // Whoever reads meets the same and says so; without memory there is no line.
}

// "reading Company: 120000, 3 s"
std::string Progress::Line() const {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start_);
    const std::uint64_t counted = count_.load(std::memory_order_relaxed);
    return what_ + ": " + (counted == 0 ? "" : std::to_string(counted) + ", ") + std::to_string(seconds.count()) + " s";
}
