// The calls in the order in which the library makes them.
#include "provider_client.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "card_text.h"

namespace fs = std::filesystem;

namespace {

void Check(HRESULT result) {
    if (FAILED(result)) throw CallFailed{result};
}

template <typename Function>
Function* Resolve(HMODULE module, const char* name) {
    const FARPROC address = GetProcAddress(module, name);
    if (address == nullptr) throw std::runtime_error(std::string("no export ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

fs::path ProgramFolder() {
    char path[1024];
    GetModuleFileNameA(nullptr, path, sizeof path);
    return fs::path(path).parent_path();
}

Values ReadValues(const SPropValue* values, ULONG count) {
    Values read;
    for (const SPropValue* value = values; value != values + count; ++value) {
        switch (PROP_TYPE(value->ulPropTag)) {
            case PT_STRING8:
                read[value->ulPropTag] = value->Value.lpszA;
                break;
            case PT_LONG:
                read[value->ulPropTag] = std::to_string(value->Value.l);
                break;
            case PT_BINARY:
                read[value->ulPropTag].assign(reinterpret_cast<char*>(value->Value.bin.lpb), value->Value.bin.cb);
                break;
            default:
                break;
        }
    }
    return read;
}

BYTE* BytesOf(std::string& entryId) {
    return entryId.empty() ? nullptr : reinterpret_cast<BYTE*>(entryId.data());
}

}  // namespace

ProviderLibrary::ProviderLibrary()
    : module_(LoadLibraryA((ProgramFolder().parent_path() / "bin" / "QDXL7RA.DLL").string().c_str())) {
    if (module_ == nullptr) throw std::runtime_error("QDXL7RA.DLL cannot be loaded");
    Open = Resolve<VOKOpenFunction>(module_, "VOKOpen");
    AdminProfiles = Resolve<VOKAdminProfilesFunction>(module_, "VOKAdminProfiles");
    AllocateBuffer = Resolve<VOKAllocateBufferFunction>(module_, "VOKAllocateBuffer");
    AllocateMore = Resolve<VOKAllocateMoreFunction>(module_, "VOKAllocateMore");
    FreeBuffer = Resolve<VOKFreeBufferFunction>(module_, "VOKFreeBuffer");
    FreeProws = Resolve<VOKFreeProwsFunction>(module_, "VOKFreeProws");
    SetResourceDllHandle = Resolve<SetResourceDllHandleFunction>(module_, "SetResourceDllHandle");
    Diagnose = Resolve<VOKDiagnoseFunction>(module_, "VOKDiagnose");
    CountUnread = Resolve<VOKCountUnreadFunction>(module_, "VOKCountUnread");
}

ProviderLibrary::~ProviderLibrary() {
    FreeLibrary(module_);
}

Caller::Caller(const char* profile) {
    IAddrBook* addressBook = nullptr;
    SessionSupport* support = nullptr;
    Check(library_->Open(nullptr, profile, 0, nullptr, 0, nullptr, nullptr, nullptr, &addressBook, &support));
    addressBook_.reset(addressBook);
    support_.reset(support);
}

Held<IUnknown> Caller::OpenEntry(const std::string& entryId, ULONG* type) {
    std::string copy = entryId;
    IUnknown* object = nullptr;
    ULONG ignored = 0;
    Check(addressBook_->OpenEntry(static_cast<ULONG>(copy.size()), BytesOf(copy), nullptr, 0,
                                  type != nullptr ? type : &ignored, &object));
    return Held<IUnknown>(object);
}

Held<IABContainer> Caller::Container(const std::string& entryId) {
    return Held<IABContainer>(ContainerOf(OpenEntry(entryId).release()));
}

std::vector<Values> Caller::ReadTable(IMAPITable& table, const SPropTagArray* columns) {
    Check(table.SetColumns(columns, 0));
    Check(table.SeekRow(BOOKMARK_BEGINNING, 0, nullptr));
    ULONG count = 0;
    Check(table.GetRowCount(0, &count));
    std::vector<Values> rows;
    while (rows.size() < count) {
        SRowSet* rowSet = nullptr;
        Check(table.QueryRows(static_cast<LONG>(count), 0, &rowSet));
        for (ULONG i = 0; i < rowSet->cRows; ++i)
            rows.push_back(ReadValues(rowSet->aRow[i].lpProps, rowSet->aRow[i].cValues));
        const bool ended = rowSet->cRows == 0;
        library_->FreeProws(rowSet);
        if (ended) break;
    }
    return rows;
}

std::vector<Values> Caller::ReadHierarchy(IABContainer& container) {
    static constexpr PropTagArray<6> columns = {.aulPropTag = {PR_DISPLAY_NAME, PR_ENTRYID, PR_OBJECT_TYPE,
                                                               PR_DISPLAY_TYPE, PR_SERVICE_NAME,
                                                               PR_VOK_PROVIDER_VALUE}};
    IMAPITable* table = nullptr;
    Check(container.GetHierarchyTable(0, &table));
    const Held<IMAPITable> held(table);
    return ReadTable(*table, columns.Get());
}

std::vector<Values> Caller::ListContents(const std::string& entryId) {
    const Held<IABContainer> container = Container(entryId);
    IMAPITable* table = nullptr;
    Check(container->GetContentsTable(0, &table));
    const Held<IMAPITable> held(table);
    return ReadTable(*table);
}

HRESULT Caller::Style(const std::string& entryId) {
    const Held<IABContainer> container = Container(entryId);
    IMAPITable* table = nullptr;
    const HRESULT result = container->GetContentsTable(0, &table);
    Check(result);
    const Held<IMAPITable> held(table);
    return result;
}

std::string Caller::BookId(const std::string& name) {
    for (Values& book : ListBooks())
        if (name.empty() || book[PR_DISPLAY_NAME] == name) return book[PR_ENTRYID];
    throw std::runtime_error("no address book " + name);
}

std::vector<Values> Caller::ListBook(const std::string& name) {
    return ListContents(BookId(name));
}

Values Caller::GetProps(const std::string& entryId, const SPropTagArray* tags) {
    const Held<IUnknown> entry = OpenEntry(entryId);
    ULONG count = 0;
    SPropValue* values = nullptr;
    Check(static_cast<IMAPIProp*>(entry.get())->GetProps(tags, 0, &count, &values));
    Values read = ReadValues(values, count);
    Check(support_->FreeProperties(values));
    return read;
}

std::vector<Values> Caller::Expand(const std::string& entryId) {
    static constexpr PropTagArray<5> groupTags = {
        .aulPropTag = {PR_ENTRYID, PR_RECIPIENT_TYPE, PR_DISPLAY_NAME, PR_ADDRTYPE, PR_OBJECT_TYPE}};
    ADRLIST* list = nullptr;
    Check(support_->AllocateAddressList(sizeof(ADRLIST), &list));
    list->cEntries = 0;
    const Held<IUnknown> group = OpenEntry(entryId);
    Check(static_cast<IMAPIProp*>(group.get())
              ->GetProps(groupTags.Get(), 0, &list->aEntries[0].cValues, &list->aEntries[0].rgPropVals));
    list->cEntries = 1;
    Check(support_->ExpandRecipients(0, &list));
    Check(addressBook_->PrepareRecips(0, testColumns.Get(), list));
    std::vector<Values> members;
    for (ULONG i = 0; i < list->cEntries; ++i)
        members.push_back(ReadValues(list->aEntries[i].rgPropVals, list->aEntries[i].cValues));
    Check(support_->FreeAddressList(list));
    return members;
}

ContactsFolderForTest::ContactsFolderForTest() {
    static int number = 0;
    folder_ = ProgramFolder() / ("provider-test-" + std::to_string(++number));
    fs::remove_all(folder_);
    fs::create_directories(Contacts());
    SetVariable("FAXBOOK_CONTACTS", Contacts().string());
    SetVariable("FAXBOOK_PROFILES", Profiles().string());
    SetVariable("FAXBOOK_DIAGNOSTICS", (folder_ / "diagnostics").string());
}

ContactsFolderForTest::~ContactsFolderForTest() {
    std::error_code error;
    fs::remove_all(folder_, error);
}

void ContactsFolderForTest::Write(const std::string& file, const std::string& text) {
    const fs::path path = Contacts() / fs::path(std::u8string(file.begin(), file.end()));
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string ContactsFolderForTest::Diagnostics() const {
    return ReadText(folder_ / "diagnostics");
}

std::string ReadText(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}
