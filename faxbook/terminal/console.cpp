// Whoever prints comes through here, so that nothing is printed into the progress line.
#include "terminal/console.h"

#include <ostream>
#include <utility>

#include "text/control_characters.h"

Console::Console(std::ostream& outStream, std::ostream& noteStream, const Terminal& outTerminal)
    : out_(outStream), notes_(noteStream), terminal_(outTerminal) {}

void Console::ShowProgress(Progress::Draw draw) {
    progress_ = std::make_unique<Progress>(std::move(draw));
}

std::ostream& Console::Out() {
    if (terminal_.width > 0) progress_.reset();
    return out_;
}

void Console::Note(std::string_view text) {
    Report("faxbook: " + std::string(text));
}

void Console::Report(std::string_view line) {
    if (progress_) progress_->Wipe();
    notes_ << WithoutControls(line) << '\n';
}

void Console::Reading(const std::string& what) {
    if (progress_) progress_->Say("reading " + WithoutControls(what));
}

void Console::CountOne() {
    if (progress_) progress_->CountOne();
}
