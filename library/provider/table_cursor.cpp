// TableCursor: fetching and freeing of row sets.
#include "provider/table_cursor.h"

#include <algorithm>

namespace {

// The most rows asked for at once.
constexpr ULONG largestBatch = 10000;

}  // namespace

TableCursor::TableCursor(Held<IMAPITable> heldTable, const SPropTagArray* columns) : table(std::move(heldTable)) {
    ULONG count = 0;
    // A row set that cannot be freed is not asked for.
    if (!table || providerTable.VOKFreeProws == nullptr || FAILED(table->SetColumns(columns, 0)) ||
        FAILED(table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr)) || FAILED(table->GetRowCount(0, &count)))
        return;
    batchSize = std::min(count, largestBatch);
    remaining = std::min(count, mostRows);
}

std::optional<PropertyValues> TableCursor::Next() {
    if (rows && nextRow == rows->cRows) rows.Free();
    if (!rows && !FetchBatch()) return std::nullopt;
    return PropertyValues(rows->aRow[nextRow++]);
}

// The rows counted decide when the table ends: a batch that holds more than were asked for or left is the last.
bool TableCursor::FetchBatch() {
    if (remaining == 0) return false;
    const HRESULT result = table->QueryRows(static_cast<LONG>(batchSize), 0, rows.Receive());
    if (FAILED(result) || !rows || rows->cRows == 0) {
        remaining = 0;
        rows.Free();
        return false;
    }
    nextRow = 0;
    remaining = rows->cRows > batchSize ? 0 : remaining - std::min(remaining, rows->cRows);
    return true;
}
