// The files that hold cards, of whatever format, by the ends of their names.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>

class CardReceiver;

bool IsCardFileName(const std::filesystem::path& path);

// Hands every card of a file on. A file that cannot be read is reported and has none. `charset` is the code page of
// unlabelled text; without one it is guessed, and the guess is the result. Throws std::length_error for a file that is
// too large for its format.
std::optional<UINT> ReadCardFile(const std::filesystem::path& path, std::optional<UINT> charset,
                                 CardReceiver& receiver);
