// One use of every export: two address books, one of them of fax entries, with containers, persons and groups, listed,
// shown and expanded; and the profile exports. What the calls saw is kept as text, so that runs can be compared.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "support/library_test.h"

// Fills the program's script with the data of the scenario.
void MakeScenario();

// What a scenario without disturbance sees.
extern const char* const undisturbedScenario;

// One call of one export: what it saw, or nothing when it failed.
using Step = std::function<std::optional<std::string>()>;

// Makes a step, or has it fail.
using Attempt = std::function<std::optional<std::string>(const Step&)>;
std::optional<std::string> MakeStep(const Step& step);

// Runs all steps and closes the session. Each is made by `attempt`, and tolerates that earlier ones have failed or
// found nothing.
std::string RunScenario(const LibraryUnderTest& library, const Attempt& attempt = MakeStep);

// The steps of the session alone, which any provider can be asked for.
std::string RunSession(const LibraryUnderTest& library, const Attempt& attempt = MakeStep);
