// TableCursor: reads the rows of any provider table once, from its beginning, in batches. It holds one row set at a
// time and frees it before it asks for the next.
#pragma once

#include <optional>

#include "provider/holders.h"
#include "provider/property_values.h"

class TableCursor {
  public:
    // The most rows that are read of one table. No address book comes near it; a table that never ends does.
    static constexpr ULONG mostRows = 10'000'000;
    // The most rows asked for at once.
    static constexpr ULONG largestBatch = 10'000;

    // An empty cursor.
    TableCursor() = default;

    // Takes the table over, sets the columns, goes to the beginning and asks for the number of rows. If one of these
    // fails there are no rows.
    TableCursor(Held<IMAPITable> table, const SPropTagArray* columns);

    // The next row, or nothing at the end or when the provider cannot deliver more. The row is valid until the next
    // call.
    std::optional<PropertyValues> Next();

  private:
    bool FetchBatch();

    Held<IMAPITable> table_;
    HeldRows rows_;
    ULONG nextRow_ = 0;    // in rows
    ULONG batchSize_ = 0;  // asked for every time; 0: the cursor is empty
    ULONG remaining_ = 0;  // rows that the table still has, by its count
};
