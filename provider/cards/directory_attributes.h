// What the attributes and object classes of directories mean for a card: one table, whatever an entry comes from.
#pragma once

#include <cstdint>
#include <string_view>

#include "cards/fax_rules.h"

enum class DirectoryField : std::uint8_t {
    None,
    Name,
    NamePrefix,
    GivenName,
    MiddleName,
    FamilyName,
    NameSuffix,
    Nickname,
    Company,
    Department,
    Note,
    Email,
    ProxyAddress,  // an address of any kind, "SMTP:" or "FAX:" before it
    Telephone,
    Member,         // by distinguished name
    MailMember,     // by e-mail address
    AccountMember,  // by the name of an account
    MemberSearch,   // whoever a search finds
    ObjectClass,
    UnknownFax,  // its name says fax, and not of what kind
};

struct AttributeMeaning {
    DirectoryField field = DirectoryField::None;
    // Of several attributes for one text, that with the smallest rank is taken. One with options, such as a language,
    // comes behind all without.
    std::uint8_t rank = 0;
    TelephoneFacts facts = {};      // of a telephone
    std::string_view gloss = {};    // what a telephone's name does not say itself, for the user
    std::string_view options = {};  // "lang-de"; a view of what was looked up
};
inline constexpr std::uint8_t rankOfCommonName = 3;
inline constexpr std::uint8_t rankWithOptions = 16;

// By an attribute's name or object identifier, in any letter case, with or without options: "cn;lang-de".
AttributeMeaning MeaningOfAttribute(std::string_view description);

// Group: its members are other entries. Thing: a part of the organisation, a room, an account: somebody to write to
// only if it has a fax number.
enum class EntryKind : std::uint8_t { Unknown, Person, Thing, Group };

// Nothing for a class that says nothing of this, as top.
EntryKind KindOfClass(std::string_view objectClass);
