// Members reader: the contents table of a distribution list.
#include "queries/members_reader.h"

#include "model/contents_row.h"
#include "provider/entry_opener.h"
#include "provider/table_cursor.h"

namespace {

void AddMember(const ContentsRow& row, MemoryBlocks& blocks, CObList& members) {
    auto* member = blocks.Create<CDistributionListDetails::CDetails>();
    const uint32_t type = row.GetObjectType();
    if (type == MAPI_MAILUSER || type == MAPI_DISTLIST) {
        member->objectType = type;
        member->name = CString(blocks, row.GetString(ContentsColumn::DisplayName));
    }
    members.AddTail(member);
}

}  // namespace

const CObList& ReadMembers(const QueryContext& context, CDistributionListDetails& list) {
    if (list.members != nullptr) return *list.members;
    MemoryBlocks& blocks = list.owner.blocks;
    MemoryRollback rollback(blocks);
    CObList* members = blocks.Create<CObList>();
    EntryOpener opener(context.session->addressBook.Get());
    if (const Held<IABContainer> opened = opener.OpenContainer(list.entryId)) {
        Held<IMAPITable> table;
        if (FAILED(opened->GetContentsTable(0, table.Receive()))) table.Release();
        TableCursor rows(std::move(table), ContentsColumns.Get());
        while (const std::optional<PropertyValues> values = rows.Next())
            AddMember(ContentsRow(*values), blocks, *members);
    }
    list.members = members;
    rollback.Keep();
    return *members;
}
