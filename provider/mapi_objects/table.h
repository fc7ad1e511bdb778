// A table that reads its rows from a source, forward, with any set of columns.
#pragma once

#include <memory>

#include "mapi_objects/owned.h"
#include "mapi_objects/property_source.h"

class RowSource {
  public:
    virtual ~RowSource() = default;
    virtual size_t Count() const = 0;
    // The values of one row, for each tag in order.
    virtual void Write(size_t row, const std::vector<ULONG>& tags, SPropValue* values, ResultBuffer& buffer) const = 0;
    // What the text of any row points into.
    virtual std::shared_ptr<const void> Owner() const = 0;
    // Bytes of a row beside its values and the text that it points to.
    virtual size_t ExtraBytesPerRow() const = 0;
    // Until SetColumns says otherwise.
    virtual std::vector<ULONG> DefaultColumns() const = 0;
};

Owned<IMAPITable> MakeTable(std::unique_ptr<const RowSource> rows);
