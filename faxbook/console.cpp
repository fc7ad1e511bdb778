// Whoever prints comes through here, so that nothing is printed into the progress line.
#include "console.h"

#include <ostream>
#include <utility>

#include "characters.h"

Console::Console(std::ostream& outStream, std::ostream& noteStream, const Terminal& outTerminal)
    : out(outStream), notes(noteStream), terminal(outTerminal) {}

void Console::ShowProgress(Progress::Draw draw) {
    progress = std::make_unique<Progress>(std::move(draw));
}

std::ostream& Console::Out() {
    if (terminal.width > 0) progress.reset();
    return out;
}

void Console::Note(std::string_view text) {
    Report("faxbook: " + std::string(text));
}

void Console::Report(std::string_view line) {
    if (progress) progress->Wipe();
    notes << WithoutControls(line) << '\n';
}

void Console::Reading(const std::string& what) {
    if (progress) progress->Say("reading " + WithoutControls(what));
}

void Console::CountOne() {
    if (progress) progress->CountOne();
}
