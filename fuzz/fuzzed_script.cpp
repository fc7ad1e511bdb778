// From bytes to a script. An input is read in one order, so that a changed byte changes one thing.
#include "fuzzed_script.h"

#include "model/contents_row.h"
#include "queries/hierarchy_row.h"

namespace {

// Few identifiers, so that they meet; the first is the root container's. The last names no entry.
constexpr const char* identifiers[] = {"", "a", "b", "c", "d", "nobody"};
constexpr std::uint32_t identifierCount = std::size(identifiers);

// Few rows a table: a hierarchy in which everything refers to everything grows with their number to the power of the
// identifiers'.
constexpr std::uint32_t mostRows = 4;
constexpr std::uint32_t mostValues = 8;
constexpr std::uint32_t mostFaults = 4;

constexpr HRESULT results[] = {S_OK, 1, 4, 2, E_FAIL, MAPI_E_USER_CANCEL, MAPI_E_NOT_FOUND, E_OUTOFMEMORY};

ULONG TakeTag(FuzzedInput& input) {
    const std::uint32_t column = input.TakeBelow(ContentsColumns.cValues + HierarchyColumns.cValues);
    const ULONG tag = column < ContentsColumns.cValues ? ContentsColumns.aulPropTag[column]
                                                       : HierarchyColumns.aulPropTag[column - ContentsColumns.cValues];
    constexpr ULONG types[] = {PT_STRING8, PT_BINARY, PT_LONG, PT_I2, PT_ERROR};
    const std::uint32_t type = input.TakeBelow(16);
    return type < std::size(types) ? CHANGE_PROP_TYPE(tag, types[type]) : tag;
}

std::string TakeText(FuzzedInput& input) {
    constexpr const char* texts[] = {"", "FAX", "SMTP", "Ida", "Ida (Home Fax)", "Ida@3", "1"};
    const std::uint32_t choice = input.TakeBelow(10);
    if (choice < std::size(texts)) return texts[choice];
    if (choice == 7) return std::string(input.TakeByte() * 16u, 'x');
    // Longer than a field by some bytes of the input, which may be parts of characters.
    const std::string text(choice == 8 ? 0 : input.TakeBelow(200), 'y');
    return text + std::string(input.TakeBytes(input.TakeBelow(16)));
}

Value TakeValue(FuzzedInput& input) {
    Value value{.tag = TakeTag(input)};
    value.isNull = input.TakeBelow(16) == 1;
    switch (PROP_TYPE(value.tag)) {
        case PT_STRING8:
            value.bytes = TakeText(input);
            break;
        case PT_BINARY:
            value.bytes = identifiers[input.TakeBelow(identifierCount)];
            value.number = input.TakeByte();
            break;
        default:
            value.number = static_cast<LONG>(input.TakeByte()) - 1;
            break;
    }
    return value;
}

Row TakeRow(FuzzedInput& input) {
    constexpr ULONG types[] = {MAPI_ABCONT, MAPI_MAILUSER, MAPI_DISTLIST, 0};
    Row row{Identifier(identifiers[input.TakeBelow(identifierCount)]),
            Number(PR_OBJECT_TYPE, static_cast<LONG>(types[input.TakeBelow(std::size(types))])),
            Text(PR_DISPLAY_NAME, TakeText(input))};
    for (std::uint32_t count = input.TakeBelow(mostValues); count > 0; --count) row.values.push_back(TakeValue(input));
    switch (input.TakeBelow(16)) {
        case 1:
            row.asGiven = true;
            break;
        case 2:
            row.length = input.TakeBelow(4);
            break;
        case 3:
            row.withoutValues = true;
            break;
    }
    return row;
}

Table TakeTable(FuzzedInput& input) {
    Table table;
    for (std::uint32_t count = input.TakeBelow(mostRows); count > 0; --count) table.rows.push_back(TakeRow(input));
    switch (input.TakeBelow(8)) {
        case 1:
            table.statedCount = input.TakeBelow(2 * mostRows);
            break;
        case 2:
            table.statedCount = 0xFFFFFFFF;
            break;
        case 3:
            for (std::uint32_t count = input.TakeBelow(4); count > 0; --count)
                table.batches.push_back(input.TakeBelow(2 * mostRows));
            break;
    }
    return table;
}

Entry TakeEntry(FuzzedInput& input) {
    constexpr ULONG types[] = {MAPI_ABCONT, MAPI_DISTLIST, MAPI_MAILUSER, 0};
    Entry entry;
    entry.type = types[input.TakeBelow(std::size(types))];
    entry.contentsResult = results[input.TakeBelow(std::size(results))];
    entry.hierarchy = TakeTable(input);
    entry.contents = TakeTable(input);
    entry.properties = TakeRow(input);
    for (std::uint32_t count = input.TakeBelow(mostRows); count > 0; --count)
        entry.members.emplace_back(identifiers[input.TakeBelow(identifierCount)]);
    return entry;
}

}  // namespace

void MakeFuzzedScript(FuzzedInput& input, Script& script) {
    for (std::uint32_t i = 0; i + 1 < identifierCount; ++i) script.entries[identifiers[i]] = TakeEntry(input);
    for (std::uint32_t count = input.TakeBelow(mostFaults); count > 0; --count) {
        Fault fault;
        fault.call = 1u + input.TakeByte();
        fault.result = results[input.TakeBelow(std::size(results))];
        fault.gives = input.TakeBool();
        script.faults.push_back(fault);
    }
}
