// Progress: one line at a terminal, while reading takes longer than half a second.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

// Draws from a thread of its own, as the library's calls return only when they are done.
class Progress {
  public:
    // Shows the line in the place of the last one; an empty line wipes it. Called by one thread at a time. Must leave
    // the cursor at the line's beginning, so that what others print covers the line.
    using Draw = std::function<void(std::string_view line)>;

    explicit Progress(Draw drawLine, std::chrono::milliseconds firstWait = std::chrono::milliseconds(500));
    // Wipes the line.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Say(const std::string& text);
    void CountOne() { count_.fetch_add(1, std::memory_order_relaxed); }
    // Makes room for other words; the line comes back.
    void Wipe();

  private:
    void Run(std::chrono::milliseconds firstWait);
    std::string Line() const;

    const Draw draw_;
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::atomic<std::uint64_t> count_ = 0;
    std::mutex mutex_;  // of what follows, and of drawing
    std::string what_ = "reading";
    bool isShown_ = false;
    bool isOver_ = false;
    std::condition_variable over_;
    std::thread thread_;
};
