// The line is drawn anew five times a second.
#include "progress.h"

#include <new>
#include <utility>

#include "program.h"

Progress::Progress(Draw drawLine, std::chrono::milliseconds firstWait)
    : draw(std::move(drawLine)), thread([this, firstWait] { Run(firstWait); }) {}

Progress::~Progress() {
    {
        const std::lock_guard lock(mutex);
        isOver = true;
    }
    over.notify_one();
    thread.join();
    Wipe();
}

void Progress::Say(const std::string& text) {
    const std::lock_guard lock(mutex);
    what = text;
}

void Progress::Wipe() {
    const std::lock_guard lock(mutex);
    if (std::exchange(isShown, false)) draw("");
}

void Progress::Run(std::chrono::milliseconds firstWait) try {
    LeaveInterruptsToOtherThreads();
    std::unique_lock lock(mutex);
    for (auto wait = firstWait; !over.wait_for(lock, wait, [this] { return isOver; });
         wait = std::chrono::milliseconds(200)) {
        isShown = true;
        draw(Line());
    }
} catch (const std::bad_alloc&) {
    // Whoever reads meets the same and says so; without memory there is no line.
}

// "reading Company: 120000, 3 s"
std::string Progress::Line() const {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start);
    const std::uint64_t counted = count.load(std::memory_order_relaxed);
    return what + ": " + (counted == 0 ? "" : std::to_string(counted) + ", ") + std::to_string(seconds.count()) + " s";
}
