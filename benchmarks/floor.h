// The floor: the least that counting and filling can cost. One pass over the rows compares the tags and copies each
// non-empty string once into one growing chain of blocks, with one fixed-size person beside it; then the same records
// are written into the same caller memory. Of fax entries each is opened, asked for its plain name and given back. No
// checks, no holders, no second styles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "provider/holders.h"
#include "qdxl7rc.h"

class Floor {
  public:
    // Reads that many rows from a batch that repeats. Returns the number of records.
    uint32_t Count(const SRowSet& batch, ULONG rowCount);
    // The same for fax entries, which are opened through these.
    uint32_t CountFaxEntries(const SRowSet& batch, ULONG rowCount, IAddrBook& addressBook, SessionSupport& support);
    void Fill(DestinationRecord* const* records) const;
    void Close();
    size_t GetBytes() const { return blocks_.size() * blockSize; }

  private:
    static constexpr size_t blockSize = 1024 * 1024;

    // A string with its length before it; null when empty.
    using Text = const char*;

    static constexpr int numberCount = 4;

    // What few persons have.
    struct Companions {
        Text shortText;
        Text ofNumbers[numberCount][4];  // note and three attributes
    };

    struct Person {
        Person* next;
        Text name, company, department, comment, extraText;
        Text numbers[numberCount];
        Companions* companions;
        const char* identifier;
        uint32_t identifierSize;
        uint32_t kind;
    };

    template <class Object>
    Object* New();
    char* Take(size_t size);
    Text Copy(const SPropValue& value, ULONG tag);
    Text Copy(std::string_view text);
    Person* Add(const SPropValue* values);
    uint32_t ReadNumbers(Person& person, const SPropValue* values);

    std::vector<std::unique_ptr<char[]>> blocks_;
    char* at_ = nullptr;
    char* end_ = nullptr;
    Person* first_ = nullptr;
    Person** link_ = &first_;
};
