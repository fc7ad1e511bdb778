// Names in small letters, sorted when the program is compiled. Beside RFC 4519, RFC 4524 and RFC 2798 they are those of
// Active Directory, of mail programs and of other servers.
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

constexpr auto attributes = [] {
    // A directory is that of an organisation: the fax number of its standard is at work.
    auto table = std::to_array<Attribute>({
        {"facsimiletelephonenumber", Telephone, 0, workFax, "a fax at work"},
        {"fax", Telephone, 0, workFax, "a fax at work"},
        {"2.5.4.23", Telephone, 0, workFax, "a fax at work"},
        {"officefax", Telephone, 0, workFax},
        {"officefaxphonenumber", Telephone, 0, workFax},
        {"businessfaxphonenumber", Telephone, 0, workFax},
        {"homefacsimiletelephonenumber", Telephone, 0, homeFax},
        {"homefax", Telephone, 0, homeFax},
        {"homefaxphonenumber", Telephone, 0, homeFax},
        {"otherfacsimiletelephonenumber", Telephone, 0, otherFax},
        {"1.2.840.113556.1.4.646", Telephone, 0, otherFax, "another fax"},
        {"otherfax", Telephone, 0, otherFax},
        {"telephonenumber", Telephone, 0, workVoice},
        {"2.5.4.20", Telephone, 0, workVoice},
        {"othertelephone", Telephone, 0, workVoice},
        {"officephonenumber", Telephone, 0, workVoice},
        {"companyphone", Telephone, 0, workVoice},
        {"ipphone", Telephone, 0, workVoice},
        {"homephone", Telephone, 0, homeVoice},
        {"hometelephonenumber", Telephone, 0, homeVoice},
        {"0.9.2342.19200300.100.1.20", Telephone, 0, homeVoice},
        {"otherhomephone", Telephone, 0, homeVoice},
        {"mobile", Telephone, 0, voice},
        {"mobiletelephonenumber", Telephone, 0, voice},
        {"0.9.2342.19200300.100.1.41", Telephone, 0, voice},
        {"cellphone", Telephone, 0, voice},
        {"cellphonenumber", Telephone, 0, voice},
        {"othermobile", Telephone, 0, voice},
        {"pager", Telephone, 0, voice},
        {"pagertelephonenumber", Telephone, 0, voice},
        {"pagerphone", Telephone, 0, voice},
        {"0.9.2342.19200300.100.1.42", Telephone, 0, voice},
        {"primaryphone", Telephone, 0, voice},
        {"otherphone", Telephone, 0, voice},

        {"displayname", Name, 0},
        {"2.16.840.1.113730.3.1.241", Name, 0},
        {"fullname", Name, 1},
        {"cn", Name, rankOfCommonName},
        {"commonname", Name, rankOfCommonName},
        {"2.5.4.3", Name, rankOfCommonName},
        {"name", Name, 4},
        {"2.5.4.41", Name, 4},
        {"personaltitle", NamePrefix},
        {"0.9.2342.19200300.100.1.40", NamePrefix},
        {"givenname", GivenName},
        {"gn", GivenName},
        {"2.5.4.42", GivenName},
        {"middlename", MiddleName},
        {"2.16.840.1.113730.3.1.34", MiddleName},
        {"sn", FamilyName},
        {"surname", FamilyName},
        {"2.5.4.4", FamilyName},
        {"generationqualifier", NameSuffix},
        {"2.5.4.44", NameSuffix},
        {"mozillanickname", Nickname},
        {"xmozillanickname", Nickname},
        {"nickname", Nickname},

        {"company", Company, 0},
        {"1.2.840.113556.1.2.146", Company, 0},
        {"o", Company, 1},
        {"organizationname", Company, 1},
        {"2.5.4.10", Company, 1},
        {"companyname", Company, 2},
        {"department", Department, 0},
        {"1.2.840.113556.1.2.141", Department, 0},
        {"ou", Department, 1},
        {"organizationalunitname", Department, 1},
        {"2.5.4.11", Department, 1},
        {"orgunit", Department, 2},
        {"departmentnumber", Department, 3},
        {"2.16.840.1.113730.3.1.2", Department, 3},
        {"description", Note},
        {"2.5.4.13", Note},
        {"info", Note},
        {"1.2.840.113556.1.2.81", Note},
        {"note", Note},
        {"comment", Note},

        {"mail", Email},
        {"rfc822mailbox", Email},
        {"0.9.2342.19200300.100.1.3", Email},
        {"emailaddress", Email},
        {"email", Email},
        {"1.2.840.113549.1.9.1", Email},
        {"mozillasecondemail", Email},
        {"othermailbox", Email},
        {"proxyaddresses", ProxyAddress},
        {"1.2.840.113556.1.2.210", ProxyAddress},

        {"member", Member},
        {"2.5.4.31", Member},
        {"uniquemember", Member},
        {"2.5.4.50", Member},
        {"rfc822mailmember", MailMember},
        {"1.3.6.1.4.1.42.2.27.2.1.15", MailMember},
        {"mgrprfc822mailmember", MailMember},
        {"memberuid", AccountMember},
        {"1.3.6.1.1.1.1.12", AccountMember},
        {"memberurl", MemberSearch},
        {"2.16.840.1.113730.3.1.198", MemberSearch},
        {"objectclass", ObjectClass},
        {"2.5.4.0", ObjectClass},
    });
    std::ranges::sort(table, {}, &Attribute::name);
    return table;
}();

struct Class {
    std::string_view name;
    EntryKind kind;
};

constexpr Class classes[] = {
    {"person", EntryKind::Person},
    {"2.5.6.6", EntryKind::Person},
    {"organizationalperson", EntryKind::Person},
    {"2.5.6.7", EntryKind::Person},
    {"inetorgperson", EntryKind::Person},
    {"2.16.840.1.113730.3.2.2", EntryKind::Person},
    {"residentialperson", EntryKind::Person},
    {"user", EntryKind::Person},
    {"contact", EntryKind::Person},
    {"pilotperson", EntryKind::Person},
    {"newpilotperson", EntryKind::Person},
    {"openldapperson", EntryKind::Person},
    {"dominoperson", EntryKind::Person},
    {"evolutionperson", EntryKind::Person},
    {"mozillaabpersonalpha", EntryKind::Person},
    {"groupofnames", EntryKind::Group},
    {"2.5.6.9", EntryKind::Group},
    {"groupofuniquenames", EntryKind::Group},
    {"2.5.6.17", EntryKind::Group},
    {"groupofmembers", EntryKind::Group},
    {"groupofentries", EntryKind::Group},
    {"groupofurls", EntryKind::Group},
    {"group", EntryKind::Group},
    {"posixgroup", EntryKind::Group},
    {"dominogroup", EntryKind::Group},
    {"mailgroup", EntryKind::Group},
    {"nismailalias", EntryKind::Group},
    {"mozillamaillist", EntryKind::Group},
    // Computers of Active Directory are persons by their other classes.
    {"computer", EntryKind::Thing},
    {"alias", EntryKind::Thing},
    {"referral", EntryKind::Thing},
    {"ldapsubentry", EntryKind::Thing},
    {"subschema", EntryKind::Thing},
    {"organization", EntryKind::Thing},
    {"organizationalunit", EntryKind::Thing},
    {"organizationalrole", EntryKind::Thing},
    {"country", EntryKind::Thing},
    {"locality", EntryKind::Thing},
    {"domain", EntryKind::Thing},
    {"dcobject", EntryKind::Thing},
    {"domaindns", EntryKind::Thing},
    {"builtindomain", EntryKind::Thing},
    {"container", EntryKind::Thing},
    {"nscontainer", EntryKind::Thing},
    {"device", EntryKind::Thing},
    {"room", EntryKind::Thing},
    {"account", EntryKind::Thing},
    {"foreignsecurityprincipal", EntryKind::Thing},
};

// The ends of names that are those of a number. Others that say fax are switches, servers, texts.
constexpr std::string_view endingsOfNumbers[] = {"fax",   "telefax",   "faxnumber",       "faxphonenumber",
                                                 "faxnr", "facsimile", "facsimilenumber", "facsimiletelephonenumber"};

AttributeMeaning MeaningByWords(std::string_view name, std::string_view lower) {
    AttributeMeaning meaning;
    AddLabelFacts(name, meaning.facts);
    meaning.facts.fax = meaning.facts.fax || lower.find("facsimile") != std::string_view::npos;
    if (!meaning.facts.fax) return {};
    const auto ends = [&](std::string_view ending) { return lower.ends_with(ending); };
    meaning.field = std::ranges::any_of(endingsOfNumbers, ends) ? Telephone : UnknownFax;
    return meaning;
}

}  // namespace

AttributeMeaning MeaningOfAttribute(std::string_view description) {
    const std::string_view spelled = description.substr(0, description.find(';'));
    const std::string name = LowerCased(spelled);
    const auto* const found =
        std::lower_bound(attributes.begin(), attributes.end(), name,
                         [](const Attribute& attribute, const std::string& wanted) { return attribute.name < wanted; });
    AttributeMeaning meaning;
    if (found != attributes.end() && found->name == name)
        meaning = {found->field, found->rank, found->facts, found->gloss, {}};
    else
        meaning = MeaningByWords(spelled, name);
    if (spelled.size() < description.size()) {
        meaning.options = description.substr(spelled.size() + 1);
        meaning.rank = static_cast<std::uint8_t>(meaning.rank + rankWithOptions);
    }
    return meaning;
}

EntryKind KindOfClass(std::string_view objectClass) {
    const std::string name = LowerCased(Trimmed(objectClass));
    const auto* const found = std::ranges::find(classes, name, &Class::name);
    return found == std::end(classes) ? EntryKind::Unknown : found->kind;
}
