// Waiting for other programs that are in the way for a moment: those that change the same file, and on Windows whoever
// has it open, such as virus scanners and backup programs.
#pragma once

#include <chrono>
#include <thread>

enum class Attempt { Succeeded, Failed, InTheWay };

// Makes the attempt again and again as long as somebody is in the way, but for some seconds only: a person waits at a
// window for it. The answer is that of the last attempt.
template <typename Function>
Attempt TryPatiently(Function&& attempt) {
    constexpr std::chrono::seconds patience{5};
    constexpr std::chrono::milliseconds pause{2};
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const Attempt answer = attempt();
        if (answer != Attempt::InTheWay || std::chrono::steady_clock::now() > end) return answer;
        std::this_thread::sleep_for(pause);
    }
}
