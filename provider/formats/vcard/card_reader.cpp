// The reader keeps the cards that are open on a stack: a card inside another is one more card, and a card without END
// is one in which the others happen to lie.
#include "formats/vcard/card_reader.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "cards/card_draft.h"
#include "formats/vcard/property.h"
#include "formats/vcard/value_text.h"
#include "platform/system/environment.h"
#include "text/ascii.h"
#include "text/charset_guess.h"
#include "text/charset_names.h"
#include "text/code_pages.h"
#include "text/lines.h"
#include "text/segments.h"
#include "text/told_text.h"

namespace {

// More open cards than this are cards without END: the outermost is complete then.
constexpr size_t mostOpenCards = 16;

// A custom label: it belongs to the properties of its group.
struct Label {
    std::string group;
    std::string text;
};

struct LabelFacts {
    TelephoneFacts facts;
    std::string source;
};

bool EndsWithEquals(std::string_view raw) {
    return TrimmedAtEnd(raw).ends_with('=');
}

struct OpenCard {
    CardDraft draft;
    VCardVersion version = VCardVersion::V30;
    std::string nameParts;  // of N, as they stand
    ReusedList<Label> labels;

    void Clear() {
        draft.Clear();
        version = VCardVersion::V30;
        nameParts.clear();
        labels.Clear();
    }
};

// As much of the unlabelled text is looked at to guess its character set.
constexpr size_t longestSample = size_t{64} * 1024;

class Reader {
  public:
    Reader(std::optional<UINT> charset, CardReceiver& receiver) : receiver_(receiver), charset_(charset) {}

    void Run(SegmentReader segments) {
        std::string_view segment;
        while (segments.Next(segment)) {
            lines_ = LineReader(segment, lines_.NextNumber());
            SetPassedOver({});
            ContentLine line;
            while (lines_.Next(line)) Read(line);
        }
        while (depth_ > 0) Abandon(depth_ - 1);
    }

    std::optional<UINT> GuessedCharset() const { return guessed_ ? charset_ : std::nullopt; }

  private:
    using Handler = void (Reader::*)(OpenCard&);
    struct KnownProperty {
        std::string_view name;
        Handler handler;
    };
    static const KnownProperty knownProperties[];
    static Handler FindHandler(std::string_view name);

    void Read(ContentLine& line);
    void ReadValue(OpenCard& card, Handler handler, ContentLine& line);
    void PassOver(ContentLine& line);
    void SetPassedOver(const ContentLine& line) {
        passedOver_ = line;
        passedOverIsBase64_.reset();
    }
    void DecodeText(VCardVersion version, const ContentLine& line);
    // Of what only messages show: property names and parameters.
    void AppendAside(std::string_view bytes, std::string& utf8) const;
    void GuessCharset(const ContentLine& line);
    bool IsUnfoldedBase64();
    void Begin(size_t line);
    void Abandon(size_t position);
    void Finish(size_t position);
    void AddLabels(OpenCard& card);
    void SpeakName(OpenCard& card);
    void ReportStray(size_t line);

    void ReadVersion(OpenCard& card);
    void ReadKind(OpenCard& card);
    void ReadFormattedName(OpenCard& card);
    void ReadNameParts(OpenCard& card);
    void ReadNickname(OpenCard& card);
    void ReadOrganisation(OpenCard& card);
    void ReadNote(OpenCard& card);
    void ReadUid(OpenCard& card);
    void ReadEmail(OpenCard& card);
    void ReadTelephone(OpenCard& card);
    void ReadLabel(OpenCard& card);
    void ReadMember(OpenCard& card);
    void ReadCategories(OpenCard& card);

    // The value of an address or identifier, as it stands but for what no line holds.
    std::string_view SingleLineValue() {
        MakeSingleLine(value_);
        return value_;
    }
    // The value without escapes.
    void AppendText(const OpenCard& card, std::string& text) { AppendUnescaped(value_, card.version, text); }

    LineReader lines_{{}};
    CardReceiver& receiver_;
    std::optional<UINT> charset_;  // of text that is not UTF-8 and has no label
    bool guessed_ = false;
    Property property_;
    std::string bytes_;                       // of the value of property_, where they are not in the line itself
    std::string value_;                       // of property_, as UTF-8, escapes still in it
    size_t line_ = 0;                         // of property_
    ContentLine passedOver_;                  // the last property that nobody asked for
    std::optional<bool> passedOverIsBase64_;  // once it was looked at
    bool strayReported_ = false;
    std::map<std::string, LabelFacts> labelFacts_;  // of the card at its end, by group
    std::vector<OpenCard> open_;                    // open_[depth_] and later ones wait to be used again
    size_t depth_ = 0;
};

const Reader::KnownProperty Reader::knownProperties[] = {
    {"VERSION", &Reader::ReadVersion},
    {"FN", &Reader::ReadFormattedName},
    {"N", &Reader::ReadNameParts},
    {"ORG", &Reader::ReadOrganisation},
    {"NOTE", &Reader::ReadNote},
    {"EMAIL", &Reader::ReadEmail},
    {"UID", &Reader::ReadUid},
    {"NICKNAME", &Reader::ReadNickname},
    {"CATEGORIES", &Reader::ReadCategories},
    {"X-ABLABEL", &Reader::ReadLabel},
    {"KIND", &Reader::ReadKind},
    {"X-ADDRESSBOOKSERVER-KIND", &Reader::ReadKind},
    {"MEMBER", &Reader::ReadMember},
    {"X-ADDRESSBOOKSERVER-MEMBER", &Reader::ReadMember},
};

Reader::Handler Reader::FindHandler(std::string_view name) {
    if (IsTelephoneName(name)) return &Reader::ReadTelephone;
    const char first = ToUpperAscii(name.front());
    for (const KnownProperty& known : knownProperties)
        if (known.name.size() == name.size() && known.name.front() == first && EqualsIgnoringCase(known.name, name))
            return known.handler;
    return nullptr;
}

void Reader::Read(ContentLine& line) {
    if (!property_.ParseName(line)) {
        if (!IsUnfoldedBase64()) ReportStray(line.number);
        return;
    }
    line_ = line.number;
    const bool isBegin = EqualsIgnoringCase(property_.name, "BEGIN");
    if (property_.group.empty() && (isBegin || EqualsIgnoringCase(property_.name, "END"))) {
        property_.ParseRest();
        if (!EqualsIgnoringCase(Trimmed(property_.rawValue), "VCARD")) return;
        if (isBegin) return Begin(line.number);
        if (depth_ > 0) return Finish(depth_ - 1);
    }
    if (depth_ == 0) return ReportStray(line.number);
    const Handler handler = FindHandler(property_.name);
    if (handler == nullptr) return PassOver(line);
    SetPassedOver({});
    ReadValue(open_[depth_ - 1], handler, line);
}

// A quoted-printable value of no interest must still be passed over to its end.
void Reader::PassOver(ContentLine& line) {
    SetPassedOver(line);
    if (!EndsWithEquals(line.raw)) return;
    property_.ParseRest();
    if (!property_.IsQuotedPrintable()) return;
    while (EndsWithEquals(line.raw) && lines_.JoinNext(line)) {
    }
}

// Some exporters leave the lines of a base64 value unfolded. The property above them is looked at once.
bool Reader::IsUnfoldedBase64() {
    if (!passedOverIsBase64_) {
        passedOverIsBase64_ = false;
        if (!passedOver_.raw.empty() && property_.ParseName(passedOver_)) {
            property_.ParseRest();
            passedOverIsBase64_ = property_.IsBase64();
        }
    }
    return *passedOverIsBase64_;
}

void Reader::ReadValue(OpenCard& card, Handler handler, ContentLine& line) {
    property_.ParseRest();
    if (!property_.parameters.empty() && property_.IsQuotedPrintable() && EndsWithEquals(line.raw)) {
        while (EndsWithEquals(line.raw) && lines_.JoinNext(line)) line.folded = true;
        property_.ParseName(line);
        property_.ParseRest();
    }
    DecodeText(card.version, line);
    (this->*handler)(card);
}

void Reader::DecodeText(VCardVersion version, const ContentLine& line) {
    value_.clear();
    const std::string_view bytes = DecodeValue(property_, version, bytes_);
    const std::string_view label = property_.ParameterValue("CHARSET");
    if (!label.empty()) {
        const std::optional<UINT> codePage = CodePageOfCharset(label);
        if (codePage && AppendAsUtf8(bytes, *codePage, value_)) return;
        std::string name;
        AppendAside(label, name);
        if (codePage) {
            receiver_.Report(line_, "text is not in its CHARSET {}",
                             "what could not be read is replaced; correct the line", {name});
            return AppendRepaired(bytes, *codePage, value_);
        }
        receiver_.Report(line_, "unknown CHARSET {}", "the text was read as if it had none; save the file as UTF-8",
                         {name});
    }
    if (AppendAsUtf8(bytes, CP_UTF8, value_)) return;
    if (!charset_) GuessCharset(line);
    if (AppendAsUtf8(bytes, *charset_, value_)) return;
    receiver_.Report(line_, "text is neither UTF-8 nor {}", "what could not be read is replaced; correct the line",
                     {CharsetNameOf(*charset_)});
    AppendRepaired(bytes, *charset_, value_);
}

void Reader::AppendAside(std::string_view bytes, std::string& utf8) const {
    if (AppendAsUtf8(bytes, CP_UTF8, utf8) || (charset_ && AppendAsUtf8(bytes, *charset_, utf8))) return;
    AppendRepaired(bytes, CP_UTF8, utf8);
}

// From this line on, as far as the text is at hand: the more names, the surer the guess.
void Reader::GuessCharset(const ContentLine& first) {
    std::string sample;
    std::string buffer;
    LineReader ahead = lines_;
    ContentLine line = first;
    Property property;
    do {
        if (!property.ParseName(line) || FindHandler(property.name) == nullptr) continue;
        property.ParseRest();
        if (!property.ParameterValue("CHARSET").empty()) continue;
        const std::string_view bytes = DecodeValue(property, VCardVersion::V30, buffer);
        if (!IsUtf8(bytes)) sample.append(bytes.substr(0, longestSample)).push_back('\n');
    } while (sample.size() < longestSample && ahead.Next(line));
    charset_ = GuessCodePage(sample, CodePageOfFiles());
    guessed_ = true;
    receiver_.Report(line_, "text is not UTF-8 and has no CHARSET",
                     "it looks like {} and was read so; if names look wrong, save the file as UTF-8 or name its "
                     "charset in the settings of the address book",
                     {CharsetNameOf(*charset_)});
}

void Reader::Begin(size_t line) {
    if (depth_ == mostOpenCards) Abandon(0);
    if (depth_ == open_.size()) open_.emplace_back();
    OpenCard& card = open_[depth_++];
    card.Clear();
    card.draft.line = line;
}

void Reader::Abandon(size_t position) {
    receiver_.Report(open_[position].draft.line, "card without END:VCARD",
                     "add the line; the card was read as far as it goes");
    Finish(position);
}

void Reader::Finish(size_t position) {
    OpenCard& card = open_[position];
    if (!card.labels.IsEmpty()) AddLabels(card);
    if (card.draft.formattedName.empty()) SpeakName(card);
    MakeWindowsLines(card.draft.note);
    receiver_.Receive(card.draft);
    const auto place = open_.begin() + static_cast<std::ptrdiff_t>(position);
    std::rotate(place, place + 1, open_.begin() + static_cast<std::ptrdiff_t>(depth_));
    --depth_;
}

void Reader::AddLabels(OpenCard& card) {
    labelFacts_.clear();
    for (const Label& label : card.labels) {
        LabelFacts& said = labelFacts_[LowerCased(label.group)];
        AddLabelFacts(label.text, said.facts);
        if (said.source.size() > longestToldSource) continue;
        said.source.append(", label ").append(label.text);
        CutToTell(said.source, longestToldSource);
    }
    for (Telephone& telephone : card.draft.telephones) {
        const auto found = labelFacts_.find(LowerCased(telephone.group));
        if (found == labelFacts_.end()) continue;
        telephone.facts.Add(found->second.facts);
        telephone.source.append(found->second.source);
    }
}

// Once for a file: text around cards is common and can be long.
void Reader::ReportStray(size_t line) {
    if (!strayReported_)
        receiver_.Report(line, depth_ == 0 ? "text outside of a card" : "line without a property",
                         "it was passed over, and so is any more of it in this file");
    strayReported_ = true;
}

void Reader::ReadVersion(OpenCard& card) {
    const std::string_view version = Trimmed(value_);
    card.version = version == "2.1" ? VCardVersion::V21 : version == "4.0" ? VCardVersion::V40 : VCardVersion::V30;
}

void Reader::ReadKind(OpenCard& card) {
    card.draft.isGroup = EqualsIgnoringCase(Trimmed(value_), "group");
}

void Reader::ReadFormattedName(OpenCard& card) {
    if (!card.draft.formattedName.empty()) return;
    AppendText(card, card.draft.formattedName);
    MakeSingleLine(card.draft.formattedName);
}

void Reader::ReadNameParts(OpenCard& card) {
    if (card.nameParts.empty()) card.nameParts = value_;
}

// Family; given; further; before; after. In the order in which they are spoken: before, given, further, family, after.
void Reader::SpeakName(OpenCard& card) {
    constexpr size_t spoken[] = {3, 1, 2, 0, 4};
    std::string_view parts[std::size(spoken)];
    size_t count = 0;
    ForEachComponent(card.nameParts, ';', [&](std::string_view part) {
        if (count < std::size(parts)) parts[count++] = part;
    });
    for (const size_t part : spoken) {
        ForEachComponent(parts[part], ',', [&](std::string_view name) {
            AppendUnescaped(name, card.version, card.draft.nameFromParts);
            card.draft.nameFromParts.push_back(' ');
        });
    }
    MakeSingleLine(card.draft.nameFromParts);
}

void Reader::ReadNickname(OpenCard& card) {
    if (!card.draft.nickname.empty()) return;
    AppendText(card, card.draft.nickname);
    MakeSingleLine(card.draft.nickname);
}

void Reader::ReadOrganisation(OpenCard& card) {
    if (!card.draft.company.empty() || !card.draft.department.empty()) return;
    bool first = true;
    ForEachComponent(value_, ';', [&](std::string_view part) {
        std::string& text = first ? card.draft.company : card.draft.department;
        if (!first && !text.empty() && !Trimmed(part).empty()) text.append(", ");
        AppendUnescaped(part, card.version, text);
        first = false;
    });
    MakeSingleLine(card.draft.company);
    MakeSingleLine(card.draft.department);
}

void Reader::ReadNote(OpenCard& card) {
    if (!card.draft.note.empty()) card.draft.note.append("\n");
    AppendText(card, card.draft.note);
}

void Reader::ReadUid(OpenCard& card) {
    if (card.draft.uid.empty()) card.draft.uid = SingleLineValue();
}

void Reader::ReadEmail(OpenCard& card) {
    std::string_view address = SingleLineValue();
    if (StartsWithIgnoringCase(address, "mailto:")) address = Trimmed(address.substr(7));
    if (address.empty()) return;
    LinedText& email = card.draft.emails.Add();
    email.line = line_;
    email.text = address;
}

void Reader::ReadTelephone(OpenCard& card) {
    Telephone& telephone = card.draft.telephones.Add();
    telephone.line = line_;
    telephone.group = property_.group;
    telephone.source.clear();
    AppendAside(property_.head, telephone.source);
    CutToTell(telephone.source, longestToldSource);
    telephone.facts = FactsOfName(property_.name);
    property_.ForEachType([&](std::string_view type) { AddTypeFacts(type, telephone.facts); });
    AddGroupFacts(property_.group, telephone.facts);
    AddPreference(property_.ParameterValue("PREF"), telephone.facts);
    telephone.number.clear();
    AppendText(card, telephone.number);
    CutToDialledNumber(telephone.number);
    MakeSingleLine(telephone.number);
}

void Reader::ReadLabel(OpenCard& card) {
    if (property_.group.empty()) return;
    Label& label = card.labels.Add();
    label.group = property_.group;
    label.text.clear();
    AppendText(card, label.text);
}

void Reader::ReadMember(OpenCard& card) {
    const std::string_view address = SingleLineValue();
    if (address.empty()) return;
    LinedText& member = card.draft.members.Add();
    member.line = line_;
    member.text = address;
}

void Reader::ReadCategories(OpenCard& card) {
    ForEachComponent(value_, ',', [&](std::string_view part) {
        std::string name;
        AppendUnescaped(part, card.version, name);
        MakeSingleLine(name);
        if (name.empty()) return;
        LinedText& category = card.draft.categories.Add();
        category.line = line_;
        category.text = std::move(name);
    });
}

}  // namespace

std::optional<UINT> ReadCards(std::istream& text, std::optional<UINT> charset, CardReceiver& receiver) {
    Reader reader(charset, receiver);
    reader.Run(SegmentReader(text, "BEGIN:VCARD"));
    return reader.GuessedCharset();
}
