// The files that hold cards, of whatever format, by the ends of their names.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>

class CardReceiver;

bool IsCardFileName(const std::filesystem::path& path);

struct CardFileReading {
    std::optional<UINT> guessedCharset = {};  // where there was no other
    bool isComplete = false;                  // false when the file could not be read, or not to its end
};

// Hands every card of a file on. A file that cannot be read is reported and has none. `charset` is the code page of
// unlabelled text; without one it is guessed. Throws std::length_error for a file that is too large for its format.
CardFileReading ReadCardFile(const std::filesystem::path& path, std::optional<UINT> charset, CardReceiver& receiver);
