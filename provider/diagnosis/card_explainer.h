// What became of every telephone number of a file, and why.
#pragma once

#include <filesystem>

#include "books/book_settings.h"
#include "qdxl7ra.h"

// Reads the file once more and tells the receiver of each card. What is to be said of the file itself was said when it
// was read for its address book. Throws Failure with the receiver's result when that is negative.
void ExplainCards(const std::filesystem::path& file, const BookSettings& settings, VOKDiagnosisReceiver& receiver);
