// Makes the lines.
#include "diagnostics.h"

#include "diagnostics_output.h"
#include "platform/system/files.h"
#include "text/control_characters.h"

namespace {

// More of a kind than a user reads.
constexpr size_t mostOfAKind = 100;

}  // namespace

void Diagnostics::Report(const std::filesystem::path& file, const Message& message) {
    if (pass_ == nullptr || pass_->Count(file, message)) Say(file, message.line, FillIn(message));
}

void Diagnostics::Say(const std::filesystem::path& file, size_t line, const ToldMessage& told) {
    std::string text = Utf8Of(file);
    if (line != 0) text.append(":").append(std::to_string(line));
    text.append(": ").append(told.what);
    if (!told.advice.empty()) text.append("; ").append(told.advice);
    // A value from a file must not begin a line of its own, and a terminal must not obey it.
    text = WithoutControls(text);
    text.push_back('\n');
    const auto [position, isNew] = said_.insert(std::move(text));
    if (!isNew) return;
    if (sink_ != nullptr)
        sink_->Take(file, line, told.what, told.advice);
    else
        WriteDiagnostics(*position);
}

bool MessagePass::Count(const std::filesystem::path& file, const Message& message) {
    Kind& kind = kinds_[{Utf8Of(file), std::string(message.what)}];
    if (kind.count++ < mostOfAKind) return true;
    if (kind.count == mostOfAKind + 1) {
        kind.file = file;
        kind.advice = message.advice;
    }
    return false;
}

void MessagePass::Finish() {
    for (const auto& [fileAndWords, kind] : kinds_) {
        if (kind.count <= mostOfAKind) continue;
        ToldMessage told = FillIn({0, fileAndWords.second, kind.advice, {}});
        told.what = "and " + std::to_string(kind.count - mostOfAKind) + " more: " + told.what;
        diagnostics_.Say(kind.file, 0, told);
    }
    kinds_.clear();
}
