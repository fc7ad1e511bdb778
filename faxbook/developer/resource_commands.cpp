// faxbook resources: what the library carries, for people who translate it. Strings are read in the same way on every
// system; the other kinds only a Windows library has (other_resources_windows.cpp).
#include <array>
#include <limits>

#include "client/library_session.h"
#include "client/record_text.h"
#include "commands/commands.h"
#include "developer/other_resources.h"
#include "text/code_pages.h"

namespace {

constexpr UINT largestStringId = std::numeric_limits<uint16_t>::max();

void AddStrings(HMODULE module, Table& table) {
    std::array<char, 4096> text = {};
    for (UINT id = 1; id <= largestStringId; ++id) {
        const int length = LoadStringA(module, id, text.data(), static_cast<int>(text.size()));
        if (length <= 0) continue;
        table.AddRow(
            {"string", std::to_string(id), "", FromActiveCodePage({text.data(), static_cast<size_t>(length)})});
    }
}

}  // namespace

namespace commands {

void ListResources(const CommandContext& context) {
    const Library library;
    Table table = context.MakeTable(
        {{"kind"}, {"id", Column::Kind::Number}, {"control", Column::Kind::Number, Column::WhenEmpty::Hide}, {"text"}});
    AddStrings(library.Module(), table);
    AddOtherResources(library.Module(), table, context.console);
    table.Finish();
}

}  // namespace commands
