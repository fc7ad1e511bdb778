// The reader keeps the cards that are open on a stack: a card inside another is one more card, and a card without END
// is one in which the others happen to lie.
#include "vcard/card_reader.h"

#include <iterator>
#include <unordered_map>

#include "text/ascii.h"
#include "vcard/segments.h"
#include "vcard/value_text.h"

void CardDraft::Clear() {
    line = 0;
    version = VCardVersion::V30;
    isGroup = false;
    for (std::string* text : {&formattedName, &nameFromParts, &nickname, &company, &department, &note, &uid})
        text->clear();
    emails.Clear();
    telephones.Clear();
    labels.Clear();
    members.Clear();
}

namespace {

// More open cards than this are cards without END: the outermost is complete then.
constexpr size_t mostOpenCards = 16;

class Reader {
  public:
    explicit Reader(CardReceiver& receiver) : receiver_(receiver) {}

    void Run(SegmentReader segments) {
        std::string_view segment;
        while (segments.Next(segment)) {
            lines_ = LineReader(segment, lines_.NextNumber());
            ContentLine line;
            while (lines_.Next(line)) Read(line);
        }
        while (depth_ > 0) Abandon(depth_ - 1);
    }

  private:
    using Handler = void (Reader::*)(CardDraft&);
    struct KnownProperty {
        std::string_view name;
        Handler handler;
    };
    static const KnownProperty knownProperties[];

    void Read(ContentLine& line);
    void ReadValue(CardDraft& card, Handler handler, ContentLine& line);
    void Begin(size_t line);
    void End();
    void Abandon(size_t position);
    void Finish(size_t position);
    void ReportStray(size_t line);

    void ReadVersion(CardDraft& card);
    void ReadKind(CardDraft& card);
    void ReadFormattedName(CardDraft& card);
    void ReadNameParts(CardDraft& card);
    void ReadNickname(CardDraft& card);
    void ReadOrganisation(CardDraft& card);
    void ReadNote(CardDraft& card);
    void ReadUid(CardDraft& card);
    void ReadEmail(CardDraft& card);
    void ReadTelephone(CardDraft& card);
    void ReadLabel(CardDraft& card);
    void ReadMember(CardDraft& card);

    // The value without escapes.
    void AppendText(const CardDraft& card, std::string& text) { AppendUnescaped(value_, card.version, text); }

    LineReader lines_{{}};
    CardReceiver& receiver_;
    Property property_;
    std::string value_;  // of property_, decoded
    size_t line_ = 0;    // of property_
    bool inBase64_ = false;
    bool strayReported_ = false;
    bool guessReported_ = false;
    std::unordered_map<std::string, TelephoneFacts> labelFacts_;  // of the card at its end, by group
    std::vector<CardDraft> open_;                                 // open_[depth_] and later ones wait to be used again
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
    {"X-ABLABEL", &Reader::ReadLabel},
    {"KIND", &Reader::ReadKind},
    {"X-ADDRESSBOOKSERVER-KIND", &Reader::ReadKind},
    {"MEMBER", &Reader::ReadMember},
    {"X-ADDRESSBOOKSERVER-MEMBER", &Reader::ReadMember},
};

void Reader::Read(ContentLine& line) {
    if (!property_.Parse(line)) {
        // Some exporters leave the lines of a base64 value unfolded.
        if (!inBase64_) ReportStray(line.number);
        return;
    }
    inBase64_ = false;
    line_ = line.number;
    if (property_.group.empty() && EqualsIgnoringCase(property_.name, "BEGIN")) {
        if (EqualsIgnoringCase(Trimmed(property_.rawValue), "VCARD")) Begin(line.number);
        return;
    }
    if (depth_ == 0) return ReportStray(line.number);
    if (property_.group.empty() && EqualsIgnoringCase(property_.name, "END")) {
        if (EqualsIgnoringCase(Trimmed(property_.rawValue), "VCARD")) End();
        return;
    }
    CardDraft& card = open_[depth_ - 1];
    if (IsTelephoneName(property_.name)) return ReadValue(card, &Reader::ReadTelephone, line);
    for (const KnownProperty& known : knownProperties)
        if (EqualsIgnoringCase(known.name, property_.name)) return ReadValue(card, known.handler, line);
    inBase64_ = property_.IsBase64();
    // A quoted-printable value of no interest must still be passed over to its end.
    if (!property_.parameters.empty() && property_.IsQuotedPrintable())
        while (Trimmed(line.raw).ends_with('=') && lines_.JoinNext(line)) {
        }
}

void Reader::ReadValue(CardDraft& card, Handler handler, ContentLine& line) {
    if (!property_.parameters.empty() && property_.IsQuotedPrintable()) {
        while (Trimmed(line.raw).ends_with('=') && lines_.JoinNext(line)) line.folded = true;
        property_.Parse(line);
    }
    value_.clear();
    switch (AppendDecodedValue(property_, card.version, value_)) {
        case ValueProblem::BrokenText:
            receiver_.Report(line_, "text is not in its CHARSET " + std::string(property_.ParameterValue("CHARSET")),
                             "what could not be read is shown as U+FFFD; correct the line");
            break;
        case ValueProblem::UnknownCharset:
            receiver_.Report(line_, "unknown CHARSET " + std::string(property_.ParameterValue("CHARSET")),
                             "the text was read as UTF-8 or, where that fails, Windows-1252; save the file as UTF-8");
            break;
        case ValueProblem::GuessedCharset:
            if (!guessReported_)
                receiver_.Report(line_, "text is not UTF-8 and has no CHARSET",
                                 "it was read as Windows-1252; save the file as UTF-8 if names look wrong");
            guessReported_ = true;
            break;
        case ValueProblem::None:
            break;
    }
    (this->*handler)(card);
}

void Reader::Begin(size_t line) {
    if (depth_ == mostOpenCards) Abandon(0);
    if (depth_ == open_.size()) open_.emplace_back();
    CardDraft& card = open_[depth_++];
    card.Clear();
    card.line = line;
}

void Reader::End() {
    Finish(depth_ - 1);
}

void Reader::Abandon(size_t position) {
    receiver_.Report(open_[position].line, "card without END:VCARD",
                     "add the line; the card was read as far as it goes");
    Finish(position);
}

void Reader::Finish(size_t position) {
    CardDraft& card = open_[position];
    labelFacts_.clear();
    for (const Label& label : card.labels) AddLabelFacts(label.text, labelFacts_[LowerCased(label.group)]);
    if (!labelFacts_.empty()) {
        for (Telephone& telephone : card.telephones) {
            const auto found = labelFacts_.find(LowerCased(telephone.group));
            if (found != labelFacts_.end()) telephone.facts.Add(found->second);
        }
    }
    MakeWindowsLines(card.note);
    receiver_.Receive(card);
    const auto place = open_.begin() + static_cast<std::ptrdiff_t>(position);
    std::rotate(place, place + 1, open_.begin() + static_cast<std::ptrdiff_t>(depth_));
    --depth_;
}

// Once for a file: text around cards is common and can be long.
void Reader::ReportStray(size_t line) {
    if (!strayReported_)
        receiver_.Report(line, depth_ == 0 ? "text outside of a card" : "line without a property",
                         "it was passed over, and so is any more of it in this file");
    strayReported_ = true;
}

void Reader::ReadVersion(CardDraft& card) {
    const std::string_view version = Trimmed(value_);
    card.version = version == "2.1" ? VCardVersion::V21 : version == "4.0" ? VCardVersion::V40 : VCardVersion::V30;
}

void Reader::ReadKind(CardDraft& card) {
    card.isGroup = EqualsIgnoringCase(Trimmed(value_), "group");
}

void Reader::ReadFormattedName(CardDraft& card) {
    if (!card.formattedName.empty()) return;
    AppendText(card, card.formattedName);
    MakeSingleLine(card.formattedName);
}

// Family; given; further; before; after. In the order in which they are spoken: before, given, further, family, after.
void Reader::ReadNameParts(CardDraft& card) {
    constexpr size_t spoken[] = {3, 1, 2, 0, 4};
    if (!card.nameFromParts.empty()) return;
    std::string_view parts[std::size(spoken)];
    size_t count = 0;
    ForEachComponent(value_, ';', [&](std::string_view part) {
        if (count < std::size(parts)) parts[count++] = part;
    });
    for (const size_t part : spoken) {
        ForEachComponent(parts[part], ',', [&](std::string_view name) {
            AppendUnescaped(name, card.version, card.nameFromParts);
            card.nameFromParts.push_back(' ');
        });
    }
    MakeSingleLine(card.nameFromParts);
}

void Reader::ReadNickname(CardDraft& card) {
    if (!card.nickname.empty()) return;
    AppendText(card, card.nickname);
    MakeSingleLine(card.nickname);
}

void Reader::ReadOrganisation(CardDraft& card) {
    if (!card.company.empty() || !card.department.empty()) return;
    bool first = true;
    ForEachComponent(value_, ';', [&](std::string_view part) {
        std::string& text = first ? card.company : card.department;
        if (!first && !text.empty() && !Trimmed(part).empty()) text.append(", ");
        AppendUnescaped(part, card.version, text);
        first = false;
    });
    MakeSingleLine(card.company);
    MakeSingleLine(card.department);
}

void Reader::ReadNote(CardDraft& card) {
    if (!card.note.empty()) card.note.append("\n");
    AppendText(card, card.note);
}

void Reader::ReadUid(CardDraft& card) {
    if (card.uid.empty()) card.uid = Trimmed(value_);
}

void Reader::ReadEmail(CardDraft& card) {
    const std::string_view address = Trimmed(value_);
    if (address.empty()) return;
    LinedText& email = card.emails.Add();
    email.line = line_;
    email.text = StartsWithIgnoringCase(address, "mailto:") ? address.substr(7) : address;
}

void Reader::ReadTelephone(CardDraft& card) {
    Telephone& telephone = card.telephones.Add();
    telephone.line = line_;
    telephone.group = property_.group;
    telephone.facts = ReadTelephoneFacts(property_);
    telephone.number.clear();
    AppendText(card, telephone.number);
    telephone.number = DialledNumber(telephone.number);
    MakeSingleLine(telephone.number);
}

void Reader::ReadLabel(CardDraft& card) {
    if (property_.group.empty()) return;
    Label& label = card.labels.Add();
    label.group = property_.group;
    label.text.clear();
    AppendText(card, label.text);
}

void Reader::ReadMember(CardDraft& card) {
    const std::string_view address = Trimmed(value_);
    if (address.empty()) return;
    LinedText& member = card.members.Add();
    member.line = line_;
    member.text = address;
}

}  // namespace

void ReadCards(std::istream& text, CardReceiver& receiver) {
    Reader(receiver).Run(SegmentReader(text));
}
