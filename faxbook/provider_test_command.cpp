// faxbook provider-test: any provider library, called as the address-book interface library calls it.

#include "command_failure.h"
#include "commands.h"
#include "loaded_module.h"
#include "provider_checker.h"
#include "text.h"

void commands::TestProvider(const CommandContext& context, const std::string& path) {
    const LoadedModule module(LoadedModule::AtPath{path});
    ProviderChecker checker(module);
    checker.Check(InCodePage(context.profile, "the profile's name"));
    Table table = context.MakeTable({{"where"}, {"fault"}, {"times", Column::Kind::Number}});
    for (const ProviderFault& fault : checker.Faults())
        table.AddRow({fault.where, fault.what, std::to_string(fault.times)});
    table.Finish();
    if (table.RowCount() > 0)
        throw CommandFailure(std::to_string(checker.CheckCount()) + " answers of the provider were looked at, and " +
                             std::to_string(table.RowCount()) +
                             " kinds of fault found; docs/provider-guide.md says "
                             "what is expected");
    context.console.Note(std::to_string(checker.CheckCount()) +
                         " answers of the provider were looked at, all as they should be");
}
