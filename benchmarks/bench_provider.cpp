// A provider with one address book, whose contents table repeats one prebuilt batch of rows: its calls cost next to
// nothing, so that what is measured is the library. 60 % of the rows are persons with one fax number, 25 % with two, 10
// % without, 5 % are groups; every fifth person has a comment.
#include "bench_provider.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "model/contents_columns.h"
#include "objects/unsupported.h"
#include "provider/entry_points.h"

namespace {

constexpr ULONG batchRows = 10000;
constexpr ULONG columnCount = static_cast<ULONG>(ContentsColumn::Count);
constexpr size_t identifierSize = 16;

ULONG rowCount = batchRows;

std::string Pad(std::string text, size_t length) {
    text.resize(length, 'x');
    return text;
}

class Batch {
  public:
    Batch() : memory(new char[offsetof(SRowSet, aRow) + batchRows * sizeof(SRow)]), values(batchRows * columnCount) {
        rows = reinterpret_cast<SRowSet*>(memory.get());
        rows->cRows = batchRows;
        for (ULONG i = 0; i < batchRows; ++i) Fill(i);
    }

    // The first rows of the batch, as one row set; ends the one given before.
    SRowSet* Give(ULONG count) {
        rows->cRows = std::min(count, batchRows);
        return rows;
    }

  private:
    SPropValue& At(ULONG row, ContentsColumn column) { return values[row * columnCount + static_cast<ULONG>(column)]; }

    void SetString(ULONG row, ContentsColumn column, const std::string& text) {
        texts.push_back(std::make_unique<char[]>(text.size() + 1));
        std::copy_n(text.c_str(), text.size() + 1, texts.back().get());
        SPropValue& value = At(row, column);
        value.ulPropTag = GetTag(column);
        value.Value.lpszA = texts.back().get();
    }

    void Fill(ULONG row) {
        for (ULONG column = 0; column < columnCount; ++column) {
            SPropValue& value = values[row * columnCount + column];
            value.ulPropTag = CHANGE_PROP_TYPE(ContentsColumns.aulPropTag[column], PT_ERROR);
            value.Value.err = MAPI_E_NOT_FOUND;
        }
        // A missing company, department or comment would ask for a second read: those are empty strings instead.
        for (const ContentsColumn column :
             {ContentsColumn::CompanyName, ContentsColumn::DepartmentName, ContentsColumn::Comment})
            SetString(row, column, "");
        const std::string number = std::to_string(row);
        const ULONG percent = row % 100;
        const bool group = percent >= 95;
        SetString(row, ContentsColumn::DisplayName, Pad("Name " + number, 18));
        SPropValue& type = At(row, ContentsColumn::ObjectType);
        type.ulPropTag = PR_OBJECT_TYPE;
        type.Value.l = static_cast<LONG>(group ? MAPI_DISTLIST : MAPI_MAILUSER);
        SetString(row, ContentsColumn::AddrType, "SMTP");
        texts.push_back(std::make_unique<char[]>(identifierSize));
        std::copy_n(Pad(number, identifierSize).data(), identifierSize, texts.back().get());
        SPropValue& identifier = At(row, ContentsColumn::EntryId);
        identifier.ulPropTag = PR_ENTRYID;
        identifier.Value.bin = {identifierSize, reinterpret_cast<BYTE*>(texts.back().get())};
        if (row % 5 == 0) SetString(row, ContentsColumn::Comment, Pad("Comment", 40));
        if (group) {
            Attach(row);
            return;
        }
        SetString(row, ContentsColumn::CompanyName, Pad("Company " + number, 20));
        SetString(row, ContentsColumn::DepartmentName, Pad("Dept " + number, 12));
        if (percent < 85) SetString(row, ContentsColumn::BusinessFaxNumber, Pad("+1 555 01 " + number, 14));
        if (percent < 25) SetString(row, ContentsColumn::HomeFaxNumber, Pad("+1 555 02 " + number, 14));
        Attach(row);
    }

    void Attach(ULONG row) { rows->aRow[row] = {0, columnCount, &values[row * columnCount]}; }

    std::unique_ptr<char[]> memory;
    std::vector<SPropValue> values;
    std::vector<std::unique_ptr<char[]>> texts;
    SRowSet* rows;
};

Batch& GetBatch() {
    static Batch batch;
    return batch;
}

// The rows of the address book, or the one row of the root's hierarchy.
class Table : public UnsupportedTable {
  public:
    explicit Table(ULONG count) : left(count) {}

    HRESULT STDMETHODCALLTYPE SetColumns(const SPropTagArray*, ULONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE QueryColumns(ULONG, SPropTagArray**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE SeekRow(ULONG, LONG, LONG*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE QueryPosition(ULONG*, ULONG*, ULONG*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE GetRowCount(ULONG, ULONG* count) override {
        *count = left;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryRows(LONG asked, ULONG, SRowSet** rows) override {
        *rows = GetBatch().Give(std::min(left, static_cast<ULONG>(asked)));
        left -= (*rows)->cRows;
        return S_OK;
    }

  private:
    ULONG left;
};

// The root and the address book alike. A hierarchy row has its name and identifier in the first columns, as the rows of
// the contents table do.
class Container : public UnsupportedContainer {
  public:
    HRESULT STDMETHODCALLTYPE GetProps(const SPropTagArray*, ULONG, ULONG*, SPropValue**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE GetPropList(ULONG, SPropTagArray**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG, IMAPITable** table) override {
        *table = new Table(rowCount);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG, IMAPITable** table) override {
        *table = new Table(1);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG, BYTE*, const IID*, ULONG, ULONG*, IUnknown**) override {
        return MAPI_E_NO_SUPPORT;
    }
};

class AddressBook : public UnsupportedAddressBook {
  public:
    HRESULT STDMETHODCALLTYPE GetProps(const SPropTagArray*, ULONG, ULONG*, SPropValue**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE GetPropList(ULONG, SPropTagArray**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG, BYTE*, const IID*, ULONG, ULONG* type, IUnknown** entry) override {
        *type = MAPI_ABCONT;
        *entry = new Container;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CompareEntryIDs(ULONG, BYTE*, ULONG, BYTE*, ULONG, ULONG*) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE PrepareRecips(ULONG, const SPropTagArray*, ADRLIST*) override {
        return MAPI_E_NO_SUPPORT;
    }
};

class Support : public CountedObject<SessionSupport> {
  public:
    HRESULT STDMETHODCALLTYPE Reserved3() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE AllocateAddressList(ULONG, ADRLIST**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Reserved5() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE FreeProperties(SPropValue*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Reserved7() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE FreeAddressList(ADRLIST*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Reserved9() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE ExpandRecipients(ULONG, ADRLIST**) override { return MAPI_E_NO_SUPPORT; }
};

}  // namespace

STDAPI VOKOpen(HWND, const char*, ULONG, void*, ULONG, void*, void*, void*, IAddrBook** addressBook,
               SessionSupport** support) {
    *addressBook = new AddressBook;
    *support = new Support;
    return S_OK;
}

// The rows belong to the provider.
STDAPI_(void) VOKFreeProws(SRowSet*) {}

STDAPI_(void) SetBenchRows(ULONG count) {
    rowCount = count;
}

STDAPI_(const SRowSet*) GetBenchBatch() {
    return GetBatch().Give(batchRows);
}
