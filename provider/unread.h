// What could not be read: an answer in which it is missing must not pass for a whole one.
#pragma once

#include <windows.h>

// How often in this process an answer was made, or could not be made, without something that could not be read: a file,
// a folder, settings, or all of it for want of memory. What is missing, the diagnostics say.
void CountUnread() noexcept;
ULONG UnreadCount() noexcept;

// Counts an answer that failed for a reason outside of what was asked for, and says so: the lack of memory once in the
// process, another fault with its text, of which 512 bytes are shown, each time up to a bound.
void NoteLackOfMemory() noexcept;
void NoteFailedAnswer(const char* fault) noexcept;
