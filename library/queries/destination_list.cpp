// Destination list: one record for each fax number of a person and one for each distribution list.
#include "queries/destination_list.h"

#include "model/contents_reader.h"
#include "model/fax_slots.h"
#include "queries/record_writer.h"

namespace {

constexpr TextField nameField = TEXT_FIELD(DestinationRecord, name, 85, Cut::WholeCharacters);
constexpr TextField faxNumberField = TEXT_FIELD(DestinationRecord, faxNumber, 45, Cut::WholeCharacters);
constexpr TextField extendedFaxNumberField = TEXT_FIELD(DestinationRecord, faxNumber, 120, Cut::WholeCharacters);
constexpr TextField companyField = TEXT_FIELD(DestinationRecord, company, 40, Cut::WholeCharacters);
constexpr TextField departmentField = TEXT_FIELD(DestinationRecord, department, 40, Cut::WholeCharacters);
constexpr TextField faxNoteField = TEXT_FIELD(DestinationRecord, faxNote, 30, Cut::WholeCharacters);
constexpr TextField commentField = TEXT_FIELD(DestinationRecord, comment, 255, Cut::WholeCharacters);
constexpr TextField faxAttr1Field = TEXT_FIELD(DestinationRecord, faxAttr1, 20, Cut::Bytes);
constexpr TextField faxAttr2Field = TEXT_FIELD(DestinationRecord, faxAttr2, 20, Cut::Bytes);
constexpr TextField faxAttr3Field = TEXT_FIELD(DestinationRecord, faxAttr3, 20, Cut::Bytes);
constexpr TextField extraTextField = TEXT_FIELD(DestinationRecord, extraText, 85, Cut::Bytes);
constexpr TextField extraShortTextField = TEXT_FIELD(DestinationRecord, extraShortText, 40, Cut::Bytes);

// Hands out the caller's records one after the other.
class RecordAddresses {
  public:
    RecordAddresses(const RecordListDescriptor& records, uint32_t capacity)
        : next_(static_cast<void* const*>(records.recordStorage)), left_(next_ != nullptr ? capacity : 0) {}

    // The next record; null when the caller has no further one.
    void* Take() {
        if (left_ == 0) return nullptr;
        --left_;
        return *next_++;
    }

  private:
    void* const* next_;
    uint32_t left_;
};

void WriteType(const RecordWriter& writer, uint16_t type, const CEntryDetails& details) {
    const CHandleEntry* handle = &details;
    writer.PutValue(offsetof(DestinationRecord, type), type);
    writer.PutValue(offsetof(DestinationRecord, entry), handle);
    writer.PutText(nameField, details.name.View());
}

// A person without any number: what a caller needs to show the person and ask for details.
void WriteNameOnly(const RecordWriter& writer, const CUserDetails& user) {
    WriteType(writer, DESTINATION_PERSON, user);
    for (const TextField& field : {faxNumberField, faxNoteField, faxAttr1Field, faxAttr2Field, faxAttr3Field})
        writer.PutText(field, {});
}

void WriteFaxNumber(const RecordWriter& writer, const CUserDetails& user, const FaxSlot& slot) {
    const CUserCompanions& companions = *user.companions;
    const auto companion = [&](CString CUserCompanions::*field) {
        return field != nullptr ? (companions.*field).View() : std::string_view("");
    };
    WriteType(writer, DESTINATION_PERSON, user);
    writer.PutText(slot.extended ? extendedFaxNumberField : faxNumberField, (user.*slot.number).View());
    writer.PutText(companyField, user.company.View());
    writer.PutText(departmentField, user.department.View());
    writer.PutText(faxNoteField, companion(slot.note));
    writer.PutText(commentField, user.comment.View());
    writer.PutText(faxAttr1Field, companion(slot.attr1));
    writer.PutText(faxAttr2Field, companion(slot.attr2));
    writer.PutText(faxAttr3Field, companion(slot.attr3));
    writer.PutText(extraTextField, companions.userExtraText.View());
    writer.PutText(extraShortTextField, companions.extraShortText.View());
    if (slot.extended) {
        writer.PutValue(offsetof(DestinationRecord, extendedFaxValue1), companions.extendedFaxValue1);
        writer.PutValue(offsetof(DestinationRecord, extendedFaxValue2), companions.extendedFaxValue2);
    }
}

bool WriteUser(const CUserDetails& user, RecordAddresses& addresses) {
    bool written = false;
    for (const FaxSlot& slot : FaxSlots) {
        if ((user.*slot.number).IsEmpty()) continue;
        void* record = addresses.Take();
        if (record == nullptr) return false;
        WriteFaxNumber(RecordWriter(record), user, slot);
        written = true;
    }
    if (written) return true;
    void* record = addresses.Take();
    if (record != nullptr) WriteNameOnly(RecordWriter(record), user);
    return record != nullptr;
}

bool WriteDistributionList(const CContentsDetails& list, RecordAddresses& addresses) {
    void* record = addresses.Take();
    if (record == nullptr) return false;
    const RecordWriter writer(record);
    WriteType(writer, DESTINATION_GROUP, list);
    writer.PutText(commentField, list.comment.View());
    writer.PutText(extraTextField, list.extraText.View());
    return true;
}

}  // namespace

bool CountDestinations(QueryContext& context, const void* addressBookEntry, uint32_t& count) {
    const CBaseEntry* addressBook = AsAddressBookEntry(addressBookEntry);
    if (addressBook == nullptr) return false;
    std::unique_ptr<DestinationList> list = std::move(context.destinationList);
    if (list == nullptr) list = std::make_unique<DestinationList>(context.session);
    list->DeleteAll();
    ReadContainerContents(context, addressBook->entryId, *list);
    count += list->recordCount;
    context.destinationList = std::move(list);
    return true;
}

bool FillDestinations(const QueryContext& context, uint32_t capacity, const RecordListDescriptor& records) {
    if (context.destinationList == nullptr) return true;
    RecordAddresses addresses(records, capacity);
    for (const CContentsDetails& details : context.destinationList->Each<CContentsDetails>()) {
        const bool written = details.kind == EntryKind::User
                                 ? WriteUser(static_cast<const CUserDetails&>(details), addresses)
                                 : WriteDistributionList(details, addresses);
        if (!written) return false;
    }
    return true;
}
