// Building the rows, once.
#include "bench_rows.h"

#include <algorithm>
#include <cstdlib>

#include "mapi/result_codes.h"

namespace {

constexpr ULONG contentsColumns = ContentsColumns.cValues;
constexpr ULONG hierarchyColumns = HierarchyColumns.cValues;

std::string Pad(std::string text, size_t length) {
    text.resize(length, 'x');
    return text;
}

void MarkMissing(SPropValue* values, const ULONG* tags, ULONG count) {
    for (ULONG column = 0; column < count; ++column) {
        values[column].ulPropTag = CHANGE_PROP_TYPE(tags[column], PT_ERROR);
        values[column].Value.err = MAPI_E_NOT_FOUND;
    }
}

}  // namespace

char* ValueTexts::Keep(const void* bytes, size_t size) {
    texts_.push_back(std::make_unique<char[]>(size));
    std::memcpy(texts_.back().get(), bytes, size);
    return texts_.back().get();
}

void ValueTexts::SetString(SPropValue& value, ULONG tag, const std::string& text) {
    value.ulPropTag = tag;
    value.Value.lpszA = Keep(text.c_str(), text.size() + 1);
}

void ValueTexts::SetIdentifier(SPropValue& value, const void* bytes, ULONG size) {
    value.ulPropTag = PR_ENTRYID;
    value.Value.bin = {size, reinterpret_cast<BYTE*>(Keep(bytes, size))};
}

ContentsBatch::ContentsBatch(bool areFaxEntries)
    : memory_(new char[offsetof(SRowSet, aRow) + batchRows * sizeof(SRow)]),
      rows_(reinterpret_cast<SRowSet*>(memory_.get())),
      values_(size_t{batchRows} * contentsColumns),
      plainNames_(batchRows) {
    rows_->cRows = batchRows;
    for (ULONG row = 0; row < batchRows; ++row) Fill(row, areFaxEntries);
}

SRowSet* ContentsBatch::Give(ULONG count) {
    rows_->cRows = std::min(count, batchRows);
    return rows_;
}

SPropValue* ContentsBatch::PlainName(const BYTE* identifier, ULONG size) {
    const std::string number(reinterpret_cast<const char*>(identifier), size);
    return &plainNames_[std::strtoul(number.c_str(), nullptr, 10) % batchRows];
}

SPropValue& ContentsBatch::At(ULONG row, ContentsColumn column) {
    return values_[size_t{row} * contentsColumns + static_cast<ULONG>(column)];
}

void ContentsBatch::SetString(ULONG row, ContentsColumn column, const std::string& text) {
    texts_.SetString(At(row, column), GetTag(column), text);
}

void ContentsBatch::Fill(ULONG row, bool isFaxEntry) {
    MarkMissing(&At(row, ContentsColumn::DisplayName), ContentsColumns.aulPropTag, contentsColumns);
    rows_->aRow[row] = {0, contentsColumns, &At(row, ContentsColumn::DisplayName)};
    // A missing company, department or comment would ask for a second read: those are empty strings instead.
    for (const ContentsColumn column :
         {ContentsColumn::CompanyName, ContentsColumn::DepartmentName, ContentsColumn::Comment})
        SetString(row, column, "");
    const std::string number = std::to_string(row);
    const std::string name = Pad("Name " + number, 18);
    const ULONG percent = row % 100;
    const bool isGroup = percent >= 95;
    SetString(row, ContentsColumn::DisplayName, name);
    SPropValue& type = At(row, ContentsColumn::ObjectType);
    type.ulPropTag = PR_OBJECT_TYPE;
    type.Value.l = static_cast<LONG>(isGroup ? MAPI_DISTLIST : MAPI_MAILUSER);
    SetString(row, ContentsColumn::AddrType, isFaxEntry ? "FAX" : "SMTP");
    texts_.SetIdentifier(At(row, ContentsColumn::EntryId), Pad(number, identifierSize).data(), identifierSize);
    texts_.SetString(plainNames_[row], PR_ORIGINAL_DISPLAY_NAME, name);
    if (row % 5 == 0) SetString(row, ContentsColumn::Comment, Pad("Comment", 40));
    if (isGroup) return;
    SetString(row, ContentsColumn::CompanyName, Pad("Company " + number, 20));
    SetString(row, ContentsColumn::DepartmentName, Pad("Dept " + number, 12));
    const std::string faxNumber = Pad("+1 555 01 " + number, 14);
    if (isFaxEntry) {
        SetString(row, ContentsColumn::DisplayName, name + " (Business Fax)");
        SetString(row, ContentsColumn::EmailAddress, name + '@' + faxNumber);
        return;
    }
    if (percent < 85) SetString(row, ContentsColumn::BusinessFaxNumber, faxNumber);
    if (percent < 25) SetString(row, ContentsColumn::HomeFaxNumber, Pad("+1 555 02 " + number, 14));
}

HierarchyRows::HierarchyRows(ULONG count) : values_(size_t{count} * hierarchyColumns), rows_(count) {
    for (ULONG row = 0; row < count; ++row) {
        SPropValue* const first = &values_[size_t{row} * hierarchyColumns];
        MarkMissing(first, HierarchyColumns.aulPropTag, hierarchyColumns);
        texts_.SetString(first[static_cast<ULONG>(HierarchyColumn::DisplayName)], PR_DISPLAY_NAME,
                         Pad("Container " + std::to_string(row), 18));
        texts_.SetIdentifier(first[static_cast<ULONG>(HierarchyColumn::EntryId)], &row, sizeof row);
        rows_[row] = {0, hierarchyColumns, first};
    }
}
