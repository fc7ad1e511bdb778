// TableCursor: fetching and freeing of row sets.
#include "provider/table_cursor.h"

#include <algorithm>

TableCursor::TableCursor(Held<IMAPITable> heldTable, const SPropTagArray* columns) : table_(std::move(heldTable)) {
    ULONG count = 0;
    // A row set that cannot be freed is not asked for.
    if (!table_ || providerTable.VOKFreeProws == nullptr || FAILED(table_->SetColumns(columns, 0)) ||
        FAILED(table_->SeekRow(BOOKMARK_BEGINNING, 0, nullptr)) || FAILED(table_->GetRowCount(0, &count)))
        return;
    batchSize_ = std::min(count, largestBatch);
    remaining_ = std::min(count, mostRows);
}

std::optional<PropertyValues> TableCursor::Next() {
    if (rows_ && nextRow_ == rows_->cRows) rows_.Free();
    if (!rows_ && !FetchBatch()) return std::nullopt;
    return PropertyValues(rows_->aRow[nextRow_++]);
}

// The rows that came are taken off the count, however many were asked for; the table ends when none are left of it.
bool TableCursor::FetchBatch() {
    if (remaining_ == 0) return false;
    const HRESULT result = table_->QueryRows(static_cast<LONG>(batchSize_), 0, rows_.Receive());
    if (FAILED(result) || !rows_ || rows_->cRows == 0) {
        remaining_ = 0;
        rows_.Free();
        return false;
    }
    nextRow_ = 0;
    remaining_ -= std::min(remaining_, rows_->cRows);
    return true;
}
