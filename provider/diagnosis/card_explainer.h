// What became of every telephone number of a file, and why.
#pragma once

#include <filesystem>

#include "qdxl7ra.h"
#include "sources/files/book_settings.h"

// Reads the file once more and tells the receiver of each card. What is to be said of the file itself was said when it
// was read for its address book. Throws Failure with the receiver's result when that is negative.
void ExplainCards(const std::filesystem::path& file, const BookSettings& settings,
                  const VOKDiagnosisReceiver& receiver);
