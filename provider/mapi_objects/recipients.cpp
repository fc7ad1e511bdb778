// Expanding and filling address lists. The list and the values of each entry are buffers of their own, as MAPI has it.
#include "mapi_objects/recipients.h"

#include <algorithm>
#include <set>
#include <span>
#include <tuple>

#include "mapi_objects/destination.h"
#include "session/group_members.h"
#include "text/code_pages.h"

namespace {

size_t ListSize(size_t entries) {
    return offsetof(ADRLIST, aEntries) + entries * sizeof(ADRENTRY);
}

// The entries of a list that this provider made, or throws: the count is the caller's and may be anything.
std::span<ADRENTRY> EntriesOf(ADRLIST* list) {
    const size_t size = BufferSize(list);
    Require(size >= sizeof(ULONG) && ListSize(list->cEntries) <= std::max(size, ListSize(0)));
    return {list->aEntries, list->cEntries};
}

std::span<const SPropValue> ValuesOf(const ADRENTRY& entry) {
    if (entry.rgPropVals == nullptr) return {};
    const size_t room = BufferSize(entry.rgPropVals) / sizeof(SPropValue);
    // Values from elsewhere have the size that their entry says.
    Require(room == 0 || entry.cValues <= room);
    return {entry.rgPropVals, entry.cValues};
}

const SPropValue* FindValue(std::span<const SPropValue> values, ULONG tag) {
    for (const SPropValue& value : values)
        if (value.ulPropTag == tag) return &value;
    return nullptr;
}

enum class GroupsAre { AsLastRead, ReadAnew };

// Whom an entry with these values stands for; nothing for a recipient from elsewhere. Throws for one of this session
// that means nobody now.
std::optional<FoundEntry> FindRecipient(Session& session, std::span<const SPropValue> values, GroupsAre groups) {
    const SPropValue* const bytes = FindValue(values, PR_ENTRYID);
    if (bytes == nullptr) return std::nullopt;
    const std::optional<EntryId> id = DecodeEntryId(bytes->Value.bin.lpb, bytes->Value.bin.cb, session.Number());
    if (!id || id->kind == EntryId::Kind::Container || session.FindNode(id->node) == nullptr) return std::nullopt;
    const SPropValue* const shown = FindValue(values, PR_DISPLAY_NAME);
    const char* const name = shown != nullptr && shown->Value.lpszA != nullptr ? shown->Value.lpszA : "";
    const bool readAnew = id->kind == EntryId::Kind::Group && groups == GroupsAre::ReadAnew;
    std::optional<FoundEntry> found =
        readAnew ? FindGroupAnew(session, *id, name) : session.FindEntryOrReport(*id, name);
    Require(found.has_value(), MAPI_E_NOT_FOUND);
    return found;
}

using ListHolder = std::unique_ptr<ADRLIST, BufferDeleter>;

// The list that an expansion makes. Until Finish the old list and its values are untouched.
class Expansion {
  public:
    explicit Expansion(Session& session) : session_(session) {}

    void Add(ADRENTRY& entry) {
        const size_t unreadBefore = session_.UnreadCount();
        const std::optional<FoundEntry> recipient = FindRecipient(session_, ValuesOf(entry), GroupsAre::ReadAnew);
        if (recipient && recipient->id.kind == EntryId::Kind::Group) return AddMembers(*recipient, unreadBefore);
        if (recipient && !IsNew(recipient->id)) return;
        entries_.push_back(entry);
        kept_.push_back(&entry);
    }
    ListHolder Finish();

  private:
    bool IsNew(const EntryId& id) {
        const std::uint32_t number = id.kind == EntryId::Kind::FaxEntry ? id.faxNumber + 1 : 0;
        return seen_.insert({id.file, id.edition, id.card, number}).second;
    }
    // Throws for a group that may have more members in what could not be read since then.
    void AddMembers(const FoundEntry& group, size_t unreadBefore);
    void AddRecipient(const FoundEntry& recipient, ContentsStyle style);

    Session& session_;
    std::vector<ADRENTRY> entries_;
    std::vector<BufferHolder> made_;  // the values of new entries
    std::vector<ADRENTRY*> kept_;     // the old entries that go over to the new list
    std::set<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t>> seen_;
};

void Expansion::AddMembers(const FoundEntry& group, size_t unreadBefore) {
    const ContentsStyle style = session_.FindNode(group.id.node)->settings.Style();
    const GroupMembers members = AllPersons(session_, group.id.node, group.card);
    const bool mayHaveMore = members.missingCount > 0 || session_.NodeOfCategoryGroups(group.card.file);
    if (mayHaveMore && session_.UnreadCount() != unreadBefore) {
        session_.Messages().Report(session_.FilePath(group.card.file), group.card.Get().line,
                                   "the group \"" + FromActiveCodePage(group.card.cards->Text(group.card.Get().name)) +
                                       "\" may have members in what cannot be read",
                                   "no fax goes to half of it; see to the file or folder that is named before");
        throw Failure(MAPI_E_UNABLE_TO_COMPLETE);
    }
    for (const CardReference& person : members.cards) {
        // In this style a recipient is a number, and a caller makes room for as many records as there are recipients.
        if (style == ContentsStyle::FaxEntries && person.Get().faxNumberCount == 0) {
            session_.Messages().Report(session_.FilePath(person.file), person.Get().line,
                                       "\"{}\" is a member of a group and has no fax number",
                                       "it was left out of the group",
                                       {FromActiveCodePage(person.cards->Text(person.Get().name))});
            continue;
        }
        ForEachEntryId(*person.cards, person.file, person.card, group.id.node, style, [&](const EntryId& id) {
            if (IsNew(id)) AddRecipient({id, person}, style);
        });
    }
}

void Expansion::AddRecipient(const FoundEntry& recipient, ContentsStyle style) {
    constexpr ULONG tags[] = {PR_ENTRYID, PR_RECIPIENT_TYPE, PR_DISPLAY_NAME, PR_ADDRTYPE, PR_OBJECT_TYPE};
    ResultBuffer buffer(std::size(tags) * sizeof(SPropValue) + entryIdSize);
    auto* const values = buffer.Take<SPropValue>(std::size(tags));
    const Destination destination(*recipient.card.cards, recipient.id, style, session_.Number(),
                                  FaxPlacesFor::Recipient);
    for (size_t i = 0; i < std::size(tags); ++i) {
        ValueWriter writer(tags[i], values[i], buffer);
        if (tags[i] == PR_RECIPIENT_TYPE)
            writer.Long(MAPI_TO);
        else
            destination.Write(writer);
    }
    buffer.KeepAlive(recipient.card.cards);
    made_.emplace_back();
    entries_.push_back({0, static_cast<ULONG>(std::size(tags)), values});
    made_.back().reset(buffer.Detach());
}

ListHolder Expansion::Finish() {
    ListHolder list(AllocateAddressList(ListSize(entries_.size())));
    list->cEntries = static_cast<ULONG>(entries_.size());
    std::copy(entries_.begin(), entries_.end(), list->aEntries);
    for (BufferHolder& values : made_) static_cast<void>(values.release());
    for (ADRENTRY* const entry : kept_) entry->rgPropVals = nullptr;
    return list;
}

// The values of one entry, made before the old ones are given up.
void PrepareRecipient(const Session& session, const std::vector<ULONG>& tags,
                      const std::optional<FoundEntry>& recipient, ADRENTRY& entry) {
    const std::span<const SPropValue> old = ValuesOf(entry);
    std::optional<Destination> destination;
    if (recipient)
        destination.emplace(*recipient->card.cards, recipient->id,
                            session.FindNode(recipient->id.node)->settings.Style(), session.Number(),
                            FaxPlacesFor::Recipient);
    ResultBuffer buffer(tags.size() * sizeof(SPropValue) + 256);
    auto* const values = buffer.Take<SPropValue>(tags.size());
    for (size_t i = 0; i < tags.size(); ++i) {
        ValueWriter writer(tags[i], values[i], buffer);
        if (destination) destination->Write(writer);
        const SPropValue* const had = FindValue(old, tags[i]);
        if (writer.IsMissing() && had != nullptr) writer.Copy(*had);
    }
    if (recipient) buffer.KeepAlive(recipient->card.cards);
    FreeBuffer(entry.rgPropVals);
    entry.cValues = static_cast<ULONG>(tags.size());
    entry.rgPropVals = values;
    buffer.Detach();
}

}  // namespace

ADRLIST* AllocateAddressList(size_t byteCount) {
    return static_cast<ADRLIST*>(AllocateBuffer(byteCount));
}

void FreeAddressList(ADRLIST* list) {
    for (const ADRENTRY& entry : EntriesOf(list)) FreeBuffer(entry.rgPropVals);
    FreeBuffer(list);
}

void ExpandRecipients(Session& session, ADRLIST** list) {
    Require(list != nullptr && *list != nullptr);
    Expansion expansion(session);
    MessagePass pass(session.Messages());
    for (ADRENTRY& entry : EntriesOf(*list)) expansion.Add(entry);
    pass.Finish();
    ListHolder expanded = expansion.Finish();
    FreeAddressList(*list);
    *list = expanded.release();
}

void PrepareRecipients(Session& session, const SPropTagArray* tags, ADRLIST* list) {
    Require(list != nullptr);
    const std::span<ADRENTRY> entries = EntriesOf(list);
    // Without tags there is nothing to add: identifiers are what they are for the whole session.
    if (tags == nullptr) return;
    const std::vector<ULONG> wanted = ReadTags(tags);
    std::vector<std::optional<FoundEntry>> recipients;
    for (const ADRENTRY& entry : entries)
        recipients.push_back(FindRecipient(session, ValuesOf(entry), GroupsAre::AsLastRead));
    for (size_t i = 0; i < entries.size(); ++i) PrepareRecipient(session, wanted, recipients[i], entries[i]);
}
