// Records lie in memory that is not counted: it is the caller's, and far more than what the libraries take.
#include "whole_way.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include "work_counter.h"

namespace fs = std::filesystem;

namespace {

// So many persons and groups are looked at one by one: each call may read all files anew.
constexpr std::uint32_t mostLookedAt = 4;

template <class Function>
Function* Resolve(HMODULE module, const char* name) {
    auto* const function = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    if (function == nullptr) throw std::runtime_error(std::string("no export ") + name);
    return function;
}

template <class Record>
class Records {
  public:
    explicit Records(std::uint32_t count)
        : records_(static_cast<Record*>(TakeUncounted((count + 1) * sizeof(Record)))) {
        if (records_ == nullptr) throw std::bad_alloc();
    }
    ~Records() { GiveBackUncounted(records_); }
    Records(const Records&) = delete;
    Records& operator=(const Records&) = delete;

    Record& operator[](size_t i) { return records_[i]; }
    RecordListDescriptor Describe() const { return {sizeof(Record), {}, records_}; }

  private:
    Record* records_;
};

// Counts all text that it is told.
HRESULT Add(void* answers, std::initializer_list<const char*> texts) {
    for (const char* const text : texts) static_cast<Answers*>(answers)->bytes += std::strlen(text) + 1;
    return S_OK;
}

HRESULT STDAPICALLTYPE AddBook(void* answers, const VOKBookReport* book) {
    return Add(answers, {book->name});
}

HRESULT STDAPICALLTYPE AddFile(void* answers, const VOKFileReport* file) {
    return Add(answers, {file->head.path});
}

HRESULT STDAPICALLTYPE AddCard(void* answers, const VOKCardReport* card) {
    ++static_cast<Answers*>(answers)->count;
    for (const VOKTelephoneReport* const told : std::span(card->telephones, card->telephoneCount))
        Add(answers, {told->source, told->number, told->kind, told->place, told->rule});
    return Add(answers, {card->name});
}

void STDAPICALLTYPE AddMessage(void* answers, const VOKMessageReport* message) {
    Add(answers, {message->head.path, message->what, message->advice});
}

}  // namespace

WholeWay::WholeWay(const fs::path& libraries)
    : library_(LoadLibraryA((libraries / "QDXL7RC.DLL").string().c_str())),
      provider_(LoadLibraryA((libraries / "QDXL7RA.DLL").string().c_str())) {
    if (library_ == nullptr || provider_ == nullptr) throw std::runtime_error("the libraries cannot be loaded");
#define EXPORTED(name) name##_ = Resolve<decltype(::name)>(library_, #name)
    EXPORTED(OpenAddressBook);
    EXPORTED(CloseAddressBook);
    EXPORTED(GetAddressBookList);
    EXPORTED(GetDestinationList);
    EXPORTED(GetDestinationDetails);
    EXPORTED(GetDestinationsInGroup);
#undef EXPORTED
    diagnose_ = Resolve<VOKDiagnoseFunction>(provider_, "VOKDiagnose");
    if (OpenAddressBook_(nullptr, nullptr, 0, nullptr, 0, nullptr) == nullptr)
        throw std::runtime_error("no session opens");
}

Answers WholeWay::List(const fs::path& contacts) const {
    Answers answers;
    const fs::path diagnostics = contacts.parent_path() / "diagnostics";
    setenv("FAXBOOK_CONTACTS", contacts.c_str(), 1);
    setenv("FAXBOOK_DIAGNOSTICS", diagnostics.c_str(), 1);
    SessionHandle* const session = OpenAddressBook_(nullptr, nullptr, 0, nullptr, 0, nullptr);
    if (session == nullptr) throw std::runtime_error("no session opens");
    ListBooks(session, nullptr, answers);
    CloseAddressBook_(session);
    std::error_code none;
    const std::uintmax_t said = fs::file_size(diagnostics, none);
    answers.bytes += none ? 0 : static_cast<size_t>(said);
    return answers;
}

void WholeWay::ListBooks(SessionHandle* session, AddressBookEntry parent, Answers& answers) const {
    std::uint32_t count = 0;
    if (GetAddressBookList_(session, 0, parent, &count, nullptr) != 1 || count == 0) return;
    Records<AddressBookRecord> books(count);
    const RecordListDescriptor records = books.Describe();
    if (GetAddressBookList_(session, 0, parent, &count, &records) != 1) throw std::runtime_error("no books are filled");
    for (std::uint32_t i = 0; i < count; ++i) {
        ListDestinations(session, books[i].entry, answers);
        // All containers below an address book are one list.
        if (parent == nullptr) ListBooks(session, books[i].entry, answers);
    }
}

void WholeWay::ListDestinations(SessionHandle* session, AddressBookEntry book, Answers& answers) const {
    std::uint32_t count = 0;
    if (GetDestinationList_(session, 0, book, &count, nullptr) != 1) throw std::runtime_error("counting fails");
    Records<DestinationRecord> destinations(count);
    Records<DestinationRecord*> addresses(count);
    for (std::uint32_t i = 0; i < count; ++i) addresses[i] = &destinations[i];
    const RecordListDescriptor records = addresses.Describe();
    if (GetDestinationList_(session, 0, book, &count, &records) != 1) throw std::runtime_error("filling fails");
    answers.count += count;
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t& lookedAt = destinations[i].type == DESTINATION_GROUP ? answers.groups : answers.persons;
        if (lookedAt++ < mostLookedAt) LookAt(session, destinations[i]);
    }
}

void WholeWay::LookAt(SessionHandle* session, const DestinationRecord& record) const {
    std::uint32_t size = 0;
    if (GetDestinationDetails_(session, record.entry, &size, nullptr) == 1) {
        Records<char> text(size);
        GetDestinationDetails_(session, record.entry, &size, &text[0]);
    }
    std::uint32_t count = 0;
    if (record.type != DESTINATION_GROUP || GetDestinationsInGroup_(session, 0, record.entry, &count, nullptr) != 1)
        return;
    // In a book of fax entries a recipient can give two records.
    Records<GroupMemberRecord> members(2 * count);
    const RecordListDescriptor records = members.Describe();
    count *= 2;
    GetDestinationsInGroup_(session, 0, record.entry, &count, &records);
}

Answers WholeWay::Diagnose(const fs::path& contacts) const {
    Answers answers;
    const VOKDiagnosisReceiver receiver = {sizeof receiver, &answers, AddBook, AddFile, AddCard, AddMessage};
    if (diagnose_(nullptr, contacts.c_str(), &receiver) != S_OK) throw std::runtime_error("the diagnosis fails");
    return answers;
}
