// faxbook provider-test: any provider library, called as the address-book interface library calls it.

#include <algorithm>

#include "client/loaded_module.h"
#include "client/record_text.h"
#include "commands/command_failure.h"
#include "commands/commands.h"
#include "developer/provider_checker.h"

namespace {

const char* NameOf(ProviderFinding::Kind kind) {
    return kind == ProviderFinding::Kind::Fault ? "fault" : "remark";
}

// "1 kind of fault", "2 kinds of remark".
std::string CountOf(const std::vector<ProviderFinding>& findings, ProviderFinding::Kind kind) {
    const auto count = std::ranges::count(findings, kind, &ProviderFinding::kind);
    return std::to_string(count) + (count == 1 ? " kind of " : " kinds of ") + NameOf(kind);
}

}  // namespace

void commands::TestProvider(const CommandContext& context, const std::string& path) {
    const LoadedModule module(LoadedModule::AtPath{path});
    ProviderChecker checker(module);
    checker.Check(InCodePage(context.profile, "the profile's name"));
    Table table = context.MakeTable({{"where"}, {"kind"}, {"answer"}, {"meaning"}, {"times", Column::Kind::Number}});
    const std::vector<ProviderFinding>& findings = checker.Findings();
    for (const ProviderFinding& finding : findings)
        table.AddRow(
            {finding.where, NameOf(finding.kind), finding.what, finding.meaning, std::to_string(finding.times)});
    table.Finish();
    const std::string looked = std::to_string(checker.CheckCount()) + " answers of the provider were looked at, ";
    const std::string remarks = CountOf(findings, ProviderFinding::Kind::Remark);
    if (std::ranges::count(findings, ProviderFinding::Kind::Fault, &ProviderFinding::kind) > 0)
        throw CommandFailure(looked + "with " + CountOf(findings, ProviderFinding::Kind::Fault) + " and " + remarks +
                             "; docs/provider-guide.md says what is expected");
    if (findings.empty())
        context.console.Note(looked + "all as they should be");
    else
        context.console.Note(looked + "without fault, with " + remarks +
                             ": answers that the library takes as they are");
}
