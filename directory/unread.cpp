// One counter for the process: whoever asks compares its value before and after a call.
#include "unread.h"

#include <atomic>
#include <string_view>

#include "diagnostics_output.h"

namespace {

std::atomic<ULONG> count = 0;

// Memory for a message of its own may be what is missing.
void Note(std::atomic_flag& isSaid, std::string_view line) noexcept {
    CountUnread();
    if (!isSaid.test_and_set()) WriteDiagnostics(line);
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
    Note(
        isSaid,
        "QDXL7RA.DLL: there is not enough memory for an answer; close other programs, or read smaller address books\n");
}

void NoteFailedAnswer() noexcept {
    static std::atomic_flag isSaid;
    Note(isSaid, "QDXL7RA.DLL: an answer cannot be made; look at the address files with \"faxbook check\"\n");
}
