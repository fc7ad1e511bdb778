// A record goes to its entry line by line. Values are decoded only if their attribute means something.
#include "formats/ldif/ldif_cards.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "cards/directory_entry.h"
#include "formats/ldif/ldif_lines.h"
#include "platform/system/environment.h"
#include "text/ascii.h"
#include "text/base64.h"
#include "text/charset_guess.h"
#include "text/charset_names.h"
#include "text/code_pages.h"
#include "text/segments.h"

namespace {

// As much of the text that is not UTF-8 is looked at to guess its character set.
constexpr size_t longestSample = size_t{64} * 1024;

// One line taken apart: "description: text", "description:: base64", "description:< address of a file".
struct LdifValue {
    enum class Form { Text, Base64, Address };
    std::string_view description;
    Form form = Form::Text;
    std::string_view raw;   // folds may be in it
    bool isFolded = false;  // they are
};

bool IsDescription(std::string_view text) {
    const auto isNameCharacter = [](char c) {
        const char lower = ToLowerAscii(c);
        return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9');
    };
    // The options of parts of a list have a "=" and a "*".
    return !text.empty() && isNameCharacter(text.front()) && std::ranges::all_of(text, [&](char c) {
        return isNameCharacter(c) || std::string_view("-_.;=*").find(c) != std::string_view::npos;
    });
}

class Reader {
  public:
    Reader(std::optional<UINT> charset, CardReceiver& receiver)
        : receiver_(receiver), entry_(receiver), charset_(charset) {}

    void Run(SegmentReader segments) {
        std::string_view segment;
        while (segments.Next(segment)) {
            lines_ = LdifLines(segment, lines_.NextNumber());
            ContentLine line;
            while (lines_.Next(line)) Read(line);
        }
        EndRecord();
    }

    std::optional<UINT> GuessedCharset() const { return guessed_ ? charset_ : std::nullopt; }

  private:
    // Between records; in an entry; in a record that changes one; in lines to which no name belongs.
    enum class Place { Between, Entry, Change, Nameless };

    static bool TakeApart(const ContentLine& line, LdifValue& value, std::string& unfolded);
    void Read(const ContentLine& line);
    void ReadNameless(const LdifValue& value);
    void ReadChangeType(const LdifValue& value);
    void ReadAttribute(const LdifValue& value);
    void EndRecord();
    // The value as UTF-8, in text_; false for one that is not to be had, which is reported.
    bool Decode(const LdifValue& value);
    std::string_view BytesOf(const LdifValue& value, std::string& buffer, bool& isGood) const;
    void GuessCharset();
    void ReportStray(const ContentLine& line);

    LdifLines lines_{{}};
    CardReceiver& receiver_;
    DirectoryEntry entry_;
    std::optional<UINT> charset_;  // of text that is not UTF-8
    bool guessed_ = false;
    ContentLine line_;
    std::string unfolded_;  // the line, where its folds stand before its value
    std::string bytes_;     // of a value, where they are not in the line itself
    std::string text_;
    Place place_ = Place::Between;
    size_t namelessLine_ = 0;
    bool isEndOfSearch_ = false;  // of lines without a name: what a search program writes behind its entries
    bool hasFaxNumber_ = false;   // of lines without a name
};

bool Reader::TakeApart(const ContentLine& line, LdifValue& value, std::string& unfolded) {
    std::string_view text = line.raw;
    value.isFolded = line.folded;
    if (line.folded && text.find_first_of("\r\n") < text.find(':') + 2) {
        unfolded.clear();
        AppendUnfolded(text, false, unfolded);
        text = unfolded;
        value.isFolded = false;
    }
    const size_t colon = text.find(':');
    if (colon == std::string_view::npos || !IsDescription(text.substr(0, colon))) return false;
    value.description = text.substr(0, colon);
    value.raw = text.substr(colon + 1);
    value.form = value.raw.starts_with(':')   ? LdifValue::Form::Base64
                 : value.raw.starts_with('<') ? LdifValue::Form::Address
                                              : LdifValue::Form::Text;
    if (value.form != LdifValue::Form::Text) value.raw.remove_prefix(1);
    return true;
}

void Reader::Read(const ContentLine& line) {
    if (line.raw.empty()) return EndRecord();
    line_ = line;
    LdifValue value;
    if (!TakeApart(line, value, unfolded_)) return ReportStray(line);
    if (EqualsIgnoringCase(value.description, "dn")) {
        EndRecord();
        place_ = Place::Entry;
        return entry_.Begin(line.number, Decode(value) ? text_ : std::string_view());
    }
    if (place_ == Place::Change) return;
    if (place_ != Place::Entry) return ReadNameless(value);
    if (EqualsIgnoringCase(value.description, "changetype")) return ReadChangeType(value);
    // What a server is told with a change is nothing of the entry.
    if (!EqualsIgnoringCase(value.description, "control")) ReadAttribute(value);
}

void Reader::ReadNameless(const LdifValue& value) {
    if (place_ == Place::Between) {
        if (EqualsIgnoringCase(value.description, "version")) {
            if (Decode(value) && Trimmed(text_) != "1")
                receiver_.Report(line_.number, "version {} of the format is not known",
                                 "the file was read as version 1", {text_});
            return;
        }
        place_ = Place::Nameless;
        namelessLine_ = line_.number;
        isEndOfSearch_ = false;
        hasFaxNumber_ = false;
    }
    if (EqualsIgnoringCase(value.description, "result")) {
        isEndOfSearch_ = true;
        int code = 0;
        if (!Decode(value)) return;
        std::from_chars(text_.data(), text_.data() + text_.size(), code);
        if (code != 0)
            receiver_.Report(line_.number, "the search that made the file ended with \"{}\"",
                             "entries may be missing in it; make it again", {text_});
    } else if (EqualsIgnoringCase(value.description, "ref")) {
        isEndOfSearch_ = true;
        if (Decode(value))
            receiver_.Report(line_.number, "further entries are on another server: {}",
                             "they are not in the file; export them there", {text_});
    } else {
        isEndOfSearch_ = isEndOfSearch_ || EqualsIgnoringCase(value.description, "search");
        const AttributeMeaning meaning = MeaningOfAttribute(value.description);
        hasFaxNumber_ = hasFaxNumber_ || (meaning.field == DirectoryField::Telephone && meaning.facts.fax);
    }
}

void Reader::ReadChangeType(const LdifValue& value) {
    if (!Decode(value) || EqualsIgnoringCase(Trimmed(text_), "add")) return;
    place_ = Place::Change;
    receiver_.Report(line_.number, "this record changes an entry: {}",
                     "the change was not made; export the entries as they are", {text_});
}

void Reader::ReadAttribute(const LdifValue& value) {
    const AttributeMeaning meaning = MeaningOfAttribute(value.description);
    const bool isWanted = meaning.field != DirectoryField::None;
    if ((isWanted || value.form == LdifValue::Form::Address) && Decode(value))
        entry_.Add(line_.number, value.description, meaning, text_);
}

void Reader::EndRecord() {
    if (place_ == Place::Entry) entry_.Finish();
    if (place_ == Place::Nameless && !isEndOfSearch_)
        receiver_.Report(namelessLine_,
                         hasFaxNumber_ ? "lines with a fax number, to which no name (dn) belongs"
                                       : "lines to which no name (dn) belongs",
                         "they were left out; begin each entry with its name, and end it with the only empty line");
    place_ = Place::Between;
}

std::string_view Reader::BytesOf(const LdifValue& value, std::string& buffer, bool& isGood) const {
    isGood = true;
    buffer.clear();
    if (value.form == LdifValue::Form::Base64) {
        isGood = AppendBase64(value.raw, buffer);
        return buffer;
    }
    if (!value.isFolded) return Trimmed(value.raw);
    AppendUnfolded(value.raw, false, buffer);
    return Trimmed(buffer);
}

bool Reader::Decode(const LdifValue& value) {
    text_.clear();
    bool isGood = true;
    const std::string_view bytes = BytesOf(value, bytes_, isGood);
    if (value.form == LdifValue::Form::Address) {
        receiver_.Report(line_.number, "the value of {} stands in another file",
                         "it is missing, for no other file is opened; write it into this one", {value.description});
        return false;
    }
    if (!isGood) {
        receiver_.Report(line_.number, "the value of {} is no base64", "it was left out; correct the line",
                         {value.description});
        return false;
    }
    if (AppendAsUtf8(bytes, CP_UTF8, text_)) return true;
    if (!charset_) GuessCharset();
    if (AppendAsUtf8(bytes, *charset_, text_)) return true;
    receiver_.Report(line_.number, "text is neither UTF-8 nor {}",
                     "what could not be read is replaced; correct the line", {CharsetNameOf(*charset_)});
    AppendRepaired(bytes, *charset_, text_);
    return true;
}

// From this line on, as far as the text is at hand: the more names, the surer the guess.
void Reader::GuessCharset() {
    std::string sample;
    std::string unfolded;
    std::string buffer;
    LdifLines ahead = lines_;
    ContentLine line = line_;
    LdifValue value;
    do {
        const bool isWanted = TakeApart(line, value, unfolded) && value.form != LdifValue::Form::Address &&
                              (EqualsIgnoringCase(value.description, "dn") ||
                               MeaningOfAttribute(value.description).field != DirectoryField::None);
        if (!isWanted) continue;
        bool isGood = true;
        const std::string_view bytes = BytesOf(value, buffer, isGood);
        if (isGood && !IsUtf8(bytes)) sample.append(bytes.substr(0, longestSample)).push_back('\n');
    } while (sample.size() < longestSample && ahead.Next(line));
    charset_ = GuessCodePage(sample, CodePageOfFiles());
    guessed_ = true;
    receiver_.Report(line_.number, "text is not UTF-8, as it should be",
                     "it looks like {} and was read so; if names look wrong, save the file as UTF-8 or name its "
                     "charset in the settings of the address book",
                     {CharsetNameOf(*charset_)});
}

void Reader::ReportStray(const ContentLine& line) {
    // Between the changes of a record.
    if (place_ == Place::Change && Trimmed(line.raw) == "-") return;
    if (line.raw.starts_with(' '))
        receiver_.Report(line.number, "line continues none",
                         "it was passed over; only a line above it can go on in it");
    else
        receiver_.Report(line.number, "line is neither an attribute nor a comment",
                         "it was passed over; a line that goes on in the next one has a blank before the rest");
}

}  // namespace

std::optional<UINT> ReadLdifCards(std::istream& text, std::optional<UINT> charset, CardReceiver& receiver) {
    Reader reader(charset, receiver);
    reader.Run(SegmentReader(text, "dn:"));
    return reader.GuessedCharset();
}
