// The cursor over a row source. A batch of rows is one buffer: the row set, then each row's values.
#include "mapi_objects/table.h"

#include <algorithm>
#include <cstdint>

namespace {

// Beside BOOKMARK_BEGINNING.
constexpr ULONG BOOKMARK_CURRENT = 1;
constexpr ULONG BOOKMARK_END = 2;

class Table final : public UnsupportedTable {
  public:
    explicit Table(std::unique_ptr<const RowSource> rows) : rows_(std::move(rows)), columns_(rows_->DefaultColumns()) {}

    HRESULT STDMETHODCALLTYPE SetColumns(const SPropTagArray* tags, ULONG) override {
        return Guarded([&] {
            columns_ = ReadTags(tags);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE QueryColumns(ULONG, SPropTagArray** tags) override {
        return Guarded([&] {
            Require(tags != nullptr);
            *tags = MakeTagArray(columns_).release();
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE GetRowCount(ULONG, ULONG* count) override {
        if (count == nullptr) return MAPI_E_INVALID_PARAMETER;
        *count = static_cast<ULONG>(rows_->Count());
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE SeekRow(ULONG origin, LONG rowCount, LONG* rowsSought) override {
        if (origin > BOOKMARK_END) return MAPI_E_INVALID_PARAMETER;
        const auto count = static_cast<std::int64_t>(rows_->Count());
        const std::int64_t start = origin == BOOKMARK_BEGINNING ? 0
                                   : origin == BOOKMARK_CURRENT ? static_cast<std::int64_t>(position_)
                                                                : count;
        const std::int64_t reached = std::clamp<std::int64_t>(start + rowCount, 0, count);
        position_ = static_cast<size_t>(reached);
        if (rowsSought != nullptr) *rowsSought = static_cast<LONG>(reached - start);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE QueryPosition(ULONG* row, ULONG* numerator, ULONG* denominator) override {
        if (row == nullptr || numerator == nullptr || denominator == nullptr) return MAPI_E_INVALID_PARAMETER;
        *row = *numerator = static_cast<ULONG>(position_);
        *denominator = static_cast<ULONG>(std::max<size_t>(rows_->Count(), 1));
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE QueryRows(LONG rowCount, ULONG, SRowSet** rowSet) override {
        return Guarded([&] {
            Require(rowSet != nullptr);
            *rowSet = nullptr;
            // Reading backwards is what a negative number asks for.
            Require(rowCount >= 0, MAPI_E_NO_SUPPORT);
            const size_t asked = std::min(static_cast<size_t>(rowCount), rows_->Count() - position_);
            *rowSet = ReadBatch(std::min(asked, std::max<size_t>(mostBatchBytes / BytesPerRow(), 1)));
            position_ += (*rowSet)->cRows;
            return S_OK;
        });
    }

  private:
    bool Answers(REFIID id) const override { return IsOneOf(id, {mapiTableInterface}); }

    // As MAPI allows, a batch may hold fewer rows than asked for: one that stays in the processor's cache is written
    // and read several times faster than ten thousand rows at once.
    static constexpr size_t mostBatchBytes = size_t{256} * 1024;

    size_t BytesPerRow() const {
        return sizeof(SRow) + columns_.size() * sizeof(SPropValue) + rows_->ExtraBytesPerRow();
    }

    SRowSet* ReadBatch(size_t count) const {
        ResultBuffer buffer(sizeof(SRowSet) + count * BytesPerRow());
        auto* const rowSet = static_cast<SRowSet*>(
            static_cast<void*>(buffer.Take<std::byte>(offsetof(SRowSet, aRow) + count * sizeof(SRow))));
        rowSet->cRows = static_cast<ULONG>(count);
        for (size_t i = 0; i < count; ++i) {
            auto* const values = buffer.Take<SPropValue>(columns_.size());
            rowSet->aRow[i] = {0, static_cast<ULONG>(columns_.size()), values};
            rows_->Write(position_ + i, columns_, values, buffer);
        }
        buffer.KeepAlive(rows_->Owner());
        return static_cast<SRowSet*>(buffer.Detach());
    }

    std::unique_ptr<const RowSource> rows_;
    std::vector<ULONG> columns_;
    size_t position_ = 0;
};

}  // namespace

Owned<IMAPITable> MakeTable(std::unique_ptr<const RowSource> rows) {
    return Owned<IMAPITable>(new Table(std::move(rows)));
}
