// A person, one fax number of a person, or a group, as rows, properties and recipients show it.
#pragma once

#include "mapi_objects/property_source.h"
#include "session/fax_places.h"
#include "session/session.h"

class RowSource;

class Destination {
  public:
    // The identifier need not hold the identity. Everything is borrowed.
    Destination(const CardSet& cards, const EntryId& id, ContentsStyle style, std::uint64_t session,
                FaxPlacesFor reader = FaxPlacesFor::Listing);

    void Write(ValueWriter& value) const;

  private:
    bool IsFaxEntry() const { return id_.kind == EntryId::Kind::FaxEntry; }
    const char* Text(TextPosition position) const { return cards_.Text(position); }
    void WriteText(TextPosition text, ValueWriter& value) const;
    void WriteNumber(const FaxNumber* number, ValueWriter& value) const;
    void WriteName(ValueWriter& value) const;
    void WriteAddressType(ValueWriter& value) const;
    void WriteAddress(ValueWriter& value) const;
    void WriteEntryId(ValueWriter& value) const;

    const CardSet& cards_;
    const Card& card_;
    EntryId id_;
    std::uint64_t session_;
    const FaxNumber* faxNumber_ = nullptr;  // of a fax entry
    FaxPlaces places_;
};

// Calls the function with each identifier under which a card is listed: one for each fax number where an address book
// shows those, else one for the card itself. A person without a fax number is one entry in every style.
template <typename Function>
void ForEachEntryId(const CardSet& cards, std::uint32_t file, std::uint32_t card, std::uint32_t node,
                    ContentsStyle style, Function&& function) {
    const Card& described = cards.Cards()[card];
    EntryId id{described.isGroup ? EntryId::Kind::Group : EntryId::Kind::Person, node, file, card, 0, cards.Edition()};
    if (style != ContentsStyle::FaxEntries || described.isGroup || described.faxNumberCount == 0) return function(id);
    id.kind = EntryId::Kind::FaxEntry;
    for (; id.faxNumber < described.faxNumberCount; ++id.faxNumber) function(id);
}

// The rows of a contents table: the destinations in a container, or the direct members of a group.
std::unique_ptr<const RowSource> ContentsOfContainer(const std::shared_ptr<Session>& session, std::uint32_t node);
std::unique_ptr<const RowSource> MembersOfGroup(const std::shared_ptr<Session>& session, std::uint32_t node,
                                                const CardReference& group, ContentsStyle style);
