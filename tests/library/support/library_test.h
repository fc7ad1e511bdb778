// What the tests of the library share: the library loaded from a file, sessions on the scripted provider, records in
// which every byte that was not written shows, and the check that everything went back to the provider.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "support/loaded_library.h"

// The folder that holds the scripted provider with the library beside it, and one for files made by tests.
std::filesystem::path ScriptedFolder();
std::filesystem::path ScratchFolder();

// How many records the tests have compared byte for byte, and how many allocations they made fail.
extern unsigned long long recordsCompared;
extern unsigned long long failedAllocations;

// A record filled with a pattern, so that what the library leaves alone can be told.
inline constexpr unsigned char untouched = 0xA5;
template <class Record>
Record Untouched() {
    Record record;
    std::memset(static_cast<void*>(&record), untouched, sizeof record);
    return record;
}

// Puts a text and its NUL into a field of an expected record; the bytes after it stay.
template <size_t size>
void Put(char (&field)[size], const std::string& text) {
    ASSERT_LT(text.size(), size);
    std::memcpy(field, text.c_str(), text.size() + 1);
}

// Whether two records have the same bytes; else which differ.
testing::AssertionResult SameBytes(const void* actual, const void* expected, size_t size);
template <class Record>
testing::AssertionResult SameBytes(const Record& actual, const Record& expected) {
    return SameBytes(&actual, &expected, sizeof(Record));
}

// Expected records: all bytes untouched but for the texts that every such record has.
AddressBookRecord ExpectedBook(const AddressBookRecord& actual, const std::string& name, const std::string& serviceName,
                               uint32_t providerValue);
AddressBookRecord ExpectedContainer(const AddressBookRecord& actual, const std::string& name,
                                    AddressBookRecord* parent);
DestinationRecord ExpectedPerson(DestinationEntry entry, const std::string& name, const std::string& faxNumber);
DestinationRecord ExpectedNameOnly(DestinationEntry entry, const std::string& name);
DestinationRecord ExpectedGroup(DestinationEntry entry, const std::string& name);
GroupMemberRecord ExpectedMember(uint32_t contentsStyle, const std::string& name, const std::string& businessFax);

// Makes the row of a container, person or group, with more values as wanted.
Row ContainerRow(const std::string& id, const std::string& name, std::vector<Value> more = {});
Row PersonRow(const std::string& id, const std::string& name, std::vector<Value> more = {});
Row GroupRow(const std::string& id, const std::string& name, std::vector<Value> more = {});

// Puts a container below another one, whose identifier is empty for the root.
Entry& AddContainer(const std::string& parent, const std::string& id, const std::string& name,
                    std::vector<Value> more = {});

// A test with the library freshly loaded and, at its end, everything given back to the provider.
class LibraryTest : public testing::Test {
  protected:
    LibraryTest();
    ~LibraryTest() override;
    void SetUp() override;
    void TearDown() override;

    // A session that is closed at the end of the test at the latest.
    SessionHandle* Open();
    void Close(SessionHandle* session);

    // Count, then fill with exactly enough records. All are expected to succeed.
    std::vector<AddressBookRecord> ListBooks(SessionHandle* session, AddressBookEntry parent = nullptr);
    // The records keep their place: the parents of containers point into the same vector.
    std::vector<DestinationRecord> ListDestinations(SessionHandle* session, AddressBookEntry book);
    std::vector<GroupMemberRecord> ListMembers(SessionHandle* session, DestinationEntry group);
    std::string Details(SessionHandle* session, DestinationEntry entry);

    // The destinations of a single address book "b" that holds these rows.
    std::vector<DestinationRecord> DestinationsOf(std::vector<Row> rows, HRESULT contentsStyle = 0);

    Script& script_ = TheScript();
    LoadedModule provider_;
    LibraryUnderTest library_;
    SessionHandle* session_ = nullptr;  // of DestinationsOf

  private:
    std::vector<SessionHandle*> open_;
};
