// Contents reader: rows to persons and distribution lists, and the second reads that a row can ask for.
#include "model/contents_reader.h"

#include <optional>

#include "model/contents_row.h"
#include "model/fax_kinds.h"
#include "model/fax_slots.h"
#include "provider/entry_properties.h"
#include "provider/table_cursor.h"

namespace {

// What is read from the entry itself when its row could not deliver it.
enum class MissingProperty : ULONG { CompanyName, DepartmentName, Comment, Body, ExtraText, ExtraShortText, Count };
constexpr PropTagArray<static_cast<ULONG>(MissingProperty::Count)> MissingPropertyTags{
    .aulPropTag = {PR_COMPANY_NAME, PR_DEPARTMENT_NAME, PR_COMMENT, PR_BODY, PR_VOK_EXTRA_TEXT,
                   PR_VOK_EXTRA_SHORT_TEXT}};

constexpr PropTagArray<1> PlainNameTags{.aulPropTag = {PR_ORIGINAL_DISPLAY_NAME}};

class ContentsReader {
  public:
    ContentsReader(QueryContext& queryContext, DestinationList& destinations)
        : context_(queryContext),
          list_(destinations),
          opener_(queryContext.session->addressBook.Get()),
          support_(queryContext.session->support.Get()) {}

    void Read(const EntryId* containerId);

  private:
    void AddUser(const ContentsRow& row);
    void AddDistributionList(const ContentsRow& row);
    void FillUserDetails(const ContentsRow& row, CUserDetails& details);
    bool ReadMissingProperties(const ContentsRow& row, CUserDetails& details);
    void ReadFaxColumns(const ContentsRow& row, CUserDetails& details);
    void ReadFaxEntry(const ContentsRow& row, CUserDetails& details);
    void ReadNumberInAddress(const ContentsRow& row, CUserDetails& details);
    void SetFaxNumber(CUserDetails& details, FaxKind kind, CString number);

    CString Copy(const char* text) { return CString(list_.blocks, text); }
    CString Copy(const ContentsRow& row, ContentsColumn column) { return Copy(row.GetString(column)); }
    // The fax entries of one person follow each other and have texts in common: one copy serves all of them.
    void SetText(CUserDetails& details, CString CUserDetails::*member, const char* text) {
        const std::string_view view(text);
        if (entryBefore_ != nullptr && (entryBefore_->*member).View() == view)
            details.*member = entryBefore_->*member;
        else
            details.*member = CString(list_.blocks, view);
    }
    void SetText(CUserDetails& details, CString CUserDetails::*member, const ContentsRow& row, ContentsColumn column) {
        SetText(details, member, row.GetString(column));
    }
    // The person's own companions, made when the first one is there.
    CUserCompanions& Companions(CUserDetails& details) {
        if (companions_ == nullptr) details.companions = companions_ = list_.blocks.Create<CUserCompanions>();
        return *companions_;
    }
    void CopyCompanion(CUserDetails& details, CString CUserCompanions::*companion, const char* text) {
        if (*text != '\0') Companions(details).*companion = Copy(text);
    }
    void CopyCompanions(const ContentsRow& row, CUserDetails& details);

    QueryContext& context_;
    DestinationList& list_;
    EntryOpener opener_;
    SessionSupport* support_;
    CUserCompanions* companions_ = nullptr;       // of the person that is read
    const CUserDetails* entryBefore_ = nullptr;   // in a table of fax entries
    std::optional<FaxEntryTexts> faxEntryTexts_;  // when the table is read as fax entries
};

void ContentsReader::Read(const EntryId* containerId) {
    const Held<IABContainer> container = opener_.OpenContainer(containerId);
    if (!container) return;
    Held<IMAPITable> table;
    const HRESULT style = container->GetContentsTable(0, table.Receive());
    if (FAILED(style) || !table) return;
    context_.contentsStyle = static_cast<uint32_t>(style);
    if (context_.contentsStyle == contentsStyleFaxEntries) faxEntryTexts_.emplace();

    TableCursor rows(std::move(table), ContentsColumns.Get());
    while (const std::optional<PropertyValues> values = rows.Next()) {
        const ContentsRow row(*values);
        switch (row.GetObjectType()) {
            case MAPI_MAILUSER:
                AddUser(row);
                break;
            case MAPI_DISTLIST:
                AddDistributionList(row);
                break;
        }
    }
}

void ContentsReader::AddUser(const ContentsRow& row) {
    CUserDetails* details = list_.blocks.Create<CUserDetails>();
    companions_ = nullptr;
    FillUserDetails(row, *details);
    list_.AddTail(details);
    list_.recordCount += CountRecords(*details);
    if (faxEntryTexts_) entryBefore_ = details;
}

void ContentsReader::AddDistributionList(const ContentsRow& row) {
    CDistributionListDetails* details = list_.blocks.Create<CDistributionListDetails>(list_);
    details->name = Copy(row, ContentsColumn::DisplayName);
    details->extraText = Copy(row, ContentsColumn::ExtraText);
    details->comment = Copy(row, ContentsColumn::Comment);
    SetEntryId(*details, list_.blocks, row.GetEntryId(), PR_ENTRYID);
    list_.AddTail(details);
    list_.recordCount += 1;
}

void ContentsReader::FillUserDetails(const ContentsRow& row, CUserDetails& details) {
    SetEntryId(details, list_.blocks, row.GetEntryId(), PR_ENTRYID);
    if (!ReadMissingProperties(row, details)) {
        SetText(details, &CUserDetails::comment, row, ContentsColumn::Comment);
        SetText(details, &CUserDetails::company, row, ContentsColumn::CompanyName);
        SetText(details, &CUserDetails::department, row, ContentsColumn::DepartmentName);
        CopyCompanion(details, &CUserCompanions::userExtraText, row.GetString(ContentsColumn::ExtraText));
        CopyCompanion(details, &CUserCompanions::extraShortText, row.GetString(ContentsColumn::ExtraShortText));
    }
    if (faxEntryTexts_) {
        ReadFaxEntry(row, details);
    } else {
        details.name = Copy(row, ContentsColumn::DisplayName);
        ReadFaxColumns(row, details);
    }
}

// Reads from the entry what the table has marked as undeliverable. False when there is nothing of that kind or the
// entry cannot be read: then the row's values stand.
bool ContentsReader::ReadMissingProperties(const ContentsRow& row, CUserDetails& details) {
    const bool missing = row.IsError(ContentsColumn::CompanyName) || row.IsError(ContentsColumn::DepartmentName) ||
                         row.IsError(ContentsColumn::Comment);
    if (!missing) return false;
    const EntryProperties properties(opener_, support_, details.entryId, MissingPropertyTags.Get());
    const std::optional<PropertyValues> values = properties.GetValues();
    if (!values) return false;
    const auto get = [&](MissingProperty property) {
        const ULONG position = static_cast<ULONG>(property);
        return GetColumnString(*values, position, MissingPropertyTags.aulPropTag[position]);
    };
    const auto copy = [&](MissingProperty property) { return Copy(get(property)); };
    details.company = copy(MissingProperty::CompanyName);
    details.department = copy(MissingProperty::DepartmentName);
    details.comment = copy(MissingProperty::Comment);
    if (details.comment.IsEmpty()) details.comment = copy(MissingProperty::Body);
    CopyCompanion(details, &CUserCompanions::userExtraText, get(MissingProperty::ExtraText));
    CopyCompanion(details, &CUserCompanions::extraShortText, get(MissingProperty::ExtraShortText));
    return true;
}

// The table-driven reading: each number has a column of its own.
void ContentsReader::ReadFaxColumns(const ContentsRow& row, CUserDetails& details) {
    for (const FaxKindRow& fax : FaxKindTable) SetFaxNumber(details, fax.kind, Copy(row, fax.column));
    CopyCompanions(row, details);
}

void ContentsReader::CopyCompanions(const ContentsRow& row, CUserDetails& details) {
    struct CompanionColumn {
        ContentsColumn column;
        CString CUserCompanions::*companion;
    };
    constexpr CompanionColumn columns[] = {
        {ContentsColumn::BusinessFaxAttr1, &CUserCompanions::businessFaxAttr1},
        {ContentsColumn::BusinessFaxAttr2, &CUserCompanions::businessFaxAttr2},
        {ContentsColumn::BusinessFaxNote, &CUserCompanions::businessFaxNote},
        {ContentsColumn::BusinessFaxAttr3, &CUserCompanions::businessFaxAttr3},
        {ContentsColumn::HomeFaxAttr1, &CUserCompanions::homeFaxAttr1},
        {ContentsColumn::HomeFaxAttr2, &CUserCompanions::homeFaxAttr2},
        {ContentsColumn::HomeFaxNote, &CUserCompanions::homeFaxNote},
        {ContentsColumn::HomeFaxAttr3, &CUserCompanions::homeFaxAttr3},
        {ContentsColumn::ExtendedFaxAttr1, &CUserCompanions::extendedFaxAttr1},
        {ContentsColumn::ExtendedFaxNote, &CUserCompanions::extendedFaxNote},
        {ContentsColumn::ExtendedFaxAttr2, &CUserCompanions::extendedFaxAttr2},
    };
    for (const CompanionColumn& column : columns)
        CopyCompanion(details, column.companion, row.GetString(column.column));
    const uint16_t value1 = row.GetShort(ContentsColumn::ExtendedFaxValue1);
    const uint16_t value2 = row.GetShort(ContentsColumn::ExtendedFaxValue2);
    if (value1 == 0 && value2 == 0) return;
    Companions(details).extendedFaxValue1 = value1;
    Companions(details).extendedFaxValue2 = value2;
}

// The fax-entry reading: an entry of address type "FAX" is one number, which stands in its address.
void ContentsReader::ReadFaxEntry(const ContentsRow& row, CUserDetails& details) {
    const std::string_view addressType = row.GetString(ContentsColumn::AddrType);
    if (faxEntryTexts_->IsFax(addressType)) {
        ReadNumberInAddress(row, details);
        return;
    }
    details.name = Copy(row, ContentsColumn::DisplayName);
    details.primaryFax = Copy(row, ContentsColumn::PrimaryFaxNumber);
    const bool contact = faxEntryTexts_->IsSmtp(addressType) || addressType.empty();
    if (contact && *row.GetString(ContentsColumn::OriginalDisplayName) == '\0') {
        details.businessFax = Copy(row, ContentsColumn::BusinessFaxNumber);
        details.homeFax = Copy(row, ContentsColumn::HomeFaxNumber);
    }
}

// The plain name is known to the entry only; without it there is no telling where in the address the number begins.
void ContentsReader::ReadNumberInAddress(const ContentsRow& row, CUserDetails& details) {
    const char* displayName = row.GetString(ContentsColumn::DisplayName);
    const EntryProperties properties(opener_, support_, details.entryId, PlainNameTags.Get());
    const std::optional<PropertyValues> values = properties.GetValues();
    if (!values) {
        details.name = Copy(displayName);
        return;
    }
    SetText(details, &CUserDetails::name, GetColumnString(*values, 0, PR_ORIGINAL_DISPLAY_NAME));
    const std::string_view number =
        GetNumberInAddress(row.GetString(ContentsColumn::EmailAddress), details.name.View());
    const FaxKind suffixKind = faxEntryTexts_->GetFaxKindFromName(displayName);
    SetFaxNumber(details, suffixKind == FaxKind::None ? FaxKind::Primary : suffixKind, CString(list_.blocks, number));
}

void ContentsReader::SetFaxNumber(CUserDetails& details, FaxKind kind, CString number) {
    switch (kind) {
        case FaxKind::Primary:
            details.primaryFax = number;
            break;
        case FaxKind::Home:
            details.homeFax = number;
            break;
        case FaxKind::Business:
            details.businessFax = number;
            break;
        case FaxKind::Other:
            details.otherFax = number;
            break;
        case FaxKind::Extended:
            details.extendedFax = number;
            break;
        case FaxKind::None:
            break;
    }
}

}  // namespace

void ReadContainerContents(QueryContext& context, const EntryId* containerId, DestinationList& list) {
    ContentsReader(context, list).Read(containerId);
}
