// Texts wait by their ranks until all attributes were seen; the rest goes into the draft as it comes.
#include "cards/directory_entry.h"

#include <algorithm>

#include "text/ascii.h"
#include "text/code_pages.h"
#include "text/lines.h"

namespace {

// A member of groupOfUniqueNames may have bits behind it that tell entries of one name apart: "cn=Ann#'0101'B".
std::string_view WithoutUniqueIdentifier(std::string_view name) {
    if (!name.ends_with("'B")) return name;
    const size_t start = name.rfind("#'");
    if (start == std::string_view::npos || start + 4 > name.size()) return name;
    const std::string_view bits = name.substr(start + 2, name.size() - start - 4);
    return bits.find_first_not_of("01") == std::string_view::npos ? name.substr(0, start) : name;
}

}  // namespace

void DirectoryEntry::Begin(size_t line, std::string_view distinguishedName) {
    card_.Clear();
    card_.line = line;
    for (std::string& text : texts_) text.clear();
    kind_ = EntryKind::Unknown;
    unknownClass_.clear();
    partOfMembers_.clear();
    hasLastMembers_ = false;
    searchLine_ = 0;
    nameInDirectory_.clear();
    isNamedByCommonName_ = false;
    const std::optional<std::vector<RelativeName>> name = ParseName(distinguishedName);
    if (!name) {
        receiver_.Report(line, "\"{}\" is no distinguished name", "groups cannot name the entry; correct the line",
                         {distinguishedName});
    } else if (!name->empty()) {
        card_.uid = NormalisedName(*name);
        const NameAttribute& first = name->front().front();
        isNamedByCommonName_ = first.type == "cn";
        // Its escapes may be any bytes.
        AppendRepaired(first.value, CP_UTF8, nameInDirectory_);
        MakeSingleLine(nameInDirectory_);
    }
}

void DirectoryEntry::Add(size_t line, std::string_view description, const AttributeMeaning& meaning,
                         std::string_view value) {
    switch (meaning.field) {
        case DirectoryField::None:
            return;
        case DirectoryField::Name:
        case DirectoryField::NamePrefix:
        case DirectoryField::GivenName:
        case DirectoryField::MiddleName:
        case DirectoryField::FamilyName:
        case DirectoryField::NameSuffix:
        case DirectoryField::Nickname:
        case DirectoryField::Company:
        case DirectoryField::Department:
            return SetText(meaning, value);
        case DirectoryField::Note:
            if (!card_.note.empty()) card_.note.append("\n");
            card_.note.append(value);
            return;
        case DirectoryField::Email:
            return AddEmail(line, value);
        case DirectoryField::ProxyAddress:
            return AddProxyAddress(line, description, value);
        case DirectoryField::Telephone:
            return AddTelephone(line, description, meaning, value);
        case DirectoryField::Member:
        case DirectoryField::MailMember:
        case DirectoryField::AccountMember:
            return AddMember(line, meaning, value);
        case DirectoryField::MemberSearch:
            searchLine_ = line;
            return;
        case DirectoryField::ObjectClass:
            return AddClass(Trimmed(value));
        case DirectoryField::UnknownFax:
            receiver_.Report(line, "what {} says of fax numbers is not known", "it was passed over", {description});
            return;
    }
}

// Of several common names, that by which the directory knows the entry comes first: servers keep them in any order.
void DirectoryEntry::SetText(const AttributeMeaning& meaning, std::string_view value) {
    std::string text(value);
    MakeSingleLine(text);
    std::uint8_t rank = meaning.rank;
    const bool isCommonName = meaning.field == DirectoryField::Name && rank == rankOfCommonName;
    if (isCommonName && isNamedByCommonName_ && EqualsIgnoringCase(text, nameInDirectory_)) --rank;
    const auto field = static_cast<size_t>(meaning.field);
    if (text.empty() || (!texts_[field].empty() && ranks_[field] <= rank)) return;
    texts_[field] = std::move(text);
    ranks_[field] = rank;
}

void DirectoryEntry::AddEmail(size_t line, std::string_view address) {
    std::string text(address);
    MakeSingleLine(text);
    if (text.empty()) return;
    LinedText& email = card_.emails.Add();
    email.line = line;
    email.text = std::move(text);
}

void DirectoryEntry::AddProxyAddress(size_t line, std::string_view description, std::string_view address) {
    if (StartsWithIgnoringCase(address, "smtp:")) return AddEmail(line, address.substr(5));
    if (!StartsWithIgnoringCase(address, "fax:")) return;
    // "FAX:Ann Lee@+1 555 0100" has the name for the cover page.
    const size_t at = address.rfind('@');
    AddTelephone(line, description, {.facts = {.fax = true}},
                 address.substr(at == std::string_view::npos ? 4 : at + 1));
}

void DirectoryEntry::AddTelephone(size_t line, std::string_view description, const AttributeMeaning& meaning,
                                  std::string_view number) {
    Telephone& telephone = card_.telephones.Add();
    telephone.line = line;
    telephone.group.clear();
    telephone.source = description;
    if (!meaning.gloss.empty()) telephone.source.append(", ").append(meaning.gloss);
    CutToTell(telephone.source, longestToldSource);
    telephone.facts = meaning.facts;
    const size_t dollar = meaning.facts.fax ? number.find('$') : std::string_view::npos;
    telephone.number = number.substr(0, dollar);
    CutToDialledNumber(telephone.number);
    MakeSingleLine(telephone.number);
    if (dollar != std::string_view::npos && !AreFaxParameters(number.substr(dollar + 1)))
        receiver_.Report(line, "what stands behind \"$\" in {} is no parameter of a fax number",
                         "the number before it was taken; correct the line", {number});
}

void DirectoryEntry::AddMember(size_t line, const AttributeMeaning& meaning, std::string_view value) {
    if (meaning.options.starts_with("range=")) {
        partOfMembers_ = meaning.options;
        hasLastMembers_ = hasLastMembers_ || meaning.options.ends_with('*');
    }
    std::string text(value);
    MakeSingleLine(text);
    if (text.empty()) return;
    if (meaning.field == DirectoryField::MailMember) return AddMemberText(line, "mailto:" + text);
    if (meaning.field == DirectoryField::AccountMember) {
        std::vector<RelativeName> account(1);
        account.front().push_back({"uid", text});
        return AddMemberText(line, NormalisedName(account));
    }
    const std::optional<std::vector<RelativeName>> name = ParseName(WithoutUniqueIdentifier(text));
    AddMemberText(line, name ? NormalisedName(*name) : text);
}

void DirectoryEntry::AddMemberText(size_t line, std::string text) {
    LinedText& member = card_.members.Add();
    member.line = line;
    member.text = std::move(text);
}

void DirectoryEntry::AddClass(std::string_view objectClass) {
    const EntryKind kind = KindOfClass(objectClass);
    kind_ = std::max(kind_, kind);
    const bool saysNothing = EqualsIgnoringCase(objectClass, "top");
    if (kind == EntryKind::Unknown && unknownClass_.empty() && !saysNothing) unknownClass_ = objectClass;
}

void DirectoryEntry::CompleteName() {
    card_.formattedName = TextOf(DirectoryField::Name);
    for (const DirectoryField part : {DirectoryField::NamePrefix, DirectoryField::GivenName, DirectoryField::MiddleName,
                                      DirectoryField::FamilyName, DirectoryField::NameSuffix})
        card_.nameFromParts.append(TextOf(part)).append(" ");
    MakeSingleLine(card_.nameFromParts);
    card_.nickname = TextOf(DirectoryField::Nickname);
    card_.company = TextOf(DirectoryField::Company);
    card_.department = TextOf(DirectoryField::Department);
    // A department is not its company.
    const bool isNameless = card_.formattedName.empty() && card_.nameFromParts.empty();
    if ((isNameless && kind_ != EntryKind::Person) || NameOf(card_).empty()) card_.formattedName = nameInDirectory_;
}

bool DirectoryEntry::HasFaxNumber() const {
    for (const Telephone& telephone : card_.telephones)
        if (telephone.facts.fax && !telephone.number.empty()) return true;
    return false;
}

bool DirectoryEntry::IsWanted() const {
    if (kind_ == EntryKind::Person || kind_ == EntryKind::Group || HasFaxNumber()) return true;
    if (kind_ == EntryKind::Thing) return false;
    return !card_.members.IsEmpty() || !card_.emails.IsEmpty() || !card_.telephones.IsEmpty() ||
           !card_.nameFromParts.empty() || (unknownClass_.empty() && !TextOf(DirectoryField::Name).empty());
}

void DirectoryEntry::ReportUnknown() {
    if (kind_ == EntryKind::Thing) return;
    if (unknownClass_.empty())
        receiver_.Report(card_.line, "entry says of nobody who it is", "it was passed over");
    else
        receiver_.Report(card_.line, "entry of the class {} is neither a person nor a group", "it was passed over",
                         {unknownClass_});
}

void DirectoryEntry::ReportMissingMembers() {
    if (!partOfMembers_.empty() && !hasLastMembers_)
        receiver_.Report(card_.line, "the members of the group \"{}\" are not all in the file: they end with {}",
                         "export the group again, with all its members", {NameOf(card_), partOfMembers_});
    if (searchLine_ != 0)
        receiver_.Report(searchLine_, "members of the group \"{}\" are whoever a search finds",
                         "they were left out; export a group that names them", {NameOf(card_)});
}

void DirectoryEntry::Finish() {
    CompleteName();
    if (!IsWanted()) return ReportUnknown();
    card_.isGroup = kind_ == EntryKind::Group || (kind_ != EntryKind::Person && !card_.members.IsEmpty());
    if (card_.isGroup) ReportMissingMembers();
    MakeWindowsLines(card_.note);
    receiver_.Receive(card_);
}
