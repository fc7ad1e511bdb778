// Each row fills the draft that a card of any other format would.
#include "formats/csv/csv_cards.h"

#include <algorithm>
#include <istream>
#include <map>
#include <string>
#include <vector>

#include "cards/card_draft.h"
#include "formats/csv/csv_columns.h"
#include "formats/csv/csv_reader.h"
#include "platform/system/environment.h"
#include "text/ascii.h"
#include "text/charset_guess.h"
#include "text/charset_names.h"
#include "text/code_pages.h"
#include "text/lines.h"
#include "text/told_text.h"

namespace {

// Several values of a field, as web address books join them.
constexpr std::string_view valueSeparator = ":::";

class Reader {
  public:
    Reader(std::string_view utf8, CardReceiver& receiver) : rows_(utf8), receiver_(receiver) {}

    void Run() {
        CsvRow row;
        if (!rows_.Next(row) || !ReadHeadings(row)) return;
        while (rows_.Next(row)) ReadRow(row);
    }

  private:
    struct Column : CsvColumn {
        size_t label = npos;  // of a numbered telephone: the position of its label, if there is one
    };
    static constexpr size_t npos = static_cast<size_t>(-1);

    bool ReadHeadings(const CsvRow& row);
    void PairNumberedTelephones();
    void ReadRow(const CsvRow& row);
    void ReadField(size_t position, const CsvField& field);
    void ReadNumberedTelephones(const CsvRow& row);
    void AddTelephones(const CsvField& numbers, const CsvColumn& column, std::string_view label);
    void AddCategories(const CsvField& field);
    void SetText(std::string& text, std::string_view value) const;

    template <typename Function>
    static void ForEachValue(std::string_view values, std::string_view separator, Function&& function) {
        for (;;) {
            const size_t end = values.find(separator);
            std::string value(values.substr(0, end));
            MakeSingleLine(value);
            if (!value.empty()) function(value);
            if (end == std::string_view::npos) return;
            values.remove_prefix(end + separator.size());
        }
    }

    CsvReader rows_;
    CardReceiver& receiver_;
    std::vector<Column> columns_;
    std::vector<size_t> numbered_;  // positions of a row's numbered telephones
    CardDraft card_;
    std::string nameParts_[5];  // prefix, given, middle, family, suffix
};

bool Reader::ReadHeadings(const CsvRow& row) {
    bool isUnderstood = false;
    for (const CsvField& field : row.fields) {
        const ColumnMeaning meaning = columns_.emplace_back(Column{ReadHeading(field.text)}).meaning;
        isUnderstood |= meaning != ColumnMeaning::Unknown && meaning != ColumnMeaning::Note &&
                        meaning != ColumnMeaning::Department && meaning != ColumnMeaning::Categories;
    }
    PairNumberedTelephones();
    if (!isUnderstood)
        receiver_.Report(row.line, "no heading names a person, an e-mail address or a number",
                         "the file was left out; its first line must name the columns, such as First Name and "
                         "Business Fax");
    return isUnderstood;
}

// A label is that of one number: of a set whose headings stand twice, the first label belongs to the first value.
void Reader::PairNumberedTelephones() {
    std::multimap<size_t, size_t> labels;
    for (size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].meaning == ColumnMeaning::TelephoneLabel) labels.emplace(columns_[i].set, i);
    for (Column& column : columns_) {
        if (column.meaning != ColumnMeaning::TelephoneValue) continue;
        const auto label = labels.lower_bound(column.set);
        if (label == labels.end() || label->first != column.set) continue;
        column.label = label->second;
        labels.erase(label);
    }
}

void Reader::ReadRow(const CsvRow& row) {
    card_.Clear();
    for (std::string& part : nameParts_) part.clear();
    card_.line = row.line;
    if (row.hasOpenQuote)
        receiver_.Report(row.line, "a quote is opened and not closed", "it was read as text; double it or close it");
    if (row.fields.size() > columns_.size())
        receiver_.Report(row.line, "row has more fields than there are headings",
                         "the fields beyond them were left out; check the quotes of the row");
    numbered_.clear();
    for (size_t i = 0; i < row.fields.size() && i < columns_.size(); ++i)
        if (!row.fields[i].text.empty()) ReadField(i, row.fields[i]);
    ReadNumberedTelephones(row);
    for (const std::string& part : nameParts_) card_.nameFromParts.append(part).append(" ");
    MakeSingleLine(card_.nameFromParts);
    MakeWindowsLines(card_.note);
    receiver_.Receive(card_);
}

// The first column of a meaning that has a value is taken.
void Reader::SetText(std::string& text, std::string_view value) const {
    if (!text.empty()) return;
    text = value;
    MakeSingleLine(text);
}

void Reader::ReadField(size_t position, const CsvField& field) {
    switch (columns_[position].meaning) {
        case ColumnMeaning::DisplayName:
            return SetText(card_.formattedName, field.text);
        case ColumnMeaning::NamePrefix:
            return SetText(nameParts_[0], field.text);
        case ColumnMeaning::GivenName:
            return SetText(nameParts_[1], field.text);
        case ColumnMeaning::MiddleName:
            return SetText(nameParts_[2], field.text);
        case ColumnMeaning::FamilyName:
            return SetText(nameParts_[3], field.text);
        case ColumnMeaning::NameSuffix:
            return SetText(nameParts_[4], field.text);
        case ColumnMeaning::Nickname:
            return SetText(card_.nickname, field.text);
        case ColumnMeaning::Company:
            return SetText(card_.company, field.text);
        case ColumnMeaning::Department:
            return SetText(card_.department, field.text);
        case ColumnMeaning::Note:
            if (!card_.note.empty()) card_.note.append("\n");
            card_.note.append(field.text);
            return;
        case ColumnMeaning::Email:
            return ForEachValue(field.text, valueSeparator, [&](std::string_view address) {
                LinedText& email = card_.emails.Add();
                email.line = field.line;
                email.text = address;
            });
        case ColumnMeaning::Categories:
            return AddCategories(field);
        case ColumnMeaning::Telephone:
            return AddTelephones(field, columns_[position], {});
        case ColumnMeaning::TelephoneValue:
            return numbered_.push_back(position);
        case ColumnMeaning::Unknown:
        case ColumnMeaning::TelephoneLabel:
            return;
    }
}

// In the order of their numbers, behind all others.
void Reader::ReadNumberedTelephones(const CsvRow& row) {
    std::ranges::stable_sort(numbered_, {}, [&](size_t position) { return columns_[position].set; });
    for (const size_t position : numbered_) {
        const Column& column = columns_[position];
        const bool hasLabel = column.label < row.fields.size();
        AddTelephones(row.fields[position], column, hasLabel ? row.fields[column.label].text : std::string_view());
    }
}

// A heading or a label is judged once for all its numbers. A label that begins with a star is that of the preferred
// one.
void Reader::AddTelephones(const CsvField& numbers, const CsvColumn& column, std::string_view label) {
    TelephoneFacts facts = column.facts;
    std::string source = column.heading;
    if (!label.empty()) {
        facts = {};
        AddLabelFacts(label, facts);
        if (Trimmed(label).starts_with('*')) AddPreference("1", facts);
        source.append(", label ").append(label);
        MakeSingleLine(source);
        CutToTell(source, longestToldSource);
    }
    ForEachValue(numbers.text, valueSeparator, [&](std::string_view number) {
        Telephone& telephone = card_.telephones.Add();
        telephone.line = numbers.line;
        telephone.group.clear();
        telephone.source = source;
        telephone.facts = facts;
        telephone.number = number;
        CutToDialledNumber(telephone.number);
    });
}

// A star marks the groups that the web address book itself keeps.
void Reader::AddCategories(const CsvField& field) {
    const bool isJoined = field.text.find(valueSeparator) != std::string_view::npos;
    ForEachValue(field.text, isJoined ? valueSeparator : ";", [&](std::string_view name) {
        if (name.starts_with('*')) name = Trimmed(name.substr(1));
        if (name.empty()) return;
        LinedText& category = card_.categories.Add();
        category.line = field.line;
        category.text = name;
    });
}

constexpr size_t longestSample = size_t{64} * 1024;

std::string LinesBeyondAscii(std::string_view text) {
    std::string lines;
    while (!text.empty() && lines.size() < longestSample) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (!IsAscii(line)) lines.append(line.substr(0, longestSample)).push_back('\n');
    }
    return lines;
}

}  // namespace

void ReadCsvCards(std::string_view utf8, CardReceiver& receiver) {
    Reader(utf8, receiver).Run();
}

std::optional<UINT> ReadCsvFile(std::istream& file, std::optional<UINT> charset, CardReceiver& receiver) {
    std::string text;
    AppendRest(file, text);
    if (std::optional<std::string> utf8 = Utf8FromUtf16Bytes(text)) text = std::move(*utf8);
    std::optional<UINT> guessed;
    if (!IsUtf8(text)) {
        if (!charset) charset = guessed = GuessCodePage(LinesBeyondAscii(text), CodePageOfFiles());
        std::string utf8;
        if (!AppendAsUtf8(text, *charset, utf8)) AppendRepaired(text, *charset, utf8);
        text = std::move(utf8);
    }
    ReadCsvCards(WithoutUtf8Mark(text), receiver);
    if (guessed)
        receiver.Report(0, "text is not UTF-8",
                        "it looks like {} and was read so; if names look wrong, save the file as UTF-8 or name its "
                        "charset in the settings of the address book",
                        {CharsetNameOf(*guessed)});
    return guessed;
}
