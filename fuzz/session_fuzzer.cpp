// Whole sessions over a provider that answers anything. Whatever it answers: every object and buffer goes back once,
// records have texts that end, counts and records agree, no call touches memory that is not its own, and afterwards a
// session opens as if nothing had been.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "fuzzed_script.h"
#include "promise.h"
#include "support/loaded_library.h"

namespace {

const LibraryUnderTest& Library() {
    static const LoadedModule provider(SCRIPTED_FOLDER "/QDXL7RA.DLL");
    static const LibraryUnderTest library(SCRIPTED_FOLDER "/QDXL7RC.DLL");
    Promise(provider.Handle() != nullptr && library.Handle() != nullptr, "the library and its provider are there");
    return library;
}

template <size_t size>
bool Ends(const char (&text)[size]) {
    return std::memchr(text, '\0', size) != nullptr;
}

// Exactly as much memory as the records take, so that a sanitizer sees what is written beside them. Texts that are not
// written end, because the memory is zero.
template <class Record>
class RecordArray {
  public:
    explicit RecordArray(std::uint32_t theCount) : count_(theCount), records_(std::make_unique<Record[]>(theCount)) {}
    Record* begin() { return records_.get(); }
    Record* end() { return records_.get() + count_; }
    RecordListDescriptor Describe() { return {sizeof(Record), {}, records_.get()}; }

  private:
    std::uint32_t count_;
    std::unique_ptr<Record[]> records_;
};

// One session and the handles that it has given out and that are still alive.
class FuzzedSession {
  public:
    explicit FuzzedSession(FuzzedInput& theInput) : input_(theInput) {
        session_ = library_.OpenAddressBook(nullptr, "profile", 0, nullptr, 0, nullptr);
    }
    void Close() {
        inUse_ = IsOpen();
        if (inUse_) Promise(library_.CloseAddressBook(session_) == 1, "a session closes");
        inUse_ = false;
        closed_ = true;
    }
    // The session whose entries this one is given as well.
    void SetOther(FuzzedSession& other) { other_ = &other; }
    FuzzedSession(const FuzzedSession&) = delete;
    FuzzedSession& operator=(const FuzzedSession&) = delete;

    bool IsOpen() const { return session_ != nullptr && !closed_; }
    void RunStep(std::uint32_t what);
    static constexpr std::uint32_t stepCount = 9;
    // What a caller's code does in a message loop that the provider runs inside a call.
    void CallFromInside(std::uint32_t what);
    static constexpr std::uint32_t insideCallCount = 6;

  private:
    void Read(std::uint32_t what);
    void ListBooks();
    void ListContainers();
    void CountDestinations();
    void FillDestinations();
    void ShowDetails(const FuzzedSession& owner);
    void ExpandGroup(const FuzzedSession& owner);
    void SwapFamilies();
    void UseOthersEntries();
    void CloseFromInside();

    // Counts and fills the records of one call of GetAddressBookList.
    void ListBooks(AddressBookEntry parent);

    template <class Entry>
    Entry Choose(const std::vector<Entry>& entries) {
        return entries.empty() ? nullptr : entries[input_.TakeBelow(static_cast<std::uint32_t>(entries.size()))];
    }

    const LibraryUnderTest& library_ = Library();
    FuzzedInput& input_;
    SessionHandle* session_;
    FuzzedSession* other_ = nullptr;
    bool inUse_ = false;                   // while a call on this session is under way
    bool closed_ = false;                  // from inside a call, which it outlives at most
    std::vector<AddressBookEntry> books_;  // with their containers
    std::vector<DestinationEntry> destinations_;
    std::uint32_t destinationCount_ = 0;
};

void FuzzedSession::ListBooks(AddressBookEntry parent) {
    std::uint32_t count = 0;
    if (library_.GetAddressBookList(session_, 0, parent, &count, nullptr) != 1) {
        Promise(count == 0, "a call that fails counts nothing");
        return;
    }
    if (closed_) return;
    const std::uint32_t capacity = input_.TakeBool() ? count : input_.TakeBelow(count + 1);
    RecordArray<AddressBookRecord> records(capacity);
    const RecordListDescriptor descriptor = records.Describe();
    std::uint32_t left = capacity;
    const bool filled = library_.GetAddressBookList(session_, 0, parent, &left, &descriptor) == 1;
    if (closed_) return;
    // Nothing is listed below what is no address book.
    Promise(filled == (capacity == count) && left == capacity, "what was counted fits exactly");
    for (const AddressBookRecord& record : records) {
        Promise(Ends(record.name) && Ends(record.serviceName), "texts end");
        Promise(record.entry != nullptr, "a record has its entry");
        Promise(record.parent == nullptr || (record.parent >= records.begin() && record.parent < &record),
                "a parent stands before its containers");
        books_.push_back(record.entry);
    }
}

void FuzzedSession::ListBooks() {
    books_.clear();
    ListBooks(nullptr);
}

void FuzzedSession::ListContainers() {
    if (const AddressBookEntry parent = Choose(books_)) ListBooks(parent);
}

void FuzzedSession::CountDestinations() {
    const AddressBookEntry book = Choose(books_);
    if (book == nullptr) return;
    destinations_.clear();
    destinationCount_ = 0;
    const int32_t result = library_.GetDestinationList(session_, 0, book, &destinationCount_, nullptr);
    Promise(result == 1 || destinationCount_ == 0, "a call that fails counts nothing");
    if (closed_) destinationCount_ = 0;
}

void FuzzedSession::FillDestinations() {
    const AddressBookEntry book = Choose(books_);
    if (book == nullptr || destinationCount_ == 0) return;
    const std::uint32_t capacity = input_.TakeBool() ? destinationCount_ : input_.TakeBelow(destinationCount_ + 1);
    RecordArray<DestinationRecord> records(capacity);
    std::vector<DestinationRecord*> addresses;
    for (DestinationRecord& record : records) addresses.push_back(&record);
    const RecordListDescriptor descriptor{0, {}, addresses.data()};
    std::uint32_t left = capacity;
    const bool filled = library_.GetDestinationList(session_, 0, book, &left, &descriptor) == 1;
    Promise(filled == (capacity == destinationCount_) && left == capacity, "what was counted fits exactly");
    destinations_.clear();
    for (const DestinationRecord& record : records) {
        Promise(record.type == DESTINATION_PERSON || record.type == DESTINATION_GROUP, "a record has a type");
        Promise(record.entry != nullptr, "a record has its entry");
        Promise(Ends(record.name) && Ends(record.faxNumber) && Ends(record.company) && Ends(record.department) &&
                    Ends(record.faxNote) && Ends(record.comment) && Ends(record.faxAttr1) && Ends(record.faxAttr2) &&
                    Ends(record.faxAttr3) && Ends(record.extraText) && Ends(record.extraShortText),
                "texts end");
        destinations_.push_back(record.entry);
    }
}

void FuzzedSession::ShowDetails(const FuzzedSession& owner) {
    const DestinationEntry destination = Choose(owner.destinations_);
    if (destination == nullptr) return;
    std::uint32_t size = 0;
    if (library_.GetDestinationDetails(session_, destination, &size, nullptr) != 1) return;
    if (closed_ || owner.closed_) return;
    const auto text = std::make_unique<char[]>(size + 1);
    const int32_t result = library_.GetDestinationDetails(session_, destination, &size, text.get());
    Promise(result == 1 && std::strlen(text.get()) == size, "a text is as long as was said");
}

void FuzzedSession::ExpandGroup(const FuzzedSession& owner) {
    const DestinationEntry destination = Choose(owner.destinations_);
    if (destination == nullptr) return;
    std::uint32_t count = 0;
    library_.GetDestinationsInGroup(session_, 0, destination, &count, nullptr);
    if (closed_ || owner.closed_) return;
    const std::uint32_t capacity = count + input_.TakeBelow(4);
    RecordArray<GroupMemberRecord> records(capacity);
    const RecordListDescriptor descriptor = records.Describe();
    library_.GetDestinationsInGroup(session_, input_.TakeBelow(16) == 1, destination, &count, &descriptor);
    for (const GroupMemberRecord& record : records)
        Promise(Ends(record.name) && Ends(record.company) && Ends(record.department) && Ends(record.businessFax) &&
                    Ends(record.homeFax) && Ends(record.extendedFax) && Ends(record.businessFaxAttr1) &&
                    Ends(record.homeFaxAttr1) && Ends(record.extendedFaxAttr1) && Ends(record.extendedFaxAttr2),
                "texts end");
}

// Entries of one family where one of the other belongs: refused or without any result.
void FuzzedSession::SwapFamilies() {
    std::uint32_t count = 0;
    if (const AddressBookEntry book = Choose(books_)) {
        const auto wrong = reinterpret_cast<DestinationEntry>(book);
        Promise(library_.GetDestinationDetails(session_, wrong, &count, nullptr) == 0, "a book has no details");
        library_.GetDestinationsInGroup(session_, 0, wrong, &count, nullptr);
    }
    if (const DestinationEntry destination = Choose(destinations_)) {
        const auto wrong = reinterpret_cast<AddressBookEntry>(destination);
        Promise(library_.GetDestinationList(session_, 0, wrong, &count, nullptr) == 0, "a destination is no book");
        library_.GetAddressBookList(session_, 0, wrong, &count, nullptr);
    }
    Promise(count == 0, "a wrong entry counts nothing");
}

// Entries of another session that is open: they stay, whatever is read through them.
void FuzzedSession::UseOthersEntries() {
    ShowDetails(*other_);
    if (!closed_) ExpandGroup(*other_);
    std::uint32_t count = 0;
    const AddressBookEntry parent = closed_ ? nullptr : Choose(other_->books_);
    if (parent != nullptr) library_.GetAddressBookList(session_, 0, parent, &count, nullptr);
    const AddressBookEntry book = closed_ ? nullptr : Choose(other_->books_);
    if (book == nullptr) return;
    destinations_.clear();
    destinationCount_ = 0;
    library_.GetDestinationList(session_, 0, book, &destinationCount_, nullptr);
    if (closed_) destinationCount_ = 0;
}

// A session that is in use ends with that; its entries are not used any more in either case.
void FuzzedSession::CloseFromInside() {
    if (!IsOpen()) return;
    closed_ = true;
    books_.clear();
    destinations_.clear();
    destinationCount_ = 0;
    Promise(library_.CloseAddressBook(session_) == 1, "a session closes");
    if (inUse_) Promise(library_.CloseAddressBook(session_) == 1, "a session closes, however often it is asked for");
}

void FuzzedSession::Read(std::uint32_t what) {
    switch (what) {
        case 0:
            return ListBooks();
        case 1:
            return ListContainers();
        case 2:
            return CountDestinations();
        case 3:
            return FillDestinations();
        case 4:
            return ShowDetails(*this);
        case 5:
            return ExpandGroup(*this);
        case 6:
            return SwapFamilies();
        case 7:
            return UseOthersEntries();
    }
}

void FuzzedSession::RunStep(std::uint32_t what) {
    if (what == 8) {
        const ServiceRecord services[] = {{"VCARD", 3, {}}, {"SECOND", 0, {}}};
        library_.CreateProfile(0, 0, "profile", input_.TakeBelow(3), services, nullptr);
        return;
    }
    inUse_ = true;
    Read(what);
    inUse_ = false;
}

void FuzzedSession::CallFromInside(std::uint32_t what) {
    std::uint32_t count = 0;
    switch (what) {
        case 0:
            if (!inUse_) return;
            Promise(library_.GetAddressBookList(session_, 0, nullptr, &count, nullptr) == 0, "a session is in use");
            return;
        case 1:
            if (inUse_) CloseFromInside();
            return;
        case 2:
            library_.CreateProfile(0, 0, "profile", 0, nullptr, nullptr);
            return;
        case 3: {
            SessionHandle* const other = library_.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr);
            library_.GetAddressBookList(other, 0, nullptr, &count, nullptr);
            library_.CloseAddressBook(other);
            return;
        }
        case 4:
            other_->CloseFromInside();
            return;
        case 5:
            if (other_->IsOpen()) other_->RunStep(7);
            return;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const LibraryUnderTest& library = Library();
    FuzzedInput input({reinterpret_cast<const char*>(data), size});
    Script& script = TheScript();
    script.keepsCalls = false;
    MakeFuzzedScript(input, script);
    const std::uint32_t insideAction = input.TakeBelow(FuzzedSession::insideCallCount);
    unsigned callsUntilInside = input.TakeByte();
    FuzzedSession* running = nullptr;
    script.during = [&](const std::string&) {
        if (running == nullptr || script.depth > 1 || callsUntilInside == 0 || --callsUntilInside > 0) return;
        running->CallFromInside(insideAction);
    };
    {
        FuzzedSession first(input), second(input);
        first.SetOther(second);
        second.SetOther(first);
        for (int steps = 0; steps < 40 && !input.IsEmpty(); ++steps) {
            const std::uint32_t step = input.TakeBelow(2 * FuzzedSession::stepCount);
            running = step < FuzzedSession::stepCount ? &first : &second;
            if (running->IsOpen()) running->RunStep(step % FuzzedSession::stepCount);
        }
        for (FuzzedSession* session : {&first, &second}) {
            running = session;
            session->Close();
        }
        running = nullptr;
    }
    script.during = nullptr;
    script.faults.clear();
    SessionHandle* const again = library.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr);
    Promise(again != nullptr, "a session opens");
    library.CloseAddressBook(again);
    const std::string imbalance = script.Imbalance();
    Promise(imbalance.empty(), imbalance.c_str());
    script.Reset();
    return 0;
}
