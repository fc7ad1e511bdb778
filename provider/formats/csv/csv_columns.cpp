// Headings are compared without case, blanks and punctuation.
#include "formats/csv/csv_columns.h"

#include <charconv>

#include "text/ascii.h"
#include "text/lines.h"
#include "text/told_text.h"

namespace {

struct KnownHeading {
    std::string_view text;
    ColumnMeaning meaning;
};

constexpr KnownHeading knownHeadings[] = {
    {"name", ColumnMeaning::DisplayName},
    {"fullname", ColumnMeaning::DisplayName},
    {"displayname", ColumnMeaning::DisplayName},
    {"contact", ColumnMeaning::DisplayName},
    {"anzeigename", ColumnMeaning::DisplayName},
    {"nomcomplet", ColumnMeaning::DisplayName},
    {"nombrecompleto", ColumnMeaning::DisplayName},
    {"nomecompleto", ColumnMeaning::DisplayName},
    {"表示名", ColumnMeaning::DisplayName},
    {"名前", ColumnMeaning::DisplayName},
    {"氏名", ColumnMeaning::DisplayName},
    {"姓名", ColumnMeaning::DisplayName},
    {"title", ColumnMeaning::NamePrefix},
    {"nameprefix", ColumnMeaning::NamePrefix},
    {"prefix", ColumnMeaning::NamePrefix},
    {"anrede", ColumnMeaning::NamePrefix},
    {"titre", ColumnMeaning::NamePrefix},
    {"firstname", ColumnMeaning::GivenName},
    {"givenname", ColumnMeaning::GivenName},
    {"vorname", ColumnMeaning::GivenName},
    {"prénom", ColumnMeaning::GivenName},
    {"prenom", ColumnMeaning::GivenName},
    {"nombre", ColumnMeaning::GivenName},
    {"nome", ColumnMeaning::GivenName},
    {"voornaam", ColumnMeaning::GivenName},
    {"imię", ColumnMeaning::GivenName},
    {"名", ColumnMeaning::GivenName},
    {"middlename", ColumnMeaning::MiddleName},
    {"additionalname", ColumnMeaning::MiddleName},
    {"weiterevornamen", ColumnMeaning::MiddleName},
    {"deuxièmeprénom", ColumnMeaning::MiddleName},
    {"segundonombre", ColumnMeaning::MiddleName},
    {"lastname", ColumnMeaning::FamilyName},
    {"familyname", ColumnMeaning::FamilyName},
    {"surname", ColumnMeaning::FamilyName},
    {"nachname", ColumnMeaning::FamilyName},
    {"nom", ColumnMeaning::FamilyName},
    {"nomdefamille", ColumnMeaning::FamilyName},
    {"apellidos", ColumnMeaning::FamilyName},
    {"apellido", ColumnMeaning::FamilyName},
    {"cognome", ColumnMeaning::FamilyName},
    {"sobrenome", ColumnMeaning::FamilyName},
    {"achternaam", ColumnMeaning::FamilyName},
    {"nazwisko", ColumnMeaning::FamilyName},
    {"姓", ColumnMeaning::FamilyName},
    {"suffix", ColumnMeaning::NameSuffix},
    {"namesuffix", ColumnMeaning::NameSuffix},
    {"nickname", ColumnMeaning::Nickname},
    {"spitzname", ColumnMeaning::Nickname},
    {"surnom", ColumnMeaning::Nickname},
    {"company", ColumnMeaning::Company},
    {"companyname", ColumnMeaning::Company},
    {"organization", ColumnMeaning::Company},
    {"organisation", ColumnMeaning::Company},
    {"organizationname", ColumnMeaning::Company},
    {"organization1name", ColumnMeaning::Company},
    {"firma", ColumnMeaning::Company},
    {"société", ColumnMeaning::Company},
    {"empresa", ColumnMeaning::Company},
    {"organización", ColumnMeaning::Company},
    {"società", ColumnMeaning::Company},
    {"bedrijf", ColumnMeaning::Company},
    {"会社名", ColumnMeaning::Company},
    {"会社", ColumnMeaning::Company},
    {"公司", ColumnMeaning::Company},
    {"department", ColumnMeaning::Department},
    {"organizationdepartment", ColumnMeaning::Department},
    {"organization1department", ColumnMeaning::Department},
    {"abteilung", ColumnMeaning::Department},
    {"service", ColumnMeaning::Department},
    {"département", ColumnMeaning::Department},
    {"departamento", ColumnMeaning::Department},
    {"reparto", ColumnMeaning::Department},
    {"afdeling", ColumnMeaning::Department},
    {"部署", ColumnMeaning::Department},
    {"部门", ColumnMeaning::Department},
    {"notes", ColumnMeaning::Note},
    {"note", ColumnMeaning::Note},
    {"comment", ColumnMeaning::Note},
    {"notizen", ColumnMeaning::Note},
    {"notas", ColumnMeaning::Note},
    {"notities", ColumnMeaning::Note},
    {"メモ", ColumnMeaning::Note},
    {"email", ColumnMeaning::Email},
    {"emailaddress", ColumnMeaning::Email},
    {"email2address", ColumnMeaning::Email},
    {"email3address", ColumnMeaning::Email},
    {"email1value", ColumnMeaning::Email},
    {"email2value", ColumnMeaning::Email},
    {"email3value", ColumnMeaning::Email},
    {"primaryemail", ColumnMeaning::Email},
    {"secondaryemail", ColumnMeaning::Email},
    {"emailadresse", ColumnMeaning::Email},
    {"adressedemessagerie", ColumnMeaning::Email},
    {"direccióndecorreoelectrónico", ColumnMeaning::Email},
    {"メールアドレス", ColumnMeaning::Email},
    {"電子メールアドレス", ColumnMeaning::Email},
    {"categories", ColumnMeaning::Categories},
    {"category", ColumnMeaning::Categories},
    {"groupmembership", ColumnMeaning::Categories},
    {"labels", ColumnMeaning::Categories},
    {"kategorien", ColumnMeaning::Categories},
    {"catégories", ColumnMeaning::Categories},
    {"categorías", ColumnMeaning::Categories},
    {"categorie", ColumnMeaning::Categories},
    {"分類", ColumnMeaning::Categories},
};

// Ends of the headings of other telephone columns.
constexpr std::string_view telephoneEndings[] = {
    "phone",  "telefon", "telephone", "téléphone", "teléfono", "telefono", "telefoon", "telefone",
    "mobile", "mobil",   "pager",     "tel",       "電話",     "携帯",     "电话",     "電話番号"};

std::string Folded(std::string_view heading) {
    std::string folded;
    for (const char c : heading)
        if (std::string_view(" \t.-_/()*:'\"").find(c) == std::string_view::npos) folded.push_back(ToLowerAscii(c));
    return folded;
}

// "phone2label" and "phone2value", as web address books number them.
bool ReadNumberedTelephone(std::string_view folded, CsvColumn& column) {
    constexpr std::string_view start = "phone";
    if (!folded.starts_with(start)) return false;
    folded.remove_prefix(start.size());
    const auto [rest, error] = std::from_chars(folded.data(), folded.data() + folded.size(), column.set);
    if (error != std::errc()) return false;
    folded.remove_prefix(static_cast<size_t>(rest - folded.data()));
    if (folded == "value") column.meaning = ColumnMeaning::TelephoneValue;
    if (folded == "type" || folded == "label") column.meaning = ColumnMeaning::TelephoneLabel;
    return column.meaning != ColumnMeaning::Unknown;
}

bool IsTelephoneHeading(std::string_view folded) {
    TelephoneFacts facts;
    AddLabelFacts(folded, facts);
    if (facts.fax) return true;
    while (!folded.empty() && folded.back() >= '0' && folded.back() <= '9') folded.remove_suffix(1);
    if (folded.ends_with("number")) folded.remove_suffix(6);
    for (const std::string_view ending : telephoneEndings)
        if (folded.ends_with(ending)) return true;
    return false;
}

}  // namespace

CsvColumn ReadHeading(std::string_view heading) {
    CsvColumn column;
    column.heading = heading;
    MakeSingleLine(column.heading);
    const std::string folded = Folded(heading);
    for (const KnownHeading& known : knownHeadings)
        if (known.text == folded) column.meaning = known.meaning;
    if (column.meaning == ColumnMeaning::Unknown && !ReadNumberedTelephone(folded, column) &&
        IsTelephoneHeading(folded))
        column.meaning = ColumnMeaning::Telephone;
    if (column.meaning == ColumnMeaning::Telephone || column.meaning == ColumnMeaning::TelephoneValue)
        AddLabelFacts(column.heading, column.facts);
    CutToTell(column.heading, longestToldSource);
    return column;
}
