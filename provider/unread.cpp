// One counter for the process: whoever asks compares its value before and after a call.
#include "unread.h"

#include <array>
#include <atomic>
#include <cstdio>

#include "diagnostics_output.h"

namespace {

std::atomic<ULONG> count = 0;

}  // namespace

void CountUnread() noexcept {
    ++count;
}

ULONG UnreadCount() noexcept {
    return count;
}

// Memory for a message of its own is what is missing.
void NoteLackOfMemory() noexcept {
    static std::atomic_flag isSaid;
    CountUnread();
    if (!isSaid.test_and_set())
        WriteDiagnostics(
            "QDXL7RA.DLL: there is not enough memory for an answer; close other programs, or read smaller address "
            "books\n");
}

void NoteFailedAnswer(const char* fault) noexcept {
    static std::atomic<ULONG> sayings = 0;
    constexpr ULONG mostSayings = 100;
    CountUnread();
    const ULONG sayingsBefore = sayings++;
    if (sayingsBefore > mostSayings) return;
    if (sayingsBefore == mostSayings)
        return WriteDiagnostics("QDXL7RA.DLL: more answers cannot be made; nothing further is said of them\n");
    std::array<char, 640> line{};
    std::snprintf(line.data(), line.size(),
                  "QDXL7RA.DLL: an answer cannot be made (%.512s); look at the address files with \"faxbook check\"\n",
                  fault);
    WriteDiagnostics(line.data());
}
