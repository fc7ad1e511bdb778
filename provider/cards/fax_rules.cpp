// Words that say what a telephone number is for, and the verdicts drawn from them.
#include "cards/fax_rules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

#include "text/ascii.h"

namespace {

struct Word {
    std::string_view text;
    TelephoneFacts facts;
};

constexpr TelephoneFacts fax = {.fax = true};
constexpr TelephoneFacts work = {.work = true};
constexpr TelephoneFacts home = {.home = true};
constexpr TelephoneFacts other = {.other = true};
constexpr TelephoneFacts workFax = {.fax = true, .work = true};
constexpr TelephoneFacts homeFax = {.fax = true, .home = true};
constexpr TelephoneFacts otherFax = {.fax = true, .other = true};
constexpr TelephoneFacts preferred = {.preference = 1};

// As exporters write them in TYPE, in property names and as names of groups; without "X-", "-", "_" and blanks.
constexpr Word words[] = {
    {"FAX", fax},
    {"WORK", work},
    {"BUSINESS", work},
    {"HOME", home},
    {"OTHER", other},
    {"PREF", preferred},
    {"WORKFAX", workFax},
    {"FAXWORK", workFax},
    {"BUSINESSFAX", workFax},
    {"FAXBUSINESS", workFax},
    {"HOMEFAX", homeFax},
    {"FAXHOME", homeFax},
    {"OTHERFAX", otherFax},
    {"FAXOTHER", otherFax},
    {"PRIMARYFAX", fax},
    {"MAINFAX", fax},
    {"TELEFAX", fax},
    {"FACSIMILE", fax},
};

// What the free text of labels and headings may say, in the languages of the programs that write them: fax anywhere in
// a word, the others where a word begins. Letters beyond ASCII stand in small form, as they do inside words.
constexpr Word labelWords[] = {
    {"fax", fax},       {"faks", fax},        {"télécopie", fax}, {"telecopie", fax},   {"ファックス", fax},
    {"ファクス", fax},  {"传真", fax},        {"傳真", fax},      {"팩스", fax},        {"факс", fax},
    {"Факс", fax},      {"φαξ", fax},         {"Φαξ", fax},       {"work", work},       {"business", work},
    {"office", work},   {"company", work},    {"geschäft", work}, {"dienst", work},     {"büro", work},
    {"arbeit", work},   {"firma", work},      {"firmy", work},    {"bureau", work},     {"professionnel", work},
    {"travail", work},  {"société", work},    {"trabajo", work},  {"oficina", work},    {"empresa", work},
    {"trabalho", work}, {"comercial", work},  {"uff", work},      {"lavoro", work},     {"werk", work},
    {"kantoor", work},  {"zakelijk", work},   {"służb", work},    {"prac", work},       {"arbete", work},
    {"勤務先", work},   {"会社", work},       {"公司", work},     {"工作", work},       {"商务", work},
    {"商務", work},     {"회사", work},       {"직장", work},     {"рабоч", work},      {"служ", work},
    {"home", home},     {"privat", home},     {"domicile", home}, {"maison", home},     {"personnel", home},
    {"casa", home},     {"particular", home}, {"residen", home},  {"abitazione", home}, {"thuis", home},
    {"privé", home},    {"domow", home},      {"hem", home},      {"自宅", home},       {"住宅", home},
    {"家庭", home},     {"집", home},         {"дом", home},      {"other", other},     {"weiter", other},
    {"andere", other},  {"autre", other},     {"otro", other},    {"outro", other},     {"altro", other},
    {"overig", other},  {"inny", other},      {"その他", other},  {"其他", other},      {"기타", other},
    {"друг", other},
};

// Names in which "fax" says nothing about a number.
constexpr std::string_view otherWordsWithFax[] = {"halifax", "fairfax", "colfax", "carfax"};

// Parameters of a facsimile number in directories (RFC 4517, 3.3.11), each behind a "$". A dollar sign before anything
// else is dialled: some modems wait at it.
constexpr std::string_view faxParameters[] = {"twoDimensional", "fineResolution", "unlimitedLength", "b4Length",
                                              "a3Width",        "b4Width",        "uncompressed"};

constexpr bool IsLetter(char c) {
    return (ToLowerAscii(c) >= 'a' && ToLowerAscii(c) <= 'z') || static_cast<signed char>(c) < 0;
}

// A word begins behind anything but a letter, and with the capital in "HomeFax". Words in scripts without blanks begin
// anywhere.
bool IsWordStart(std::string_view text, size_t position) {
    if (position == 0 || !IsLetter(text[position - 1]) || static_cast<signed char>(text[position]) < 0) return true;
    const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
    return isCapital(text[position]) && !isCapital(text[position - 1]);
}

bool EndsOtherWord(std::string_view text) {
    return std::ranges::any_of(otherWordsWithFax,
                               [&](std::string_view word) { return EndsWithIgnoringCase(text, word); });
}

// The words of labels by their first byte, so that a long label is looked through once: of a byte, those from one start
// up to the next.
struct LabelWordTable {
    std::array<Word, std::size(labelWords)> words;
    std::array<std::uint8_t, 257> starts;
};
constexpr LabelWordTable labelWordTable = [] {
    LabelWordTable table = {};
    std::uint8_t count = 0;
    for (unsigned byte = 0; byte < 256; ++byte) {
        table.starts[byte] = count;
        for (const Word& word : labelWords)
            if (static_cast<unsigned char>(word.text.front()) == byte) table.words[count++] = word;
    }
    table.starts[256] = count;
    return table;
}();

// Whether the word stands at the position, and means there what it means.
bool LabelSays(std::string_view label, size_t position, const Word& word) {
    if (!StartsWithIgnoringCase(label.substr(position), word.text)) return false;
    return word.facts.fax ? !EndsOtherWord(label.substr(0, position + word.text.size())) : IsWordStart(label, position);
}

void CutFaxParameters(std::string& number) {
    for (size_t dollar = number.find('$'); dollar != std::string::npos; dollar = number.find('$', dollar + 1)) {
        const std::string_view rest = TrimmedAtStart(std::string_view(number).substr(dollar + 1));
        const auto begins = [&](std::string_view parameter) { return StartsWithIgnoringCase(rest, parameter); };
        if (std::ranges::any_of(faxParameters, begins)) return number.resize(dollar);
    }
}

void AddWord(std::string_view text, TelephoneFacts& facts) {
    text = Trimmed(text);
    if (StartsWithIgnoringCase(text, "X-")) text.remove_prefix(2);
    char letters[16];
    size_t length = 0;
    for (const char c : text) {
        if (c == '-' || c == '_' || c == ' ') continue;
        if (length == sizeof letters) return;
        letters[length++] = ToUpperAscii(c);
    }
    const std::string_view wanted(letters, length);
    for (const Word& word : words)
        if (word.text == wanted) facts.Add(word.facts);
}

}  // namespace

void TelephoneFacts::Add(const TelephoneFacts& more) {
    fax |= more.fax;
    work |= more.work;
    home |= more.home;
    other |= more.other;
    preference = std::min(preference, more.preference);
}

bool IsTelephoneName(std::string_view name) {
    return EqualsIgnoringCase(name, "TEL") || EqualsIgnoringCase(name, "FAX") ||
           (StartsWithIgnoringCase(name, "X-") && EndsWithIgnoringCase(name, "FAX"));
}

TelephoneFacts FactsOfName(std::string_view name) {
    TelephoneFacts facts;
    if (EqualsIgnoringCase(name, "TEL")) return facts;
    facts.fax = true;
    AddWord(name, facts);
    return facts;
}

void AddTypeFacts(std::string_view type, TelephoneFacts& facts) {
    AddWord(type, facts);
}

// Some exporters put the place into the group: HOME.TEL;TYPE=FAX.
void AddGroupFacts(std::string_view group, TelephoneFacts& facts) {
    if (!group.empty() && !facts.work && !facts.home && !facts.other) AddWord(group, facts);
}

void AddPreference(std::string_view preference, TelephoneFacts& facts) {
    unsigned rank = notPreferred;
    std::from_chars(preference.data(), preference.data() + preference.size(), rank);
    if (rank >= 1 && rank < facts.preference) facts.preference = static_cast<std::uint8_t>(rank);
}

void AddLabelFacts(std::string_view label, TelephoneFacts& facts) {
    for (size_t i = 0; i < label.size(); ++i) {
        const auto first = static_cast<unsigned char>(ToLowerAscii(label[i]));
        for (size_t word = labelWordTable.starts[first]; word < labelWordTable.starts[first + 1]; ++word)
            if (LabelSays(label, i, labelWordTable.words[word])) facts.Add(labelWordTable.words[word].facts);
    }
}

FaxVerdict JudgeTelephone(const TelephoneFacts& facts) {
    if (!facts.fax) return {FaxKind::None, "not a fax number: neither type, name nor label says fax"};
    if (facts.work) return {FaxKind::Business, "business fax number: it says fax, and work or business"};
    if (facts.home) return {FaxKind::Home, "home fax number: it says fax and home"};
    if (facts.other) return {FaxKind::Other, "other fax number: it says fax and other"};
    return {FaxKind::Primary, "primary fax number: it says fax and names no place"};
}

bool AreFaxParameters(std::string_view parameters) {
    for (;;) {
        const std::string_view parameter = Trimmed(parameters.substr(0, parameters.find('$')));
        const auto isIt = [&](std::string_view known) { return EqualsIgnoringCase(parameter, known); };
        if (!parameter.empty() && std::ranges::none_of(faxParameters, isIt)) return false;
        if (parameters.find('$') == std::string_view::npos) return true;
        parameters.remove_prefix(parameters.find('$') + 1);
    }
}

void CutToDialledNumber(std::string& number) {
    CutFaxParameters(number);
    const std::string_view value = Trimmed(number);
    if (!StartsWithIgnoringCase(value, "tel:") && !StartsWithIgnoringCase(value, "fax:")) return;
    std::string_view rest = value.substr(4);
    std::string dialled(rest.substr(0, rest.find(';')));
    while (rest.find(';') != std::string_view::npos) {
        rest.remove_prefix(rest.find(';') + 1);
        const std::string_view parameter = rest.substr(0, rest.find(';'));
        if (StartsWithIgnoringCase(parameter, "ext=")) dialled.append(";").append(parameter);
    }
    number = std::move(dialled);
}
