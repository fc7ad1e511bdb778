// Makes the lines.
#include "diagnostics.h"

#include "diagnostics_output.h"
#include "platform/system/files.h"
#include "reports.h"

namespace {

// More of a kind than a user reads.
constexpr size_t mostOfAKind = 100;

}  // namespace

void Diagnostics::Report(const std::filesystem::path& file, const Message& message) {
    if (pass_ == nullptr || pass_->Count(file, message)) Say(file, message, FillIn(message));
}

void Diagnostics::Say(const std::filesystem::path& file, const Message& message, const ToldMessage& told) {
    const std::string path = Utf8Of(file);
    const ULONG status = message.isIncomplete ? VOK_READ_INCOMPLETE : VOK_READ_COMPLETE;
    const VOKMessageReport report = {MakeReportHead<VOKMessageReport>(path.c_str(), message.line, status),
                                     told.what.c_str(), told.advice.c_str()};
    if (!said_.insert(FormatMessage(report)).second) return;
    if (receiver_.OnMessage != nullptr)
        receiver_.OnMessage(receiver_.context, &report);
    else
        DeliverMessage(report);
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
        ToldMessage told = FillIn({.what = fileAndWords.second, .advice = kind.advice});
        told.what = "and " + std::to_string(kind.count - mostOfAKind) + " more: " + told.what;
        diagnostics_.Say(kind.file, {}, told);
    }
    kinds_.clear();
}
