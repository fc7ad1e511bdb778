// Count, then fill: every list is asked for its length first and then read into records of that number.
#include "client/library_session.h"

#include <algorithm>
#include <limits>

#include "client/client_error.h"
#include "client/record_text.h"
#include "client/results.h"
#include "mapi/result_codes.h"

namespace {

std::string ProfileText(std::string_view profile) {
    return profile.empty() ? "the default profile" : "the profile \"" + std::string(profile) + "\"";
}

std::string AdviceForOpening(std::string_view profile, int32_t result) {
    switch (result) {
        case MAPI_E_NOT_FOUND:
            return "see \"faxbook profiles\" for the profiles there are, or create it with \"faxbook profile create " +
                   std::string(profile) + "\"";
        case MAPI_E_CALL_FAILED:
            return "see that QDXL7RA.DLL lies beside QDXL7RC.DLL and belongs to it";
        default:
            return "see what the provider said above, and try \"faxbook profile admin\"";
    }
}

RecordListDescriptor DescribeRecords(size_t recordSize, void* storage) {
    RecordListDescriptor descriptor = {};
    descriptor.recordSize = static_cast<int16_t>(recordSize);
    descriptor.recordStorage = storage;
    return descriptor;
}

[[noreturn]] void ThrowUnanswered(const char* what) {
    throw ClientError(std::string("the library could not deliver ") + what +
                      " (it answered 0, which gives no reason); free some memory and try again");
}

}  // namespace

Library::Library() : module_("QDXL7RC.DLL") {
#define RESOLVE_EXPORT(name) name = module_.Resolve<decltype(::name)>(#name);
    LIBRARY_EXPORTS(RESOLVE_EXPORT)
#undef RESOLVE_EXPORT
}

LibrarySession::LibrarySession(const Library& openLibrary, std::string_view profile)
    : library_(openLibrary), handle_(nullptr, Closer{&openLibrary}) {
    const std::string name = InCodePage(profile, "the profile name");
    handle_.reset(
        library_.OpenAddressBook(nullptr, name.empty() ? nullptr : name.c_str(), 0, nullptr, 0, library_.Module()));
    if (!handle_) {
        const int32_t result = library_.LastResult();
        throw ClientError("cannot open " + ProfileText(profile) + ": the library answered " + ResultText(result) +
                          "; " + AdviceForOpening(profile, result));
    }
}

std::vector<AddressBookRecord> LibrarySession::AddressBooks() {
    return ReadAddressBooks(nullptr);
}

std::vector<AddressBookRecord> LibrarySession::Containers(AddressBookEntry addressBook) {
    return ReadAddressBooks(addressBook);
}

std::vector<AddressBookRecord> LibrarySession::ReadAddressBooks(AddressBookEntry parent) {
    uint32_t count = 0;
    // 0 is also the answer when there are no address books.
    if (!library_.GetAddressBookList(handle_.get(), 0, parent, &count, nullptr)) return {};
    std::vector<AddressBookRecord> records(count);
    const RecordListDescriptor descriptor = DescribeRecords(sizeof(AddressBookRecord), records.data());
    if (count > 0 && !library_.GetAddressBookList(handle_.get(), 0, parent, &count, &descriptor)) {
        ThrowUnanswered("the address books");
    }
    return records;
}

// The records are filled a window at a time: a filling call writes those before the window again, all into one scratch
// record, and stops behind it. The number of windows has a bound, so that the time stays in proportion to the records.
void LibrarySession::ForEachDestination(AddressBookEntry addressBook,
                                        const std::function<void(const DestinationRecord&)>& function) {
    constexpr uint32_t smallestWindow = 4096;
    constexpr uint32_t mostWindows = 6;
    uint32_t total = 0;
    if (!library_.GetDestinationList(handle_.get(), 0, addressBook, &total, nullptr)) {
        ThrowUnanswered("the number of destinations");
    }
    const uint32_t windowSize = std::min(total, std::max(smallestWindow, total / mostWindows + 1));
    std::vector<DestinationRecord> window(windowSize);
    DestinationRecord scratch;
    std::vector<DestinationRecord*> addresses(total, &scratch);
    const RecordListDescriptor descriptor = DescribeRecords(sizeof(DestinationRecord), addresses.data());
    for (uint32_t begin = 0; begin < total; begin += windowSize) {
        uint32_t end = begin + std::min(windowSize, total - begin);
        // What a record lacks, the library leaves as it finds it.
        std::ranges::fill(window, DestinationRecord());
        for (uint32_t i = begin; i < end; ++i) addresses[i] = &window[i - begin];
        if (!library_.GetDestinationList(handle_.get(), 0, addressBook, &end, &descriptor) && end == total) {
            ThrowUnanswered("the destinations");
        }
        for (uint32_t i = begin; i < end; ++i) {
            function(window[i - begin]);
            addresses[i] = &scratch;
        }
    }
}

std::string LibrarySession::Details(DestinationEntry destination) {
    uint32_t size = 0;
    if (!library_.GetDestinationDetails(handle_.get(), destination, &size, nullptr)) {
        ThrowUnanswered("the length of the details");
    }
    std::string text(size, '\0');
    if (!library_.GetDestinationDetails(handle_.get(), destination, &size, text.data())) ThrowUnanswered("the details");
    return text;
}

ExpandedGroup LibrarySession::Members(DestinationEntry group) {
    // The library leaves the counter alone when the provider cannot expand the group, and stores no such number.
    constexpr uint32_t notStored = std::numeric_limits<uint32_t>::max();
    ExpandedGroup members;
    members.recipientCount = notStored;
    if (!library_.GetDestinationsInGroup(handle_.get(), 0, group, &members.recipientCount, nullptr)) {
        ThrowUnanswered("the number of members");
    }
    if (members.recipientCount == notStored) {
        throw ClientError("the provider cannot expand the group; see what it said above, and look at the group's card");
    }
    // How many records a filling call wrote is seen from the first one that still carries this style. A recipient gives
    // at most two records; more are needed only when the group has grown since it was counted.
    constexpr uint32_t unwritten = std::numeric_limits<uint32_t>::max();
    GroupMemberRecord blank = {};
    blank.contentsStyle = unwritten;
    uint32_t capacity = std::max(members.recipientCount, 1u) * 2;
    members.records.assign(capacity, blank);
    auto fill = [&] {
        const RecordListDescriptor descriptor = DescribeRecords(sizeof(GroupMemberRecord), members.records.data());
        return library_.GetDestinationsInGroup(handle_.get(), 0, group, &capacity, &descriptor) != 0;
    };
    while (!fill()) {
        if (members.records.back().contentsStyle == unwritten) ThrowUnanswered("the members");
        capacity *= 2;
        members.records.assign(capacity, blank);
    }
    const auto end = std::ranges::find(members.records, unwritten, &GroupMemberRecord::contentsStyle);
    members.records.erase(end, members.records.end());
    return members;
}
