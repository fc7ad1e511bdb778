// A provider with one address book, whose rows are prebuilt: its calls cost next to nothing, so that what is measured
// is the library.
#include <algorithm>
#include <cstdlib>
#include <new>
#include <optional>

#include "bench_book.h"
#include "bench_rows.h"
#include "mapi/entry_points.h"
#include "mapi_objects/unsupported.h"

namespace {

BenchBook book;

ContentsBatch& GetBatch() {
    static ContentsBatch numbers(false);
    static ContentsBatch entries(true);
    return book.contentsStyle == S_OK ? numbers : entries;
}

// Of the containers, the address book itself being the first.
HierarchyRows& GetHierarchy() {
    static std::optional<HierarchyRows> rows;
    if (!rows || rows->Count() != book.containers + 1) rows.emplace(book.containers + 1);
    return *rows;
}

// Columns and places are as they were built.
class PrebuiltTable : public UnsupportedTable {
  public:
    HRESULT STDMETHODCALLTYPE SetColumns(const SPropTagArray*, ULONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE QueryColumns(ULONG, SPropTagArray**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE SeekRow(ULONG, LONG, LONG*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE QueryPosition(ULONG*, ULONG*, ULONG*) override { return MAPI_E_NO_SUPPORT; }
};

// The rows of a contents table, which repeat the batch.
class ContentsTable final : public PrebuiltTable {
  public:
    explicit ContentsTable(ULONG count) : left_(count) {}

    HRESULT STDMETHODCALLTYPE GetRowCount(ULONG, ULONG* count) override {
        *count = left_;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryRows(LONG asked, ULONG, SRowSet** rows) override {
        ++book.calls;
        *rows = GetBatch().Give(std::min(left_, static_cast<ULONG>(asked)));
        left_ -= (*rows)->cRows;
        return S_OK;
    }

  private:
    ULONG left_;
};

// The rows from one container to another.
class HierarchyTable final : public PrebuiltTable {
  public:
    HierarchyTable(ULONG from, ULONG to) : next_(from), end_(to) {}

    HRESULT STDMETHODCALLTYPE GetRowCount(ULONG, ULONG* count) override {
        *count = end_ - next_;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryRows(LONG asked, ULONG, SRowSet** rows) override {
        ++book.calls;
        const ULONG count = std::min(end_ - next_, static_cast<ULONG>(asked));
        *rows = static_cast<SRowSet*>(std::malloc(offsetof(SRowSet, aRow) + count * sizeof(SRow)));
        if (*rows == nullptr) return MAPI_E_NOT_ENOUGH_MEMORY;
        (*rows)->cRows = count;
        std::copy_n(GetHierarchy().Row(next_), count, (*rows)->aRow);
        next_ += count;
        return S_OK;
    }

  private:
    ULONG next_;
    const ULONG end_;
};

// A container, the root, a person or a group: whatever is opened.
class BenchEntry : public UnsupportedContainer {
  public:
    HRESULT STDMETHODCALLTYPE GetProps(const SPropTagArray*, ULONG, ULONG*, SPropValue**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE GetPropList(ULONG, SPropTagArray**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG, IMAPITable**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG, IMAPITable**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG, BYTE*, const IID*, ULONG, ULONG*, IUnknown**) override {
        return MAPI_E_NO_SUPPORT;
    }
};

class Root final : public BenchEntry {
  public:
    HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG, IMAPITable** table) override {
        *table = new HierarchyTable(0, 1);
        return S_OK;
    }
};

class Container final : public BenchEntry {
  public:
    explicit Container(ULONG number) : first_(1ULL * number * book.branching + 1) {}

    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG, IMAPITable** table) override {
        ++book.calls;
        *table = new ContentsTable(book.rows);
        return book.contentsStyle;
    }
    HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG, IMAPITable** table) override {
        ++book.calls;
        const auto bounded = [](unsigned long long place) {
            return static_cast<ULONG>(std::min<unsigned long long>(place, book.containers + 1));
        };
        *table = new HierarchyTable(bounded(first_), bounded(first_ + book.branching));
        return S_OK;
    }

  private:
    const unsigned long long first_;  // of the containers in it, if there are as many
};

// A person or a group.
class Destination final : public BenchEntry {
  public:
    Destination(const BYTE* bytes, ULONG size) : plainName_(GetBatch().PlainName(bytes, size)) {}

    // The plain name where that is asked for; else what a group is expanded by, of which nothing is looked at.
    HRESULT STDMETHODCALLTYPE GetProps(const SPropTagArray* tags, ULONG, ULONG* count, SPropValue** props) override {
        ++book.calls;
        static SPropValue recipient[5];
        *count = tags->cValues;
        *props = tags->cValues == 1 ? plainName_ : recipient;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG, IMAPITable** table) override {
        ++book.calls;
        *table = new ContentsTable(book.members);
        return S_OK;
    }

  private:
    SPropValue* const plainName_;
};

class AddressBook final : public UnsupportedAddressBook {
  public:
    HRESULT STDMETHODCALLTYPE GetProps(const SPropTagArray*, ULONG, ULONG*, SPropValue**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE GetPropList(ULONG, SPropTagArray**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, BYTE* bytes, const IID*, ULONG, ULONG* type,
                                        IUnknown** entry) override {
        ++book.calls;
        if (size == ContentsBatch::identifierSize) {
            *type = MAPI_DISTLIST;
            *entry = new Destination(bytes, size);
            return S_OK;
        }
        *type = MAPI_ABCONT;
        ULONG number = 0;
        if (size == sizeof number) std::memcpy(&number, bytes, sizeof number);
        if (size == 0)
            *entry = new Root;
        else
            *entry = new Container(number);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CompareEntryIDs(ULONG, BYTE*, ULONG, BYTE*, ULONG, ULONG*) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE PrepareRecips(ULONG, const SPropTagArray*, ADRLIST* list) override {
        ++book.calls;
        for (ULONG i = 0; i < list->cEntries; ++i) {
            const SRow& row = GetBatch().Row(i);
            list->aEntries[i] = {0, row.cValues, row.lpProps};
        }
        return S_OK;
    }
};

// The values belong to the provider; a list is one block.
class Support final : public CountedObject<SessionSupport> {
  public:
    HRESULT STDMETHODCALLTYPE Reserved3() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE AllocateAddressList(ULONG size, ADRLIST** list) override {
        *list = static_cast<ADRLIST*>(std::malloc(size));
        return *list != nullptr ? S_OK : MAPI_E_NOT_ENOUGH_MEMORY;
    }
    HRESULT STDMETHODCALLTYPE Reserved5() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE FreeProperties(SPropValue*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Reserved7() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE FreeAddressList(ADRLIST* list) override {
        std::free(list);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Reserved9() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE ExpandRecipients(ULONG, ADRLIST** list) override {
        ++book.calls;
        const size_t size = offsetof(ADRLIST, aEntries) + book.members * sizeof(ADRENTRY);
        auto* const expanded = static_cast<ADRLIST*>(std::calloc(1, size));
        if (expanded == nullptr) return MAPI_E_NOT_ENOUGH_MEMORY;
        expanded->cEntries = book.members;
        std::free(*list);
        *list = expanded;
        return S_OK;
    }
};

}  // namespace

STDAPI VOKOpen(HWND, const char*, ULONG, void*, ULONG, void*, void*, void*, IAddrBook** addressBook,
               SessionSupport** support) {
    *addressBook = new AddressBook;
    *support = new Support;
    return S_OK;
}

STDAPI_(void) VOKFreeProws(SRowSet* rows) {
    if (rows != GetBatch().Give(rows->cRows)) std::free(rows);
}

STDAPI_(BenchBook*) GetBenchBook() {
    return &book;
}

STDAPI_(const SRowSet*) GetBenchBatch() {
    return GetBatch().Give(batchRows);
}
