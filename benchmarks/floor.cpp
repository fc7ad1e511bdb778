// The floor: counting and filling by hand.
#include "floor.h"

#include <algorithm>
#include <cstring>

#include "model/contents_columns.h"

namespace {

// The text columns of a person, and their places in Person::texts.
constexpr ContentsColumn textColumns[] = {
    ContentsColumn::DisplayName,       ContentsColumn::CompanyName,      ContentsColumn::DepartmentName,
    ContentsColumn::Comment,           ContentsColumn::ExtraText,        ContentsColumn::ExtraShortText,
    ContentsColumn::BusinessFaxNumber, ContentsColumn::BusinessFaxNote,  ContentsColumn::BusinessFaxAttr1,
    ContentsColumn::BusinessFaxAttr2,  ContentsColumn::BusinessFaxAttr3, ContentsColumn::HomeFaxNumber,
    ContentsColumn::HomeFaxNote,       ContentsColumn::HomeFaxAttr1,     ContentsColumn::HomeFaxAttr2,
    ContentsColumn::HomeFaxAttr3,      ContentsColumn::PrimaryFaxNumber, ContentsColumn::ExtendedFax,
    ContentsColumn::ExtendedFaxNote,   ContentsColumn::ExtendedFaxAttr1, ContentsColumn::ExtendedFaxAttr2,
};
enum { Name, Company, Department, Comment, ExtraText, ExtraShortText, FirstNumber };
constexpr int numberPlaces[] = {FirstNumber, FirstNumber + 5, FirstNumber + 10, FirstNumber + 11};

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
    if (static_cast<size_t>(end - at) < size) {
        blocks.push_back(std::make_unique_for_overwrite<char[]>(blockSize));
        at = blocks.back().get();
        end = at + blockSize;
    }
    char* taken = at;
    at += size;
    return taken;
}

Floor::Text Floor::Copy(const SPropValue& value, ULONG tag) {
    if (value.ulPropTag != tag || *value.Value.lpszA == '\0') return nullptr;
    const auto length = static_cast<uint16_t>(std::strlen(value.Value.lpszA));
    char* text = Take(sizeof length + length + 1u);
    std::memcpy(text, &length, sizeof length);
    std::memcpy(text + sizeof length, value.Value.lpszA, length + 1u);
    return text + sizeof length;
}

uint32_t Floor::Count(const SRowSet& batch, ULONG rowCount) {
    uint32_t records = 0;
    Person** link = &first;
    const ULONG batchRows = batch.cRows;
    for (ULONG row = 0; row < rowCount; ++row) {
        const SPropValue* values = batch.aRow[row % batchRows].lpProps;
        const auto value = [&](ContentsColumn column) -> const SPropValue& {
            return values[static_cast<ULONG>(column)];
        };
        at = reinterpret_cast<char*>((reinterpret_cast<uintptr_t>(at) + 7) & ~uintptr_t{7});
        if (at > end) at = end;
        Person* person = new (Take(sizeof(Person))) Person{};
        *link = person;
        link = &person->next;
        person->kind = static_cast<uint32_t>(value(ContentsColumn::ObjectType).Value.l);
        const SBinary& identifier = value(ContentsColumn::EntryId).Value.bin;
        char* copy = Take(identifier.cb);
        std::memcpy(copy, identifier.lpb, identifier.cb);
        person->identifier = copy;
        person->identifierSize = identifier.cb;
        Text* text = person->texts;
        for (const ContentsColumn column : textColumns) *text++ = Copy(value(column), GetTag(column));
        uint32_t numbers = 0;
        for (const int place : numberPlaces) numbers += person->texts[place] != nullptr;
        records += std::max(numbers, 1u);
    }
    return records;
}

void Floor::Fill(DestinationRecord* const* records) const {
    for (const Person* person = first; person != nullptr; person = person->next) {
        const Text* texts = person->texts;
        const auto start = [&](uint16_t type) {
            DestinationRecord* record = *records++;
            record->type = type;
            std::memcpy(&record->entry, &person, sizeof person);
            Put(record->name, texts[Name], 85);
            return record;
        };
        if (person->kind != MAPI_MAILUSER) {
            DestinationRecord* record = start(DESTINATION_GROUP);
            Put(record->comment, texts[Comment], 255);
            Put(record->extraText, texts[ExtraText], 85);
            continue;
        }
        bool written = false;
        for (const int place : numberPlaces) {
            if (texts[place] == nullptr) continue;
            DestinationRecord* record = start(DESTINATION_PERSON);
            Put(record->faxNumber, texts[place], 45);
            Put(record->company, texts[Company], 40);
            Put(record->department, texts[Department], 40);
            Put(record->faxNote, texts[place + 1], 30);
            Put(record->comment, texts[Comment], 255);
            Put(record->faxAttr1, texts[place + 2], 20);
            Put(record->faxAttr2, texts[place + 3], 20);
            Put(record->faxAttr3, texts[place + 4], 20);
            Put(record->extraText, texts[ExtraText], 85);
            Put(record->extraShortText, texts[ExtraShortText], 40);
            written = true;
        }
        if (written) continue;
        DestinationRecord* record = start(DESTINATION_PERSON);
        for (char* field : {record->faxNumber, record->faxNote, record->faxAttr1, record->faxAttr2, record->faxAttr3})
            *field = '\0';
    }
}

void Floor::Close() {
    blocks.clear();
    at = end = nullptr;
    first = nullptr;
}
