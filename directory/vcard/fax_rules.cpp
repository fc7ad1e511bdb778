// Words that say what a telephone number is for, and the verdicts drawn from them.
#include "vcard/fax_rules.h"

#include <charconv>

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

void AddWord(std::string_view text, TelephoneFacts& facts) {
    text = Trimmed(text);
    if (StartsWithIgnoringCase(text, "X-")) text.remove_prefix(2);
    char letters[16];
    size_t length = 0;
    for (const char c : text) {
        if (c == '-' || c == '_' || c == ' ') continue;
        if (length == sizeof letters) return;
        letters[length++] = c;
    }
    for (const Word& word : words)
        if (EqualsIgnoringCase(word.text, {letters, length})) facts.Add(word.facts);
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

TelephoneFacts ReadTelephoneFacts(const Property& property) {
    TelephoneFacts facts;
    if (!EqualsIgnoringCase(property.name, "TEL")) {
        facts.fax = true;
        AddWord(property.name, facts);
    }
    property.ForEachType([&](std::string_view type) { AddWord(type, facts); });
    // Some exporters put the place into the group: HOME.TEL;TYPE=FAX.
    if (!facts.work && !facts.home && !facts.other) AddWord(property.group, facts);
    const std::string_view preference = property.ParameterValue("PREF");
    unsigned rank = notPreferred;
    std::from_chars(preference.data(), preference.data() + preference.size(), rank);
    if (rank >= 1 && rank < facts.preference) facts.preference = static_cast<std::uint8_t>(rank);
    return facts;
}

void AddLabelFacts(std::string_view label, TelephoneFacts& facts) {
    TelephoneFacts said;
    said.fax = ContainsIgnoringCase(label, "fax");
    said.work = ContainsIgnoringCase(label, "work") || ContainsIgnoringCase(label, "business");
    said.home = ContainsIgnoringCase(label, "home");
    said.other = ContainsIgnoringCase(label, "other");
    facts.Add(said);
}

FaxVerdict JudgeTelephone(const TelephoneFacts& facts) {
    if (!facts.fax) return {FaxKind::None, "not a fax number: neither type, name nor label says fax"};
    if (facts.work) return {FaxKind::Business, "business fax number: it says fax, and work or business"};
    if (facts.home) return {FaxKind::Home, "home fax number: it says fax and home"};
    if (facts.other) return {FaxKind::Other, "other fax number: it says fax and other"};
    return {FaxKind::Primary, "primary fax number: it says fax and names no place"};
}

std::string DialledNumber(std::string_view value) {
    std::string_view text = Trimmed(value);
    const bool isAddress = StartsWithIgnoringCase(text, "tel:") || StartsWithIgnoringCase(text, "fax:");
    if (!isAddress) return std::string(text);
    text.remove_prefix(4);
    const size_t parameters = text.find(';');
    std::string number(text.substr(0, parameters));
    while (parameters != std::string_view::npos && text.find(';') != std::string_view::npos) {
        text.remove_prefix(text.find(';') + 1);
        const std::string_view parameter = text.substr(0, text.find(';'));
        if (StartsWithIgnoringCase(parameter, "ext=")) number.append(";").append(parameter);
    }
    return number;
}
