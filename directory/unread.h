// What could not be read: an answer in which it is missing must not pass for a whole one.
#pragma once

#include <windows.h>

// How often in this process an answer was made, or could not be made, without something that could not be read: a file,
// a folder, settings, or all of it for want of memory. What is missing, the diagnostics say.
void CountUnread() noexcept;
ULONG UnreadCount() noexcept;

// Counts an answer that failed for a reason outside of what was asked for, and says so once in the process.
void NoteLackOfMemory() noexcept;
void NoteFailedAnswer() noexcept;
