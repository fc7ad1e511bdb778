// One place writes every value of a destination, so that a row, an opened entry and a recipient agree.
#include "mapi_objects/destination.h"

#include "cards/card_identity.h"
#include "mapi/fax_texts.h"

namespace {

// How a fax entry's name says what its number is; a primary number's says nothing.
const char* SuffixOf(FaxKind kind) {
    switch (kind) {
        case FaxKind::Business:
            return " " BUSINESS_FAX_SUFFIX;
        case FaxKind::Home:
            return " " HOME_FAX_SUFFIX;
        case FaxKind::Other:
            return " " OTHER_FAX_SUFFIX;
        case FaxKind::Primary:
        case FaxKind::None:
            break;
    }
    return "";
}

}  // namespace

Destination::Destination(const CardSet& cards, const EntryId& id, ContentsStyle style, std::uint64_t session,
                         FaxPlacesFor reader)
    : cards_(cards), card_(cards.Cards()[id.card]), id_(id), session_(session) {
    const std::span<const FaxNumber> numbers = cards.FaxNumbers(card_);
    if (IsFaxEntry())
        faxNumber_ = &numbers[id.faxNumber];
    else if (!card_.isGroup)
        places_ = PlaceFaxNumbers(numbers, style, reader);
}

void Destination::WriteText(TextPosition text, ValueWriter& value) const {
    if (text != 0) value.Point(Text(text));
}

void Destination::WriteNumber(const FaxNumber* number, ValueWriter& value) const {
    if (number != nullptr) value.Point(Text(number->number));
}

void Destination::WriteName(ValueWriter& value) const {
    if (IsFaxEntry())
        value.Compose(Text(card_.name), SuffixOf(faxNumber_->kind));
    else
        value.Point(Text(card_.name));
}

void Destination::WriteAddressType(ValueWriter& value) const {
    if (IsFaxEntry())
        value.Point(FAX_ADDRESS_TYPE);
    else if (!card_.isGroup && card_.email != 0)
        value.Point(SMTP_ADDRESS_TYPE);
}

void Destination::WriteAddress(ValueWriter& value) const {
    if (IsFaxEntry())
        value.Compose(Text(card_.name), "@", Text(faxNumber_->number));
    else if (!card_.isGroup)
        WriteText(card_.email, value);
}

void Destination::WriteEntryId(ValueWriter& value) const {
    EntryId id = id_;
    id.identity = cards_.CardIdentity(id.card, session_);
    if (IsFaxEntry()) id.identity = IdentityOf(id.identity, cards_, *faxNumber_, session_);
    const EntryIdBytes bytes = EncodeEntryId(id, session_);
    value.Binary(bytes.data(), bytes.size());
}

void Destination::Write(ValueWriter& value) const {
    switch (value.Tag()) {
        case PR_DISPLAY_NAME:
            return WriteName(value);
        case PR_ENTRYID:
            return WriteEntryId(value);
        case PR_OBJECT_TYPE:
            return value.Long(static_cast<LONG>(card_.isGroup ? MAPI_DISTLIST : MAPI_MAILUSER));
        case PR_DISPLAY_TYPE:
            return value.Long(card_.isGroup ? DT_DISTLIST : DT_MAILUSER);
        case PR_ADDRTYPE:
            return WriteAddressType(value);
        case PR_EMAIL_ADDRESS:
            return WriteAddress(value);
        case PR_ORIGINAL_DISPLAY_NAME:
            if (IsFaxEntry()) value.Point(Text(card_.name));
            return;
        // Empty rather than missing: for a missing one of these three, callers open every single entry to ask again.
        case PR_COMPANY_NAME:
            return value.Point(Text(card_.company));
        case PR_DEPARTMENT_NAME:
            return value.Point(Text(card_.department));
        case PR_COMMENT:
            return value.Point(Text(card_.comment));
        case PR_BUSINESS_FAX_NUMBER:
            return WriteNumber(places_.business, value);
        case PR_HOME_FAX_NUMBER:
            return WriteNumber(places_.home, value);
        case PR_PRIMARY_FAX_NUMBER:
            return WriteNumber(places_.primary, value);
        case PR_VOK_EXTENDED_FAX:
            return WriteNumber(places_.further, value);
        default:
            return;
    }
}
