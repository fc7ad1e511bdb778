// One entry of a directory on its way to a card: its attributes are added one by one, in any order.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "cards/card_draft.h"
#include "cards/directory_attributes.h"
#include "cards/distinguished_name.h"

class DirectoryEntry {
  public:
    explicit DirectoryEntry(CardReceiver& receiver) : receiver_(receiver) {}

    // Text is UTF-8. A name that is none is reported: groups cannot name the entry then.
    void Begin(size_t line, std::string_view distinguishedName);
    // `description` is the attribute as it is written, `meaning` what MeaningOfAttribute says of it.
    void Add(size_t line, std::string_view description, const AttributeMeaning& meaning, std::string_view value);
    // Hands the card on, if the entry is a person or a group, or has a fax number. What is neither, and not known to be
    // something else, is reported.
    void Finish();

  private:
    static constexpr size_t textCount = static_cast<size_t>(DirectoryField::Department) + 1;

    const std::string& TextOf(DirectoryField field) const { return texts_[static_cast<size_t>(field)]; }
    void SetText(const AttributeMeaning& meaning, std::string_view value);
    void AddEmail(size_t line, std::string_view address);
    void AddProxyAddress(size_t line, std::string_view description, std::string_view address);
    void AddTelephone(size_t line, std::string_view description, const AttributeMeaning& meaning,
                      std::string_view number);
    void AddMember(size_t line, const AttributeMeaning& meaning, std::string_view value);
    void AddMemberText(size_t line, std::string text);
    void AddClass(std::string_view objectClass);
    void CompleteName();
    bool IsWanted() const;
    bool HasFaxNumber() const;
    void ReportUnknown();
    void ReportMissingMembers();

    CardReceiver& receiver_;
    CardDraft card_;
    std::string nameInDirectory_;  // the value of the first attribute of its distinguished name
    bool isNamedByCommonName_ = false;
    std::array<std::string, textCount> texts_;  // by field
    std::array<std::uint8_t, textCount> ranks_ = {};
    EntryKind kind_ = EntryKind::Unknown;
    std::string unknownClass_;
    std::string partOfMembers_;  // the option of the last part of a list of members that was cut
    bool hasLastMembers_ = false;
    size_t searchLine_ = 0;  // of members that a search finds
};
