// The floor: the least that counting and filling can cost. One pass over the rows compares the tags and copies each
// non-empty string once into one growing chain of blocks, with one fixed-size person beside it; then the same records
// are written into the same caller memory. No checks, no holders, no second styles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "provider/mapi_types.h"
#include "qdxl7rc.h"

class Floor {
  public:
    // Reads that many rows from a batch that repeats. Returns the number of records.
    uint32_t Count(const SRowSet& batch, ULONG rowCount);
    void Fill(DestinationRecord* const* records) const;
    void Close();
    size_t GetBytes() const { return blocks.size() * blockSize; }

  private:
    static constexpr size_t blockSize = 1024 * 1024;

    // A string with its length before it; null when empty.
    using Text = const char*;

    struct Person {
        Person* next;
        Text texts[22];
        const char* identifier;
        uint32_t identifierSize;
        uint16_t value1;
        uint16_t value2;
        uint32_t kind;
    };

    char* Take(size_t size);
    Text Copy(const SPropValue& value, ULONG tag);

    std::vector<std::unique_ptr<char[]>> blocks;
    char* at = nullptr;
    char* end = nullptr;
    Person* first = nullptr;
};
