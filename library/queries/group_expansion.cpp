// Group expansion: asking the provider for the recipients of a group and writing their numbers as records.
#include "queries/group_expansion.h"

#include <optional>

#include "mapi/group_recipient_tags.h"
#include "model/contents_row.h"
#include "model/fax_kinds.h"
#include "provider/entry_opener.h"
#include "queries/record_writer.h"

namespace {

#define MEMBER_FIELD(field, limit) TEXT_FIELD(GroupMemberRecord, field, limit, Cut::WholeCharacters)
constexpr TextField nameField = MEMBER_FIELD(name, 85);
constexpr TextField companyField = MEMBER_FIELD(company, 40);
constexpr TextField departmentField = MEMBER_FIELD(department, 40);
constexpr TextField businessFaxField = MEMBER_FIELD(businessFax, 45);
constexpr TextField businessFaxNoteField = MEMBER_FIELD(businessFaxNote, 30);
constexpr TextField businessFaxAttr1Field = MEMBER_FIELD(businessFaxAttr1, 20);
constexpr TextField businessFaxAttr2Field = MEMBER_FIELD(businessFaxAttr2, 20);
constexpr TextField businessFaxAttr3Field = MEMBER_FIELD(businessFaxAttr3, 20);
constexpr TextField homeFaxField = MEMBER_FIELD(homeFax, 45);
constexpr TextField homeFaxNoteField = MEMBER_FIELD(homeFaxNote, 30);
constexpr TextField homeFaxAttr1Field = MEMBER_FIELD(homeFaxAttr1, 20);
constexpr TextField homeFaxAttr2Field = MEMBER_FIELD(homeFaxAttr2, 20);
constexpr TextField homeFaxAttr3Field = MEMBER_FIELD(homeFaxAttr3, 20);
constexpr TextField extendedFaxField = MEMBER_FIELD(extendedFax, 120);
constexpr TextField extendedFaxAttr1Field = MEMBER_FIELD(extendedFaxAttr1, 20);
constexpr TextField extendedFaxAttr2Field = MEMBER_FIELD(extendedFaxAttr2, 20);
#undef MEMBER_FIELD

struct FaxAttributes {
    std::string_view attr1;
    std::string_view attr2;
    std::string_view attr3;
};

struct ExtendedFax {
    uint16_t value1 = 0;
    uint16_t value2 = 0;
    std::string_view number;
    std::string_view attr1;
    std::string_view attr2;
};

// One fax destination of a member. Views of the provider's or the destination list's texts; what stays empty is written
// as an empty text.
struct MemberDetails {
    std::string_view name;
    std::string_view company;
    std::string_view department;
    std::string_view firstNumber;
    FaxAttributes businessAttrs = {};
    std::string_view homeNumber = {};
    FaxAttributes homeAttrs = {};
    ExtendedFax extended = {};
};

// Writes records one after the other, until there is one that the caller has no room for.
class MemberWriter {
  public:
    MemberWriter(const RecordListDescriptor& records, uint32_t capacity, uint32_t style)
        : storage_(static_cast<char*>(records.recordStorage)),
          left_(storage_ != nullptr ? capacity : 0),
          contentsStyle_(style) {}

    // One recipient with one number, which may be of any kind.
    void AddMemberDetails(const ContentsRow& entry, std::string_view name, std::string_view firstNumber) {
        AddMemberDetails(entry, name, firstNumber, {}, {}, {}, {});
    }
    // One recipient with all that it has.
    void AddMemberDetails(const ContentsRow& entry, std::string_view name, std::string_view firstNumber,
                          const FaxAttributes& businessAttrs, std::string_view homeNumber,
                          const FaxAttributes& homeAttrs, const ExtendedFax& extended) {
        Write({name, entry.GetString(ContentsColumn::CompanyName), entry.GetString(ContentsColumn::DepartmentName),
               firstNumber, businessAttrs, homeNumber, homeAttrs, extended});
    }
    void AddRecipient(const CRecipientEntry& recipient) {
        Write({recipient.name.View(),
               recipient.company.View(),
               recipient.department.View(),
               recipient.faxNumber.View(),
               {recipient.faxAttr1.View(), recipient.faxAttr2.View(), recipient.faxAttr3.View()}});
    }
    bool HasOverflowed() const { return overflowed_; }

  private:
    void Write(const MemberDetails& member);

    char* storage_;
    uint32_t left_;
    uint32_t contentsStyle_;
    bool overflowed_ = false;
};

void MemberWriter::Write(const MemberDetails& member) {
    overflowed_ = overflowed_ || left_ == 0;
    if (overflowed_) return;
    const RecordWriter writer(storage_);
    storage_ += sizeof(GroupMemberRecord);
    --left_;
    writer.PutValue(offsetof(GroupMemberRecord, contentsStyle), contentsStyle_);
    writer.PutText(nameField, member.name);
    writer.PutText(companyField, member.company);
    writer.PutText(departmentField, member.department);
    writer.PutText(businessFaxField, member.firstNumber);
    writer.PutText(businessFaxNoteField, {});
    writer.PutText(businessFaxAttr1Field, member.businessAttrs.attr1);
    writer.PutText(businessFaxAttr2Field, member.businessAttrs.attr2);
    writer.PutText(businessFaxAttr3Field, member.businessAttrs.attr3);
    writer.PutText(homeFaxField, member.homeNumber);
    writer.PutText(homeFaxNoteField, {});
    writer.PutText(homeFaxAttr1Field, member.homeAttrs.attr1);
    writer.PutText(homeFaxAttr2Field, member.homeAttrs.attr2);
    writer.PutText(homeFaxAttr3Field, member.homeAttrs.attr3);
    writer.PutValue(offsetof(GroupMemberRecord, extendedFaxValue1), member.extended.value1);
    writer.PutValue(offsetof(GroupMemberRecord, extendedFaxValue2), member.extended.value2);
    writer.PutText(extendedFaxField, member.extended.number);
    writer.PutText(extendedFaxAttr1Field, member.extended.attr1);
    writer.PutText(extendedFaxAttr2Field, member.extended.attr2);
}

// Replaces the list's one entry, the group, by the recipients that the provider expands it to. False when the provider
// cannot; the list may have been replaced all the same.
bool Expand(const SessionHandle& session, const CDistributionListDetails& group, HeldAddressList& recipients) {
    SessionSupport* support = session.support.Get();
    const HRESULT allocated = support->AllocateAddressList(sizeof(ADRLIST), &recipients.list);
    if (recipients.list == nullptr) return false;
    // The memory is uninitialised, and it is freed as a list whatever comes next.
    *recipients.list = {};
    if (FAILED(allocated)) return false;
    {
        const Held<IMAPIProp> opened = EntryOpener(session.addressBook.Get()).OpenEntry(group.entryId);
        if (!opened) return false;
        // Of the result only the values count; they belong to the list from here on.
        ADRENTRY& entry = recipients.list->aEntries[0];
        opened->GetProps(GroupRecipientTags.Get(), 0, &entry.cValues, &entry.rgPropVals);
        if (entry.rgPropVals == nullptr) return false;
        recipients.list->cEntries = 1;
        if (entry.cValues > recipientTypePosition) {
            SPropValue& recipientType = entry.rgPropVals[recipientTypePosition];
            recipientType.ulPropTag = PR_RECIPIENT_TYPE;
            recipientType.Value.l = MAPI_TO;
        }
    }
    return SUCCEEDED(support->ExpandRecipients(0, &recipients.list)) && recipients.list != nullptr;
}

// The numbers of one recipient in an address book that is read as fax entries: none, one or two.
void AddFaxEntry(const ContentsRow& row, const FaxEntryTexts& texts, MemberWriter& writer) {
    const std::string_view addressType = row.GetString(ContentsColumn::AddrType);
    const std::string_view plainName = row.GetString(ContentsColumn::OriginalDisplayName);
    const bool fax = texts.IsFax(addressType);
    const std::string_view name = fax ? plainName : row.GetString(ContentsColumn::DisplayName);
    const auto add = [&](std::string_view number) {
        if (!number.empty()) writer.AddMemberDetails(row, name, number);
        return !number.empty();
    };
    if (fax) {
        add(GetNumberInAddress(row.GetString(ContentsColumn::EmailAddress), plainName));
        return;
    }
    if (add(row.GetString(ContentsColumn::PrimaryFaxNumber))) return;
    if ((texts.IsSmtp(addressType) || addressType.empty()) && plainName.empty()) {
        add(row.GetString(ContentsColumn::BusinessFaxNumber));
        add(row.GetString(ContentsColumn::HomeFaxNumber));
    }
}

// One record for one recipient: with the primary number alone, or without one with everything else.
void AddFaxColumns(const ContentsRow& row, MemberWriter& writer) {
    const char* name = row.GetString(ContentsColumn::DisplayName);
    const std::string_view primary = row.GetString(ContentsColumn::PrimaryFaxNumber);
    if (!primary.empty()) {
        writer.AddMemberDetails(row, name, primary);
        return;
    }
    writer.AddMemberDetails(
        row, name, row.GetString(ContentsColumn::BusinessFaxNumber),
        {row.GetString(ContentsColumn::BusinessFaxAttr1), row.GetString(ContentsColumn::BusinessFaxAttr2),
         row.GetString(ContentsColumn::BusinessFaxAttr3)},
        row.GetString(ContentsColumn::HomeFaxNumber),
        {row.GetString(ContentsColumn::HomeFaxAttr1), row.GetString(ContentsColumn::HomeFaxAttr2),
         row.GetString(ContentsColumn::HomeFaxAttr3)},
        {row.GetShort(ContentsColumn::ExtendedFaxValue1), row.GetShort(ContentsColumn::ExtendedFaxValue2),
         row.GetString(ContentsColumn::ExtendedFax), row.GetString(ContentsColumn::ExtendedFaxAttr1),
         row.GetString(ContentsColumn::ExtendedFaxAttr2)});
}

void AddRecipients(const ADRLIST& recipients, uint32_t contentsStyle, MemberWriter& writer) {
    std::optional<FaxEntryTexts> texts;
    if (contentsStyle == contentsStyleFaxEntries) texts.emplace();
    for (ULONG i = 0; i < recipients.cEntries && !writer.HasOverflowed(); ++i) {
        const ContentsRow row{PropertyValues(recipients.aEntries[i])};
        if (texts)
            AddFaxEntry(row, *texts, writer);
        else
            AddFaxColumns(row, writer);
    }
}

// A person stands for itself, with its first number; without a number it has none to send to.
std::optional<CRecipientEntry> MakeRecipient(const CUserDetails& user) {
    struct Choice {
        CString number;
        CString attr1 = {};
        CString attr2 = {};
        CString attr3 = {};
    };
    const CUserCompanions& companions = *user.companions;
    const Choice choices[] = {
        {user.primaryFax},
        {user.homeFax, companions.homeFaxAttr1, companions.homeFaxAttr2, companions.homeFaxAttr3},
        {user.businessFax, companions.businessFaxAttr1, companions.businessFaxAttr2, companions.businessFaxAttr3},
        {user.otherFax},
    };
    for (const Choice& choice : choices) {
        if (choice.number.IsEmpty()) continue;
        CRecipientEntry recipient;
        recipient.name = user.name;
        recipient.faxNumber = choice.number;
        recipient.company = user.company;
        recipient.department = user.department;
        recipient.faxAttr1 = choice.attr1;
        recipient.faxAttr2 = choice.attr2;
        recipient.faxAttr3 = choice.attr3;
        return recipient;
    }
    return std::nullopt;
}

}  // namespace

bool ExpandGroup(const QueryContext& context, uint32_t reserved, void* group, uint32_t& count,
                 const RecordListDescriptor* records) {
    const CContentsDetails* details = AsDestination(group);
    if (details == nullptr) return true;
    const bool filling = records != nullptr;
    // With another value than 0 the provider is asked all the same, and nothing is written.
    std::optional<MemberWriter> writer;
    if (filling && reserved == 0) writer.emplace(*records, count, context.contentsStyle);

    if (details->kind == EntryKind::User) {
        const std::optional<CRecipientEntry> recipient = MakeRecipient(static_cast<const CUserDetails&>(*details));
        if (writer && recipient) writer->AddRecipient(*recipient);
    } else {
        const SessionHandle& session = *context.session;
        HeldAddressList recipients(session.support.Get());
        if (!Expand(session, static_cast<const CDistributionListDetails&>(*details), recipients)) return true;
        if (!filling) {
            count = recipients.list->cEntries;
            return true;
        }
        if (FAILED(session.addressBook->PrepareRecips(0, ContentsColumns.Get(), recipients.list))) return true;
        if (writer) AddRecipients(*recipients.list, context.contentsStyle, *writer);
    }
    return !writer || !writer->HasOverflowed();
}
