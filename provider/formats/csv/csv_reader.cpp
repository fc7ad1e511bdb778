// Fields are views of the text; only those with doubled quotes are copied.
#include "formats/csv/csv_reader.h"

#include <algorithm>
#include <array>

#include "text/ascii.h"
#include "text/formula_guard.h"

namespace {

constexpr std::string_view delimiters = ",;\t|";
// A quoted field with more lines than this has lost its closing quote: people do not write such notes, and the rest of
// the file would be one field.
constexpr size_t mostLinesOfField = 1000;

}  // namespace

CsvReader::CsvReader(std::string_view text) : text_(text), lastQuote_(text.rfind('"')) {
    ReadDelimiter();
}

void CsvReader::ReadDelimiter() {
    const size_t end = text_.find_first_of("\r\n");
    const std::string_view first = text_.substr(0, end);
    // A quote that also ended fields would begin none.
    if (StartsWithIgnoringCase(first, "sep=") && first.size() == 5 && first[4] != '"') {
        delimiter_ = first[4];
        position_ = first.size();
        SkipLineEnd();
        return;
    }
    std::array<size_t, delimiters.size()> counts = {};
    bool quoted = false;
    for (const char c : first) {
        if (c == '"') quoted = !quoted;
        const size_t which = delimiters.find(c);
        if (!quoted && which != std::string_view::npos) ++counts[which];
    }
    delimiter_ = delimiters[static_cast<size_t>(std::ranges::max_element(counts) - counts.begin())];
}

bool CsvReader::Next(CsvRow& row) {
    while (position_ < text_.size()) {
        row.line = line_;
        row.fields.clear();
        row.hasOpenQuote = false;
        keptCount_ = 0;
        while (ReadField(row)) {
        }
        for (CsvField& field : row.fields)
            if (HasFormulaGuards(field.text)) field.text = KeptText() = WithoutFormulaGuards(field.text);
        const auto isBlank = [](const CsvField& field) { return Trimmed(field.text).empty(); };
        if (!std::ranges::all_of(row.fields, isBlank)) return true;
    }
    return false;
}

void CsvReader::SkipLineEnd() {
    if (position_ >= text_.size()) return;
    const bool isPair = text_[position_] == '\r' && position_ + 1 < text_.size() && text_[position_ + 1] == '\n';
    position_ += isPair ? 2 : 1;
    ++line_;
}

bool CsvReader::ReadField(CsvRow& row) {
    CsvField& field = row.fields.emplace_back();
    field.line = line_;
    size_t start = position_;
    while (start < text_.size() && text_[start] == ' ' && delimiter_ != ' ') ++start;
    if (start < text_.size() && text_[start] == '"' && start < lastQuote_ && lastQuote_ != std::string_view::npos) {
        const size_t before = position_;
        position_ = start;
        if (ReadQuotedField(field)) return EndField();
        position_ = before;
        line_ = field.line;
        row.hasOpenQuote = true;
    } else if (start < text_.size() && text_[start] == '"') {
        row.hasOpenQuote = true;
    }
    return ReadPlainField(field);
}

bool CsvReader::ReadPlainField(CsvField& field) {
    const size_t start = position_;
    while (position_ < text_.size() && text_[position_] != delimiter_ && text_[position_] != '\r' &&
           text_[position_] != '\n')
        ++position_;
    field.text = text_.substr(start, position_ - start);
    return EndField();
}

// True when the field is closed and a delimiter, a line end or the end of the text follows it.
bool CsvReader::ReadQuotedField(CsvField& field) {
    const size_t start = ++position_;
    bool isDoubled = false;
    for (; position_ < text_.size(); ++position_) {
        const char c = text_[position_];
        if (c == '\n' || (c == '\r' && !text_.substr(position_).starts_with("\r\n"))) {
            if (++line_ - field.line > mostLinesOfField) return false;
        } else if (c == '"') {
            if (!text_.substr(position_).starts_with("\"\"")) break;
            isDoubled = true;
            ++position_;
        }
    }
    if (position_ >= text_.size()) return false;
    field.text = text_.substr(start, position_ - start);
    if (isDoubled) KeepUnquoted(field);
    ++position_;
    while (position_ < text_.size() && text_[position_] == ' ' && delimiter_ != ' ') ++position_;
    return position_ >= text_.size() || text_[position_] == delimiter_ || text_[position_] == '\r' ||
           text_[position_] == '\n';
}

void CsvReader::KeepUnquoted(CsvField& field) {
    std::string& text = KeptText();
    for (size_t i = 0; i < field.text.size(); ++i) {
        text.push_back(field.text[i]);
        if (field.text[i] == '"') ++i;
    }
    field.text = text;
}

std::string& CsvReader::KeptText() {
    if (keptCount_ == kept_.size()) kept_.emplace_back();
    std::string& text = kept_[keptCount_++];
    text.clear();
    return text;
}

bool CsvReader::EndField() {
    if (position_ >= text_.size()) return false;
    if (text_[position_] == delimiter_) {
        ++position_;
        return true;
    }
    SkipLineEnd();
    return false;
}
