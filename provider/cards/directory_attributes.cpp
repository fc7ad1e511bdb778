// Names as their schemas spell them, sorted when the program is compiled. Beside RFC 4519, RFC 4524 and RFC 2798 they
// are those of Active Directory, of mail programs and of other servers.
#include "cards/directory_attributes.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

#include "text/ascii.h"

namespace {

struct Attribute {
    std::string_view name;
    DirectoryField field;
    std::uint8_t rank = 0;
    TelephoneFacts facts = {};
    std::string_view gloss = {};
};

using enum DirectoryField;

constexpr TelephoneFacts voice = {};
constexpr TelephoneFacts workVoice = {.work = true};
constexpr TelephoneFacts homeVoice = {.home = true};
constexpr TelephoneFacts workFax = {.fax = true, .work = true};
constexpr TelephoneFacts homeFax = {.fax = true, .home = true};
constexpr TelephoneFacts otherFax = {.fax = true, .other = true};

constexpr bool IsBefore(std::string_view left, std::string_view right) {
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char a, char b) { return ToLowerAscii(a) < ToLowerAscii(b); });
}

constexpr auto attributes = [] {
    // A directory is that of an organisation: the fax number of its standard is at work.
    auto table = std::to_array<Attribute>({
        {"facsimileTelephoneNumber", Telephone, 0, workFax, "a fax at work"},
        {"fax", Telephone, 0, workFax, "a fax at work"},
        {"2.5.4.23", Telephone, 0, workFax, "a fax at work"},
        {"officeFAX", Telephone, 0, workFax},
        {"OfficeFAXPhoneNumber", Telephone, 0, workFax},
        {"businessFaxPhoneNumber", Telephone, 0, workFax},
        {"homeFacsimileTelephoneNumber", Telephone, 0, homeFax},
        {"homeFax", Telephone, 0, homeFax},
        {"HomeFAXPhoneNumber", Telephone, 0, homeFax},
        {"otherFacsimileTelephoneNumber", Telephone, 0, otherFax},
        {"1.2.840.113556.1.4.646", Telephone, 0, otherFax, "another fax"},
        {"otherFax", Telephone, 0, otherFax},
        {"telephoneNumber", Telephone, 0, workVoice},
        {"2.5.4.20", Telephone, 0, workVoice},
        {"otherTelephone", Telephone, 0, workVoice},
        {"OfficePhoneNumber", Telephone, 0, workVoice},
        {"companyPhone", Telephone, 0, workVoice},
        {"ipPhone", Telephone, 0, workVoice},
        {"homePhone", Telephone, 0, homeVoice},
        {"homeTelephoneNumber", Telephone, 0, homeVoice},
        {"0.9.2342.19200300.100.1.20", Telephone, 0, homeVoice},
        {"otherHomePhone", Telephone, 0, homeVoice},
        {"mobile", Telephone, 0, voice},
        {"mobileTelephoneNumber", Telephone, 0, voice},
        {"0.9.2342.19200300.100.1.41", Telephone, 0, voice},
        {"cellPhone", Telephone, 0, voice},
        {"CellPhoneNumber", Telephone, 0, voice},
        {"otherMobile", Telephone, 0, voice},
        {"pager", Telephone, 0, voice},
        {"pagerTelephoneNumber", Telephone, 0, voice},
        {"pagerPhone", Telephone, 0, voice},
        {"0.9.2342.19200300.100.1.42", Telephone, 0, voice},
        {"primaryPhone", Telephone, 0, voice},
        {"otherPhone", Telephone, 0, voice},

        {"displayName", Name, 0},
        {"2.16.840.1.113730.3.1.241", Name, 0},
        {"fullName", Name, 1},
        {"cn", Name, rankOfCommonName},
        {"commonName", Name, rankOfCommonName},
        {"2.5.4.3", Name, rankOfCommonName},
        {"name", Name, 4},
        {"2.5.4.41", Name, 4},
        {"personalTitle", NamePrefix},
        {"0.9.2342.19200300.100.1.40", NamePrefix},
        {"givenName", GivenName},
        {"gn", GivenName},
        {"2.5.4.42", GivenName},
        {"middleName", MiddleName},
        {"2.16.840.1.113730.3.1.34", MiddleName},
        {"sn", FamilyName},
        {"surname", FamilyName},
        {"2.5.4.4", FamilyName},
        {"generationQualifier", NameSuffix},
        {"2.5.4.44", NameSuffix},
        {"mozillaNickname", Nickname},
        {"xmozillaNickname", Nickname},
        {"nickname", Nickname},

        {"company", Company, 0},
        {"1.2.840.113556.1.2.146", Company, 0},
        {"o", Company, 1},
        {"organizationName", Company, 1},
        {"2.5.4.10", Company, 1},
        {"CompanyName", Company, 2},
        {"department", Department, 0},
        {"1.2.840.113556.1.2.141", Department, 0},
        {"ou", Department, 1},
        {"organizationalUnitName", Department, 1},
        {"2.5.4.11", Department, 1},
        {"OrgUnit", Department, 2},
        {"departmentNumber", Department, 3},
        {"2.16.840.1.113730.3.1.2", Department, 3},
        {"description", Note},
        {"2.5.4.13", Note},
        {"info", Note},
        {"1.2.840.113556.1.2.81", Note},
        {"note", Note},
        {"comment", Note},

        {"mail", Email},
        {"rfc822Mailbox", Email},
        {"0.9.2342.19200300.100.1.3", Email},
        {"emailAddress", Email},
        {"email", Email},
        {"1.2.840.113549.1.9.1", Email},
        {"mozillaSecondEmail", Email},
        {"otherMailbox", Email},
        {"proxyAddresses", ProxyAddress},
        {"1.2.840.113556.1.2.210", ProxyAddress},

        {"member", Member},
        {"2.5.4.31", Member},
        {"uniqueMember", Member},
        {"2.5.4.50", Member},
        {"rfc822MailMember", MailMember},
        {"1.3.6.1.4.1.42.2.27.2.1.15", MailMember},
        {"mgrpRFC822MailMember", MailMember},
        {"memberUid", AccountMember},
        {"1.3.6.1.1.1.1.12", AccountMember},
        {"memberURL", MemberSearch},
        {"2.16.840.1.113730.3.1.198", MemberSearch},
        {"objectClass", ObjectClass},
        {"2.5.4.0", ObjectClass},
    });
    std::ranges::sort(table, IsBefore, &Attribute::name);
    return table;
}();

struct Class {
    std::string_view name;
    EntryKind kind;
};

constexpr Class classes[] = {
    {"person", EntryKind::Person},
    {"2.5.6.6", EntryKind::Person},
    {"organizationalPerson", EntryKind::Person},
    {"2.5.6.7", EntryKind::Person},
    {"inetOrgPerson", EntryKind::Person},
    {"2.16.840.1.113730.3.2.2", EntryKind::Person},
    {"residentialPerson", EntryKind::Person},
    {"user", EntryKind::Person},
    {"contact", EntryKind::Person},
    {"pilotPerson", EntryKind::Person},
    {"newPilotPerson", EntryKind::Person},
    {"OpenLDAPperson", EntryKind::Person},
    {"dominoPerson", EntryKind::Person},
    {"evolutionPerson", EntryKind::Person},
    {"mozillaAbPersonAlpha", EntryKind::Person},
    {"groupOfNames", EntryKind::Group},
    {"2.5.6.9", EntryKind::Group},
    {"groupOfUniqueNames", EntryKind::Group},
    {"2.5.6.17", EntryKind::Group},
    {"groupOfMembers", EntryKind::Group},
    {"groupOfEntries", EntryKind::Group},
    {"groupOfURLs", EntryKind::Group},
    {"group", EntryKind::Group},
    {"posixGroup", EntryKind::Group},
    {"dominoGroup", EntryKind::Group},
    {"mailGroup", EntryKind::Group},
    {"nisMailAlias", EntryKind::Group},
    {"mozillaMailList", EntryKind::Group},
    // Computers of Active Directory are persons by their other classes.
    {"computer", EntryKind::Thing},
    {"alias", EntryKind::Thing},
    {"referral", EntryKind::Thing},
    {"ldapSubentry", EntryKind::Thing},
    {"subschema", EntryKind::Thing},
    {"organization", EntryKind::Thing},
    {"organizationalUnit", EntryKind::Thing},
    {"organizationalRole", EntryKind::Thing},
    {"country", EntryKind::Thing},
    {"locality", EntryKind::Thing},
    {"domain", EntryKind::Thing},
    {"dcObject", EntryKind::Thing},
    {"domainDNS", EntryKind::Thing},
    {"builtinDomain", EntryKind::Thing},
    {"container", EntryKind::Thing},
    {"nsContainer", EntryKind::Thing},
    {"device", EntryKind::Thing},
    {"room", EntryKind::Thing},
    {"account", EntryKind::Thing},
    {"foreignSecurityPrincipal", EntryKind::Thing},
};

// The ends of names that are those of a number. Others that say fax are switches, servers, texts.
constexpr std::string_view endingsOfNumbers[] = {"fax",   "telefax",   "faxnumber",       "faxphonenumber",
                                                 "faxnr", "facsimile", "facsimilenumber", "facsimiletelephonenumber"};

AttributeMeaning MeaningByWords(std::string_view name) {
    AttributeMeaning meaning;
    AddLabelFacts(name, meaning.facts);
    meaning.facts.fax = meaning.facts.fax || LowerCased(name).find("facsimile") != std::string::npos;
    if (!meaning.facts.fax) return {};
    const auto ends = [&](std::string_view ending) { return EndsWithIgnoringCase(name, ending); };
    meaning.field = std::ranges::any_of(endingsOfNumbers, ends) ? Telephone : UnknownFax;
    return meaning;
}

}  // namespace

AttributeMeaning MeaningOfAttribute(std::string_view description) {
    const std::string_view name = description.substr(0, description.find(';'));
    const auto* const found = std::lower_bound(
        attributes.begin(), attributes.end(), name,
        [](const Attribute& attribute, std::string_view wanted) { return IsBefore(attribute.name, wanted); });
    AttributeMeaning meaning;
    if (found != attributes.end() && EqualsIgnoringCase(found->name, name))
        meaning = {found->field, found->rank, found->facts, found->gloss, {}};
    else
        meaning = MeaningByWords(name);
    if (name.size() < description.size()) {
        meaning.options = description.substr(name.size() + 1);
        meaning.rank = static_cast<std::uint8_t>(meaning.rank + rankWithOptions);
    }
    return meaning;
}

EntryKind KindOfClass(std::string_view objectClass) {
    const auto isIt = [name = Trimmed(objectClass)](const Class& known) {
        return EqualsIgnoringCase(known.name, name);
    };
    const auto* const found = std::ranges::find_if(classes, isIt);
    return found == std::end(classes) ? EntryKind::Unknown : found->kind;
}
