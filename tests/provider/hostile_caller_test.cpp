// Callers that pass what they should not, keep what they should not, or ask for everything.
#include <gtest/gtest.h>

#include <cstring>

#include "card_text.h"
#include "mapi/interface_ids.h"
#include "mapi/result_codes.h"
#include "provider_client.h"

namespace {

class HostileCaller : public testing::Test {
  protected:
    HostileCaller() {
        contacts_.Write("a.vcf", CardOf({"FN:Ann", "TEL;TYPE=FAX:1"}) + CardOf({"FN:Ben", "NOTE:n"}));
        caller_ = std::make_unique<Caller>();
    }

    Held<IMAPITable> Contents() {
        const Held<IUnknown> container = caller_->OpenEntry(caller_->BookId());
        IMAPITable* table = nullptr;
        EXPECT_EQ(caller_->ContainerOf(container.get())->GetContentsTable(0, &table), S_OK);
        return Held<IMAPITable>(table);
    }
    HRESULT Open(std::string id, const IID* interfaceId = nullptr) {
        IUnknown* object = nullptr;
        const HRESULT result = caller_->AddressBook().OpenEntry(
            static_cast<ULONG>(id.size()), reinterpret_cast<BYTE*>(id.data()), interfaceId, 0, nullptr, &object);
        if (object != nullptr) object->Release();
        EXPECT_EQ(object != nullptr, SUCCEEDED(result));
        return result;
    }

    ContactsFolderForTest contacts_;
    std::unique_ptr<Caller> caller_;
};

TEST_F(HostileCaller, NullArguments) {
    IAddrBook* book = nullptr;
    SessionSupport* support = nullptr;
    ProviderLibrary& library = caller_->Library();
    const auto open = [&](IAddrBook** first, SessionSupport** second) {
        return library.Open(nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, first, second);
    };
    EXPECT_EQ(open(nullptr, &support), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(open(&book, nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(library.AdminProfiles(VOK_ADMIN_CREATE, 0, nullptr, 0, nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(library.AllocateBuffer(8, nullptr), MAPI_E_INVALID_PARAMETER);
    library.FreeProws(nullptr);
    EXPECT_EQ(library.FreeBuffer(nullptr), 0U);

    IAddrBook& addressBook = caller_->AddressBook();
    EXPECT_EQ(addressBook.OpenEntry(0, nullptr, nullptr, 0, nullptr, nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(addressBook.PrepareRecips(0, testColumns.Get(), nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(addressBook.QueryInterface(unknownInterface, nullptr), MAPI_E_INVALID_PARAMETER);
    ULONG count = 0;
    SPropValue* values = nullptr;
    EXPECT_EQ(addressBook.GetProps(testColumns.Get(), 0, nullptr, &values), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(addressBook.GetProps(testColumns.Get(), MAPI_UNICODE, &count, &values), MAPI_E_BAD_CHARWIDTH);

    SessionSupport& calls = caller_->Support();
    EXPECT_EQ(calls.AllocateAddressList(24, nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(calls.FreeProperties(nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(calls.FreeAddressList(nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(calls.ExpandRecipients(0, nullptr), MAPI_E_INVALID_PARAMETER);

    const Held<IMAPITable> table = Contents();
    EXPECT_EQ(table->SetColumns(nullptr, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(table->GetRowCount(0, nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(table->QueryRows(1, 0, nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(table->SeekRow(99, 0, nullptr), MAPI_E_INVALID_PARAMETER);
}

TEST_F(HostileCaller, EntryIdentifiersThatAreNone) {
    const std::string person = caller_->ListBook().at(0).at(PR_ENTRYID);
    ASSERT_EQ(Open(person), S_OK);
    EXPECT_EQ(Open(person, &abContainerInterface), MAPI_E_INTERFACE_NOT_SUPPORTED);
    EXPECT_EQ(Open(person, &mailUserInterface), S_OK);
    EXPECT_EQ(Open(person.substr(1)), MAPI_E_INVALID_ENTRYID);
    EXPECT_EQ(Open(person + "x"), MAPI_E_INVALID_ENTRYID);
    EXPECT_EQ(Open(std::string(person.size(), '\xFF')), MAPI_E_INVALID_ENTRYID);
    // A size without bytes, and bytes without a size.
    IUnknown* object = nullptr;
    BYTE byte = 0;
    EXPECT_EQ(caller_->AddressBook().OpenEntry(56, nullptr, nullptr, 0, nullptr, &object), MAPI_E_INVALID_ENTRYID);
    EXPECT_EQ(caller_->AddressBook().OpenEntry(0, &byte, nullptr, 0, nullptr, &object), MAPI_E_INVALID_ENTRYID);
    // Every byte damaged in turn, at an odd address: refused, not found, or an entry that exists.
    for (size_t i = 0; i < person.size(); ++i) {
        for (const int flip : {0x01, 0x02, 0x04, 0x80}) {
            std::string damaged = "x" + person;
            damaged[i + 1] = static_cast<char>(damaged[i + 1] ^ flip);
            object = nullptr;
            const HRESULT result = caller_->AddressBook().OpenEntry(static_cast<ULONG>(person.size()),
                                                                    reinterpret_cast<BYTE*>(damaged.data() + 1),
                                                                    nullptr, 0, nullptr, &object);
            EXPECT_EQ(object != nullptr, SUCCEEDED(result));
            if (object != nullptr) object->Release();
        }
    }
    // Another session's identifiers are nobody's here.
    Caller other;
    EXPECT_EQ(Open(other.ListBook().at(0).at(PR_ENTRYID)), MAPI_E_INVALID_ENTRYID);
}

TEST_F(HostileCaller, TablesHonourAnyColumnsAndPositions) {
    const Held<IMAPITable> table = Contents();
    static constexpr PropTagArray<5> columns = {
        .aulPropTag = {0x66660102, PR_DISPLAY_NAME, 0x3001001F, 0x30010000, PR_DISPLAY_NAME}};
    ASSERT_EQ(table->SetColumns(columns.Get(), 0), S_OK);
    PropTagArray<1> tooMany = {.cValues = 0xFFFFFFFF, .aulPropTag = {PR_DISPLAY_NAME}};
    EXPECT_EQ(table->SetColumns(tooMany.Get(), 0), MAPI_E_INVALID_PARAMETER);
    LONG sought = 0;
    ASSERT_EQ(table->SeekRow(2, -1, &sought), S_OK);
    EXPECT_EQ(sought, -1);
    ULONG row = 0, numerator = 0, denominator = 0;
    ASSERT_EQ(table->QueryPosition(&row, &numerator, &denominator), S_OK);
    EXPECT_EQ(row, 1U);
    EXPECT_EQ(denominator, 2U);
    SRowSet* rows = nullptr;
    ASSERT_EQ(table->QueryRows(0x7FFFFFFF, 0, &rows), S_OK);
    ASSERT_EQ(rows->cRows, 1U);
    const SPropValue* const values = rows->aRow[0].lpProps;
    ASSERT_EQ(rows->aRow[0].cValues, 5U);
    EXPECT_EQ(values[0].ulPropTag, 0x6666000AU);
    EXPECT_EQ(values[0].Value.err, MAPI_E_NOT_FOUND);
    EXPECT_EQ(values[2].ulPropTag, 0x3001000AU);
    EXPECT_EQ(values[3].ulPropTag, PR_DISPLAY_NAME);
    EXPECT_STREQ(values[4].Value.lpszA, "Ben");
    caller_->Library().FreeProws(rows);
    ASSERT_EQ(table->QueryRows(1, 0, &rows), S_OK);
    EXPECT_EQ(rows->cRows, 0U);
    caller_->Library().FreeProws(rows);
    EXPECT_EQ(table->QueryRows(-1, 0, &rows), MAPI_E_NO_SUPPORT);
    ASSERT_EQ(table->SeekRow(BOOKMARK_BEGINNING, LONG{-2147483647} - 1, &sought), S_OK);
    EXPECT_EQ(sought, 0);
}

TEST_F(HostileCaller, EverythingOutlivesEverythingElse) {
    const ProviderLibrary library;  // stays loaded when the session has ended
    const std::string person = caller_->ListBook().at(1).at(PR_ENTRYID);
    const Held<IUnknown> entry = caller_->OpenEntry(person);
    Held<IMAPITable> table = Contents();
    ASSERT_EQ(table->SetColumns(testColumns.Get(), 0), S_OK);
    SRowSet* rows = nullptr;
    ASSERT_EQ(table->QueryRows(9, 0, &rows), S_OK);
    ULONG count = 0;
    SPropValue* values = nullptr;
    auto* const properties = static_cast<IMAPIProp*>(entry.get());
    ASSERT_GE(properties->GetProps(nullptr, 0, &count, &values), 0);
    // The file changes, so that the session itself holds other cards by the end of the listing, and then ends.
    contacts_.Write("a.vcf", CardOf({"FN:Somebody else"}));
    caller_->ListBook();
    table.reset();
    caller_.reset();
    EXPECT_STREQ(rows->aRow[1].lpProps[0].Value.lpszA, "Ben");
    EXPECT_STREQ(rows->aRow[1].lpProps[7].Value.lpszA, "n");
    library.FreeProws(rows);
    library.FreeProws(rows);  // not a row set any more
    EXPECT_EQ(library.FreeBuffer(values), 0U);
    EXPECT_EQ(library.FreeBuffer(values), static_cast<ULONG>(MAPI_E_INVALID_PARAMETER));
    ASSERT_GE(properties->GetProps(nullptr, 0, &count, &values), 0);
    EXPECT_STREQ(values[0].Value.lpszA, "Ben");
    library.FreeBuffer(values);
}

TEST_F(HostileCaller, MemoryIsChainedAndChecked) {
    ProviderLibrary& library = caller_->Library();
    void* buffer = nullptr;
    void* more = nullptr;
    ASSERT_EQ(library.AllocateBuffer(0, &buffer), S_OK);
    ASSERT_EQ(library.AllocateMore(100, buffer, &more), S_OK);
    std::memset(more, 1, 100);
    void* none = &buffer;
    EXPECT_EQ(library.AllocateMore(8, more, &none), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(library.FreeBuffer(more), static_cast<ULONG>(MAPI_E_INVALID_PARAMETER));
    EXPECT_EQ(library.FreeBuffer(buffer), 0U);
    // A list whose count is larger than its memory.
    ADRLIST* list = nullptr;
    ASSERT_EQ(caller_->Support().AllocateAddressList(sizeof(ADRLIST), &list), S_OK);
    list->cEntries = 2;
    EXPECT_EQ(caller_->AddressBook().PrepareRecips(0, testColumns.Get(), list), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(caller_->Support().ExpandRecipients(0, &list), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(caller_->Support().FreeAddressList(list), MAPI_E_INVALID_PARAMETER);
    list->cEntries = 0;
    EXPECT_EQ(caller_->Support().FreeAddressList(list), S_OK);
    EXPECT_EQ(caller_->Support().AllocateAddressList(3, &list), MAPI_E_INVALID_PARAMETER);
}

TEST_F(HostileCaller, WhatIsNotOfferedSaysSo) {
    IAddrBook& addressBook = caller_->AddressBook();
    EXPECT_EQ(addressBook.SaveChanges(0), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(addressBook.SetSearchPath(0, nullptr), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(caller_->Support().Reserved9(), MAPI_E_NO_SUPPORT);
    const Held<IUnknown> root = caller_->OpenEntry({});
    IABContainer* const container = caller_->ContainerOf(root.get());
    IMAPITable* table = nullptr;
    EXPECT_EQ(container->GetHierarchyTable(CONVENIENT_DEPTH, &table), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(container->ResolveNames(nullptr, 0, nullptr, nullptr), MAPI_E_NO_SUPPORT);
    ASSERT_EQ(container->GetContentsTable(0, &table), S_OK);
    const Held<IMAPITable> held(table);
    EXPECT_TRUE(caller_->ReadTable(*table).empty());
    EXPECT_EQ(table->SortTable(nullptr, 0), MAPI_E_NO_SUPPORT);
    void* same = nullptr;
    ASSERT_EQ(container->QueryInterface(mapiContainerInterface, &same), S_OK);
    static_cast<IUnknown*>(same)->Release();
}

}  // namespace
