// The prebuilt rows of the benchmark's provider.
#pragma once

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "model/contents_row.h"
#include "queries/hierarchy_row.h"

inline constexpr ULONG batchRows = 10000;

// Texts and identifiers that property values point to.
class ValueTexts {
  public:
    void SetString(SPropValue& value, ULONG tag, const std::string& text);
    void SetIdentifier(SPropValue& value, const void* bytes, ULONG size);

  private:
    char* Keep(const void* bytes, size_t size);
    std::vector<std::unique_ptr<char[]>> texts_;
};

// Rows of a contents table. 60 % are persons with one fax number, 25 % with two, 10 % without, 5 % are groups; every
// fifth has a comment. As fax entries, every person is one number, which stands in its address.
class ContentsBatch {
  public:
    explicit ContentsBatch(bool areFaxEntries);

    // The first rows of the batch, as one row set; ends the one given before.
    SRowSet* Give(ULONG count);
    const SRow& Row(ULONG row) const { return rows_->aRow[row % batchRows]; }
    // The plain name of the entry with that identifier, as the one value of GetProps.
    SPropValue* PlainName(const BYTE* identifier, ULONG size);

    static constexpr ULONG identifierSize = 16;

  private:
    SPropValue& At(ULONG row, ContentsColumn column);
    void SetString(ULONG row, ContentsColumn column, const std::string& text);
    void Fill(ULONG row, bool isFaxEntry);

    std::unique_ptr<char[]> memory_;
    SRowSet* rows_;
    std::vector<SPropValue> values_;
    std::vector<SPropValue> plainNames_;
    ValueTexts texts_;
};

// Rows of hierarchy tables: container i has the row i and the identifier i, of four bytes.
class HierarchyRows {
  public:
    explicit HierarchyRows(ULONG count);

    size_t Count() const { return rows_.size(); }
    const SRow* Row(ULONG row) const { return &rows_[row]; }

  private:
    std::vector<SPropValue> values_;
    std::vector<SRow> rows_;
    ValueTexts texts_;
};
