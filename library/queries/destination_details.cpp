// Destination details: the lines of a person's text and of a distribution list's.
#include "queries/destination_details.h"

#include <cstring>

#include "model/fax_kinds.h"
#include "queries/members_reader.h"
#include "resources/string_table.h"

namespace {

// Adds to the details text, line by line, with separators between lines only.
class DetailsLines {
  public:
    explicit DetailsLines(std::string& detailsText) : text_(detailsText) {}

    // Room for that many lines of that many bytes in all, so that a long text is not copied while it grows.
    void Reserve(size_t lines, size_t bytes) { text_.reserve(bytes + lines * lineSeparator.size()); }

    // An empty line is left out.
    void AddLine(std::string_view line) {
        if (line.empty()) return;
        if (!text_.empty()) text_ += lineSeparator;
        text_ += line;
    }

    // Left out when either is empty.
    void AddLabelledLine(std::string_view number, UINT labelId) {
        const std::string label = LoadLibraryString(labelId);
        if (number.empty() || label.empty()) return;
        AddLine(number);
        text_ += ' ';
        text_ += label;
    }

  private:
    std::string& text_;
};

struct FaxLine {
    CString CUserDetails::*number;
    CString CUserCompanions::*note;  // null: there is none
    UINT label;
    UINT labelPrimarySecondary;  // for address books of that contents style
};

// The first of these numbers that a person has is the one shown.
constexpr FaxLine faxLines[] = {
    {&CUserDetails::businessFax, &CUserCompanions::businessFaxNote, IDS_BUSINESS_LABEL, IDS_PRIMARY_LABEL},
    {&CUserDetails::homeFax, &CUserCompanions::homeFaxNote, IDS_HOME_LABEL, IDS_SECONDARY_LABEL},
    {&CUserDetails::primaryFax, nullptr, IDS_BUSINESS_LABEL, IDS_PRIMARY_LABEL},
    {&CUserDetails::otherFax, nullptr, IDS_OTHER_LABEL, IDS_OTHER_LABEL},
};

const FaxLine* FindFaxLine(const CUserDetails& user) {
    for (const FaxLine& line : faxLines)
        if (!(user.*line.number).IsEmpty()) return &line;
    return nullptr;
}

void AddUser(DetailsLines& lines, const CUserDetails& user, uint32_t contentsStyle) {
    lines.AddLine(user.name.View());
    lines.AddLine(user.company.View());
    lines.AddLine(user.department.View());
    if (const FaxLine* fax = FindFaxLine(user)) {
        const bool primarySecondary = contentsStyle == contentsStylePrimarySecondary;
        lines.AddLabelledLine((user.*fax->number).View(), primarySecondary ? fax->labelPrimarySecondary : fax->label);
        if (fax->note != nullptr) lines.AddLine((user.companions->*fax->note).View());
    } else {
        lines.AddLine(LoadLibraryString(IDS_NO_FAX_NUMBER));
    }
    lines.AddLine(user.comment.View());
}

// The members' names, persons before lists; the list's own name is not among them.
void AddMembers(DetailsLines& lines, const CObList& members) {
    using Member = CDistributionListDetails::CDetails;
    size_t bytes = 0;
    for (const Member& member : members.Each<Member>()) bytes += member.name.View().size();
    lines.Reserve(members.GetCount(), bytes);
    for (const uint32_t objectType : {MAPI_MAILUSER, MAPI_DISTLIST})
        for (const Member& member : members.Each<Member>())
            if (member.objectType == objectType) lines.AddLine(member.name.View());
}

}  // namespace

bool WriteDestinationDetails(QueryContext& context, void* entry, uint32_t& size, char* buffer) {
    CContentsDetails* details = AsDestination(entry);
    if (details == nullptr) return false;
    std::string& text = context.detailsText;
    text.clear();
    DetailsLines lines(text);
    if (details->kind == EntryKind::DistributionList)
        AddMembers(lines, ReadMembers(context, static_cast<CDistributionListDetails&>(*details)));
    else
        AddUser(lines, static_cast<const CUserDetails&>(*details), context.contentsStyle);

    if (buffer == nullptr) {
        size = static_cast<uint32_t>(text.size());
        return true;
    }
    if (size < text.size()) return false;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return true;
}
