// One counter for the process: whoever asks compares its value before and after a call.
#include "unread.h"

#include <array>
#include <atomic>
#include <cstdio>

#include "diagnostics_output.h"
#include "reports.h"

namespace {

std::atomic<ULONG> count = 0;

// Takes no memory: it may be what is missing.
void Say(const char* what, const char* advice) noexcept {
    VOKMessageReport report = {MakeReportHead<VOKMessageReport>("", 0, VOK_READ_INCOMPLETE), what, advice};
    report.head.where = "QDXL7RA.DLL";
    DeliverMessage(report);
}

}  // namespace

void CountUnread() noexcept {
    ++count;
}

ULONG UnreadCount() noexcept {
    return count;
}

void NoteLackOfMemory() noexcept {
    static std::atomic_flag isSaid;
    CountUnread();
    if (!isSaid.test_and_set())
        Say("there is not enough memory for an answer", "close other programs, or read smaller address books");
}

void NoteFailedAnswer(const char* fault) noexcept {
    static std::atomic<ULONG> sayings = 0;
    constexpr ULONG mostSayings = 100;
    CountUnread();
    const ULONG sayingsBefore = sayings++;
    if (sayingsBefore > mostSayings) return;
    if (sayingsBefore == mostSayings) return Say("more answers cannot be made", "nothing further is said of them");
    std::array<char, 600> what{};
    std::snprintf(what.data(), what.size(), "an answer cannot be made (%.512s)", fault);
    Say(what.data(), "look at the address files with \"faxbook check\"");
}
