// The floor: counting and filling by hand.
#include "floor.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "model/contents_row.h"

namespace {

using Column = ContentsColumn;

// The numbers in the order of records.
constexpr Column numberColumns[] = {Column::BusinessFaxNumber, Column::HomeFaxNumber, Column::PrimaryFaxNumber,
                                    Column::ExtendedFax};

struct CompanionColumn {
    Column column;
    int number;
    int place;
};
constexpr CompanionColumn companionColumns[] = {
    {Column::BusinessFaxNote, 0, 0},  {Column::BusinessFaxAttr1, 0, 1}, {Column::BusinessFaxAttr2, 0, 2},
    {Column::BusinessFaxAttr3, 0, 3}, {Column::HomeFaxNote, 1, 0},      {Column::HomeFaxAttr1, 1, 1},
    {Column::HomeFaxAttr2, 1, 2},     {Column::HomeFaxAttr3, 1, 3},     {Column::ExtendedFaxNote, 3, 0},
    {Column::ExtendedFaxAttr1, 3, 1}, {Column::ExtendedFaxAttr2, 3, 2},
};

constexpr PropTagArray<1> plainNameTags{.aulPropTag = {PR_ORIGINAL_DISPLAY_NAME}};

const SPropValue& At(const SPropValue* values, Column column) {
    return values[static_cast<ULONG>(column)];
}

uint16_t GetLength(const char* text) {
    uint16_t length;
    std::memcpy(&length, text - sizeof length, sizeof length);
    return length;
}

void Put(char* field, const char* text, size_t limit) {
    const size_t length = text != nullptr ? std::min<size_t>(GetLength(text), limit) : 0;
    if (length != 0) std::memcpy(field, text, length);
    field[length] = '\0';
}

}  // namespace

char* Floor::Take(size_t size) {
    if (static_cast<size_t>(end_ - at_) < size) {
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(blockSize));
        at_ = blocks_.back().get();
        end_ = at_ + blockSize;
    }
    char* taken = at_;
    at_ += size;
    return taken;
}

template <class Object>
Object* Floor::New() {
    at_ = reinterpret_cast<char*>((reinterpret_cast<uintptr_t>(at_) + 7) & ~uintptr_t{7});
    if (at_ > end_) at_ = end_;
    return new (Take(sizeof(Object))) Object{};
}

Floor::Text Floor::Copy(std::string_view source) {
    const auto length = static_cast<uint16_t>(source.size());
    char* text = Take(sizeof length + length + 1u);
    std::memcpy(text, &length, sizeof length);
    std::memcpy(text + sizeof length, source.data(), length);
    text[sizeof length + length] = '\0';
    return text + sizeof length;
}

Floor::Text Floor::Copy(const SPropValue& value, ULONG tag) {
    if (value.ulPropTag != tag || *value.Value.lpszA == '\0') return nullptr;
    return Copy(value.Value.lpszA);
}

Floor::Person* Floor::Add(const SPropValue* values) {
    const auto copy = [&](Column column) { return Copy(At(values, column), GetTag(column)); };
    Person* const person = New<Person>();
    *link_ = person;
    link_ = &person->next;
    person->kind = static_cast<uint32_t>(At(values, Column::ObjectType).Value.l);
    const SBinary& identifier = At(values, Column::EntryId).Value.bin;
    char* const bytes = Take(identifier.cb);
    std::memcpy(bytes, identifier.lpb, identifier.cb);
    person->identifier = bytes;
    person->identifierSize = identifier.cb;
    person->name = copy(Column::DisplayName);
    person->company = copy(Column::CompanyName);
    person->department = copy(Column::DepartmentName);
    person->comment = copy(Column::Comment);
    person->extraText = copy(Column::ExtraText);
    return person;
}

uint32_t Floor::ReadNumbers(Person& person, const SPropValue* values) {
    uint32_t count = 0;
    for (int i = 0; i < numberCount; ++i) {
        person.numbers[i] = Copy(At(values, numberColumns[i]), GetTag(numberColumns[i]));
        if (person.numbers[i] != nullptr) ++count;
    }
    const auto companions = [&]() -> Companions& {
        if (person.companions == nullptr) person.companions = New<Companions>();
        return *person.companions;
    };
    if (const Text text = Copy(At(values, Column::ExtraShortText), PR_VOK_EXTRA_SHORT_TEXT))
        companions().shortText = text;
    for (const CompanionColumn& each : companionColumns)
        if (const Text text = Copy(At(values, each.column), GetTag(each.column)))
            companions().ofNumbers[each.number][each.place] = text;
    return std::max(count, 1u);
}

uint32_t Floor::Count(const SRowSet& batch, ULONG rowCount) {
    uint32_t records = 0;
    for (ULONG row = 0; row < rowCount; ++row) {
        const SPropValue* const values = batch.aRow[row % batch.cRows].lpProps;
        Person* const person = Add(values);
        records += person->kind == MAPI_MAILUSER ? ReadNumbers(*person, values) : 1;
    }
    return records;
}

uint32_t Floor::CountFaxEntries(const SRowSet& batch, ULONG rowCount, IAddrBook& addressBook, SessionSupport& support) {
    constexpr std::string_view suffix = " (Business Fax)";
    for (ULONG row = 0; row < rowCount; ++row) {
        const SPropValue* const values = batch.aRow[row % batch.cRows].lpProps;
        Person* const person = Add(values);
        if (person->kind != MAPI_MAILUSER) continue;
        const SBinary& identifier = At(values, Column::EntryId).Value.bin;
        ULONG type = 0;
        IUnknown* opened = nullptr;
        addressBook.OpenEntry(identifier.cb, identifier.lpb, nullptr, 0, &type, &opened);
        ULONG count = 0;
        SPropValue* name = nullptr;
        static_cast<IMAPIProp*>(opened)->GetProps(plainNameTags.Get(), 0, &count, &name);
        const std::string_view plainName = name->Value.lpszA;
        const std::string_view address = At(values, Column::EmailAddress).Value.lpszA;
        const bool isBusiness = std::string_view(At(values, Column::DisplayName).Value.lpszA).ends_with(suffix);
        person->name = Copy(plainName);
        person->numbers[isBusiness ? 0 : 2] = Copy(address.substr(plainName.size() + 1));
        support.FreeProperties(name);
        opened->Release();
    }
    return rowCount;
}

void Floor::Fill(DestinationRecord* const* records) const {
    constexpr Companions none{};
    for (const Person* person = first_; person != nullptr; person = person->next) {
        const auto start = [&](uint16_t type) {
            DestinationRecord* record = *records++;
            record->type = type;
            std::memcpy(&record->entry, &person, sizeof person);
            Put(record->name, person->name, 85);
            return record;
        };
        if (person->kind != MAPI_MAILUSER) {
            DestinationRecord* record = start(DESTINATION_GROUP);
            Put(record->comment, person->comment, 255);
            Put(record->extraText, person->extraText, 85);
            continue;
        }
        const Companions& companions = person->companions != nullptr ? *person->companions : none;
        bool written = false;
        for (int i = 0; i < numberCount; ++i) {
            if (person->numbers[i] == nullptr) continue;
            const Text* const ofNumber = companions.ofNumbers[i];
            DestinationRecord* record = start(DESTINATION_PERSON);
            Put(record->faxNumber, person->numbers[i], 45);
            Put(record->company, person->company, 40);
            Put(record->department, person->department, 40);
            Put(record->faxNote, ofNumber[0], 30);
            Put(record->comment, person->comment, 255);
            Put(record->faxAttr1, ofNumber[1], 20);
            Put(record->faxAttr2, ofNumber[2], 20);
            Put(record->faxAttr3, ofNumber[3], 20);
            Put(record->extraText, person->extraText, 85);
            Put(record->extraShortText, companions.shortText, 40);
            written = true;
        }
        if (written) continue;
        DestinationRecord* record = start(DESTINATION_PERSON);
        for (char* field : {record->faxNumber, record->faxNote, record->faxAttr1, record->faxAttr2, record->faxAttr3})
            *field = '\0';
    }
}

void Floor::Close() {
    blocks_.clear();
    at_ = end_ = nullptr;
    first_ = nullptr;
    link_ = &first_;
}
