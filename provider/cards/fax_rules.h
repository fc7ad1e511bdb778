// The rules that make a telephone property a fax number of a kind, or not one: all of them, and nothing else.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Primary: a fax number that is said to be neither at work nor at home nor elsewhere.
enum class FaxKind : std::uint8_t { None, Business, Home, Other, Primary };

// A smaller preference is better; numbers that are not marked come last.
inline constexpr std::uint8_t notPreferred = 101;

// What is said about a number. One word may say two things: "WORKFAX".
struct TelephoneFacts {
    bool fax = false;
    bool work = false;
    bool home = false;
    bool other = false;
    std::uint8_t preference = notPreferred;

    void Add(const TelephoneFacts& more);
};

// Whether a property of this name can hold a fax number at all: TEL, FAX, and X- names that end in FAX.
bool IsTelephoneName(std::string_view name);

// What the parts of a property add. A label is free text, also in languages other than English.
TelephoneFacts FactsOfName(std::string_view name);
void AddTypeFacts(std::string_view type, TelephoneFacts& facts);
void AddGroupFacts(std::string_view group, TelephoneFacts& facts);
void AddPreference(std::string_view preference, TelephoneFacts& facts);
void AddLabelFacts(std::string_view label, TelephoneFacts& facts);

// The kind, and the rule that decided, as a sentence for the user.
struct FaxVerdict {
    FaxKind kind;
    const char* rule;
};
FaxVerdict JudgeTelephone(const TelephoneFacts& facts);

// Whether all that stands behind the first "$" of a directory's facsimile number are parameters of it (RFC
// 4517, 3.3.11).
bool AreFaxParameters(std::string_view parameters);

// Cuts a number to what is dialled: no "tel:" and no parameters of the address or of a directory's facsimile number,
// but its extension and pauses.
void CutToDialledNumber(std::string& number);
