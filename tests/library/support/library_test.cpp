// The expected records, the rows of the script, and the calls that count and then fill.
#include "support/library_test.h"

#include <algorithm>
#include <cstring>

unsigned long long recordsCompared = 0;
unsigned long long failedAllocations = 0;

testing::AssertionResult SameBytes(const void* actual, const void* expected, size_t size) {
    ++recordsCompared;
    const auto* const left = static_cast<const unsigned char*>(actual);
    const auto* const right = static_cast<const unsigned char*>(expected);
    const auto [first, other] = std::mismatch(left, left + size, right);
    if (first == left + size) return testing::AssertionSuccess();
    const auto from = static_cast<size_t>(first - left);
    const size_t length = std::min<size_t>(24, size - from);
    return testing::AssertionFailure() << "first difference at offset " << from << ": "
                                       << testing::PrintToString(std::string(left + from, left + from + length))
                                       << " instead of "
                                       << testing::PrintToString(std::string(right + from, right + from + length));
}

AddressBookRecord ExpectedContainer(const AddressBookRecord& actual, const std::string& name,
                                    AddressBookRecord* parent) {
    auto record = Untouched<AddressBookRecord>();
    record.parent = parent;
    record.entry = actual.entry;
    Put(record.name, name);
    return record;
}

AddressBookRecord ExpectedBook(const AddressBookRecord& actual, const std::string& name, const std::string& serviceName,
                               uint32_t providerValue) {
    AddressBookRecord record = ExpectedContainer(actual, name, nullptr);
    record.providerValue = providerValue;
    Put(record.serviceName, serviceName);
    return record;
}

DestinationRecord ExpectedNameOnly(DestinationEntry entry, const std::string& name) {
    auto record = Untouched<DestinationRecord>();
    record.type = DESTINATION_PERSON;
    record.entry = entry;
    Put(record.name, name);
    for (char* field : {record.faxNumber, record.faxNote, record.faxAttr1, record.faxAttr2, record.faxAttr3})
        *field = 0;
    return record;
}

DestinationRecord ExpectedPerson(DestinationEntry entry, const std::string& name, const std::string& faxNumber) {
    DestinationRecord record = ExpectedNameOnly(entry, name);
    Put(record.faxNumber, faxNumber);
    for (char* field : {record.company, record.department, record.comment, record.extraText, record.extraShortText})
        *field = 0;
    return record;
}

DestinationRecord ExpectedGroup(DestinationEntry entry, const std::string& name) {
    auto record = Untouched<DestinationRecord>();
    record.type = DESTINATION_GROUP;
    record.entry = entry;
    Put(record.name, name);
    Put(record.comment, "");
    Put(record.extraText, "");
    return record;
}

GroupMemberRecord ExpectedMember(uint32_t contentsStyle, const std::string& name, const std::string& businessFax) {
    auto record = Untouched<GroupMemberRecord>();
    record.contentsStyle = contentsStyle;
    Put(record.name, name);
    Put(record.businessFax, businessFax);
    for (char* field :
         {record.company, record.department, record.businessFaxNote, record.businessFaxAttr1, record.businessFaxAttr2,
          record.businessFaxAttr3, record.homeFax, record.homeFaxNote, record.homeFaxAttr1, record.homeFaxAttr2,
          record.homeFaxAttr3, record.extendedFax, record.extendedFaxAttr1, record.extendedFaxAttr2})
        *field = 0;
    record.extendedFaxValue1 = record.extendedFaxValue2 = 0;
    return record;
}

namespace {

Row RowOf(ULONG type, const std::string& id, const std::string& name, std::vector<Value> more) {
    Row row{Text(PR_DISPLAY_NAME, name), Identifier(id), Number(PR_OBJECT_TYPE, static_cast<LONG>(type))};
    row.values.insert(row.values.end(), more.begin(), more.end());
    return row;
}

}  // namespace

Row ContainerRow(const std::string& id, const std::string& name, std::vector<Value> more) {
    return RowOf(MAPI_ABCONT, id, name, std::move(more));
}
Row PersonRow(const std::string& id, const std::string& name, std::vector<Value> more) {
    return RowOf(MAPI_MAILUSER, id, name, std::move(more));
}
Row GroupRow(const std::string& id, const std::string& name, std::vector<Value> more) {
    return RowOf(MAPI_DISTLIST, id, name, std::move(more));
}

Entry& AddContainer(const std::string& parent, const std::string& id, const std::string& name,
                    std::vector<Value> more) {
    TheScript().entries[parent].hierarchy.rows.push_back(ContainerRow(id, name, std::move(more)));
    return TheScript().entries[id];
}

LibraryTest::LibraryTest() : provider_(ScriptedFolder() / "QDXL7RA.DLL"), library_(ScriptedFolder() / "QDXL7RC.DLL") {
    script_.Reset();
}

LibraryTest::~LibraryTest() {
    script_.Reset();
}

void LibraryTest::SetUp() {
    ASSERT_NE(provider_.Handle(), nullptr);
    ASSERT_NE(library_.Handle(), nullptr);
    ASSERT_NE(provider_.Find<void>("VOKOpen"), nullptr);
}

void LibraryTest::TearDown() {
    script_.faults.clear();
    script_.during = nullptr;
    while (!open_.empty()) Close(open_.back());
    EXPECT_EQ(script_.Imbalance(), "");
}

SessionHandle* LibraryTest::Open() {
    SessionHandle* const opened = library_.OpenAddressBook(nullptr, "profile", 0, nullptr, 0, nullptr);
    EXPECT_NE(opened, nullptr);
    open_.push_back(opened);
    return opened;
}

void LibraryTest::Close(SessionHandle* closed) {
    EXPECT_EQ(library_.CloseAddressBook(closed), 1);
    open_.erase(std::find(open_.begin(), open_.end(), closed));
}

std::vector<AddressBookRecord> LibraryTest::ListBooks(SessionHandle* handle, AddressBookEntry parent) {
    uint32_t count = 0;
    EXPECT_EQ(library_.GetAddressBookList(handle, 0, parent, &count, nullptr), 1);
    std::vector<AddressBookRecord> records(count, Untouched<AddressBookRecord>());
    const RecordListDescriptor descriptor{sizeof(AddressBookRecord), {}, records.data()};
    EXPECT_EQ(library_.GetAddressBookList(handle, 0, parent, &count, &descriptor), 1);
    EXPECT_EQ(count, records.size());
    return records;
}

std::vector<DestinationRecord> LibraryTest::ListDestinations(SessionHandle* handle, AddressBookEntry book) {
    uint32_t count = 0;
    EXPECT_EQ(library_.GetDestinationList(handle, 0, book, &count, nullptr), 1);
    std::vector<DestinationRecord> records(count, Untouched<DestinationRecord>());
    std::vector<DestinationRecord*> addresses;
    for (DestinationRecord& record : records) addresses.push_back(&record);
    const RecordListDescriptor descriptor{0, {}, addresses.data()};
    EXPECT_EQ(library_.GetDestinationList(handle, 0, book, &count, &descriptor), 1);
    EXPECT_EQ(count, records.size());
    return records;
}

std::vector<GroupMemberRecord> LibraryTest::ListMembers(SessionHandle* handle, DestinationEntry group) {
    uint32_t count = 0;
    EXPECT_EQ(library_.GetDestinationsInGroup(handle, 0, group, &count, nullptr), 1);
    std::vector<GroupMemberRecord> records(count, Untouched<GroupMemberRecord>());
    const RecordListDescriptor descriptor{0, {}, records.data()};
    EXPECT_EQ(library_.GetDestinationsInGroup(handle, 0, group, &count, &descriptor), 1);
    EXPECT_EQ(count, records.size());
    return records;
}

std::string LibraryTest::Details(SessionHandle* handle, DestinationEntry entry) {
    uint32_t size = untouched;
    EXPECT_EQ(library_.GetDestinationDetails(handle, entry, &size, nullptr), 1);
    std::string text(size + 1, static_cast<char>(untouched));
    EXPECT_EQ(library_.GetDestinationDetails(handle, entry, &size, text.data()), 1);
    EXPECT_EQ(text.back(), '\0');
    text.pop_back();
    return text;
}

std::vector<DestinationRecord> LibraryTest::DestinationsOf(std::vector<Row> rows, HRESULT contentsStyle) {
    script_.entries.try_emplace("");
    Entry& book = script_.entries.contains("b") ? script_.entries["b"] : AddContainer("", "b", "Book");
    book.contents.rows = std::move(rows);
    book.contentsResult = contentsStyle;
    if (session_ == nullptr) session_ = Open();
    const std::vector<AddressBookRecord> books = ListBooks(session_);
    return books.empty() ? std::vector<DestinationRecord>() : ListDestinations(session_, books[0].entry);
}
