// RecordWriter: writes fields into a caller's record, which may lie at any address. Only the bytes of the value are
// written; of a text field the text and its NUL.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "model/truncate_text.h"

enum class Cut {
    WholeCharacters,  // never leaves part of a character
    Bytes,            // as it falls
};

// A text field of a record: where it is and how much text it takes.
struct TextField {
    consteval TextField(size_t fieldOffset, size_t fieldSize, size_t longestText, Cut cutting)
        : offset(fieldOffset), limit(longestText), cut(cutting) {
        if (longestText >= fieldSize) throw "no room for the NUL";
    }
    size_t offset;
    size_t limit;  // bytes without the NUL
    Cut cut;
};

// The text field `field` of a record type.
#define TEXT_FIELD(Record, field, limit, cut) TextField(offsetof(Record, field), sizeof(Record::field), limit, cut)

class RecordWriter {
  public:
    explicit RecordWriter(void* callersRecord) : record_(static_cast<char*>(callersRecord)) {}

    void PutText(const TextField& field, std::string_view text) const {
        if (text.size() > field.limit)
            text = field.cut == Cut::Bytes ? text.substr(0, field.limit) : TruncateText(text, field.limit);
        text.copy(record_ + field.offset, text.size());
        record_[field.offset + text.size()] = '\0';
    }

    template <class Value>
    void PutValue(size_t offset, Value value) const {
        std::memcpy(record_ + offset, &value, sizeof value);
    }

  private:
    char* record_;
};
