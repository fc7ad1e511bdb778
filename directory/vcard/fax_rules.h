// The rules that make a telephone property a fax number of a kind, or not one: all of them, and nothing else.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vcard/property.h"

// Primary: a fax number that is said to be neither at work nor at home nor elsewhere.
enum class FaxKind : std::uint8_t { None, Business, Home, Other, Primary };

// A smaller preference is better; numbers that are not marked come last.
inline constexpr std::uint8_t notPreferred = 101;

// What a property says about its number. One word may say two things: "WORKFAX".
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

// From the name, the group, TYPE and PREF; a label, which is a property of its own, is added when it is known.
TelephoneFacts ReadTelephoneFacts(const Property& property);
void AddLabelFacts(std::string_view label, TelephoneFacts& facts);

// The kind, and the rule that decided, as a sentence for the user.
struct FaxVerdict {
    FaxKind kind;
    const char* rule;
};
FaxVerdict JudgeTelephone(const TelephoneFacts& facts);

// The number as it is dialled: without "tel:" and the parameters of the address, with its extension and pauses.
std::string DialledNumber(std::string_view value);
