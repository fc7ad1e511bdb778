// One card as a reader of any file format hands it on, and who takes it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cards/fax_rules.h"
#include "text/told_text.h"

// A list whose elements keep their memory when it is emptied.
template <typename Element>
class ReusedList {
  public:
    Element& Add() {
        if (count_ == elements_.size()) elements_.emplace_back();
        return elements_[count_++];
    }
    void Clear() { count_ = 0; }
    bool IsEmpty() const { return count_ == 0; }
    Element* begin() { return elements_.data(); }
    Element* end() { return elements_.data() + count_; }
    const Element* begin() const { return elements_.data(); }
    const Element* end() const { return elements_.data() + count_; }

  private:
    std::vector<Element> elements_;
    size_t count_ = 0;
};

// One telephone number; `facts` include its label's once the card is complete.
struct Telephone {
    size_t line = 0;
    std::string group;
    std::string source;  // what the file says of the number, for the user: "TEL;TYPE=WORK,FAX" or a column's name
    std::string number;
    TelephoneFacts facts;
};

// A text with the line that it stands in.
struct LinedText {
    size_t line = 0;
    std::string text;
};

// Text is UTF-8, without escapes; what is absent is empty.
struct CardDraft {
    size_t line = 0;  // where it begins, counted from 1
    bool isGroup = false;
    std::string formattedName;
    std::string nameFromParts;
    std::string nickname;
    std::string company;
    std::string department;
    std::string note;
    std::string uid;
    ReusedList<LinedText> emails;
    ReusedList<Telephone> telephones;
    ReusedList<LinedText> members;
    ReusedList<LinedText> categories;

    void Clear();
};

// Takes what a user should know about a file.
class MessageReceiver {
  public:
    virtual void Take(const Message& message) = 0;
    void Report(size_t line, std::string_view what, std::string_view advice, MessageNames names = {}) {
        Take({line, what, advice, names});
    }

  protected:
    ~MessageReceiver() = default;
};

class CardReceiver : public MessageReceiver {
  public:
    // A complete card; the receiver may change it. Cards inside another come before it.
    virtual void Receive(CardDraft& card) = 0;

  protected:
    ~CardReceiver() = default;
};

struct FaxNumberOfCard {
    FaxKind kind;
    const Telephone* telephone;
};

// More bytes than this are no number: no record holds them, and the beginning of it would be another number.
inline constexpr size_t longestNumber = 255;

// The fax numbers of a card in their order; of the same number of the same kind, the first only: exporters repeat
// themselves. Replaces what is in the list.
void ListFaxNumbers(const CardDraft& card, std::vector<FaxNumberOfCard>& numbers);

// The name that a card goes by; empty when nothing in it could be one. Borrowed from the card.
std::string_view NameOf(const CardDraft& card);
