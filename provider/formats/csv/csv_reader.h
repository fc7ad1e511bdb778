// The rows of a CSV text: RFC 4180, and what exporters make of it.
//
// Delimiters are commas, semicolons, tabs or bars, whichever the first line has outside of quotes; a first line `sep=;`
// names one. Lines end with CR LF, LF or CR. A quoted field may hold delimiters, line ends and doubled quotes; a quote
// inside a field that does not begin with one is text. An apostrophe that keeps spreadsheets from running a field is
// none of its text (formula_guard.h).
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

struct CsvField {
    std::string_view text;  // of the file or, where it stands there in other letters, of the row
    size_t line = 0;        // where it begins, counted from 1
};

// Used again and again for one row after another. The views live until the next row is read.
struct CsvRow {
    size_t line = 0;
    std::vector<CsvField> fields;
    // The row has a quoted field without an end: the field was read as if its quote were text.
    bool hasOpenQuote = false;
};

class CsvReader {
  public:
    explicit CsvReader(std::string_view text);

    // The next row that is not blank; false at the end of the text.
    bool Next(CsvRow& row);

  private:
    void ReadDelimiter();
    // Each moves past a field and what ends it; the result is whether the row goes on.
    bool ReadField(CsvRow& row);
    bool ReadPlainField(CsvField& field);
    bool ReadQuotedField(CsvField& field);
    bool EndField();
    void SkipLineEnd();
    void KeepUnquoted(CsvField& field);
    std::string& KeptText();

    std::string_view text_;
    size_t position_ = 0;
    size_t line_ = 1;
    char delimiter_ = ',';
    // From here on no quote closes a field: one search for it is enough.
    size_t lastQuote_;
    std::deque<std::string> kept_;  // of the row; the first keptCount_ are in use
    size_t keptCount_ = 0;
};
