// Reads the cards of a vCard text one after another, whatever stands between and inside them, and hands each one on.
#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "vcard/fax_rules.h"
#include "vcard/property.h"

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

// One telephone property; `facts` include its label's once the card is complete.
struct Telephone {
    size_t line = 0;
    std::string group;
    std::string number;
    TelephoneFacts facts;
};

// A text with the line that it stands in.
struct LinedText {
    size_t line = 0;
    std::string text;
};

struct Label {
    std::string group;
    std::string text;
};

// One card as it is read. Text is UTF-8, without escapes; an absent property is empty.
struct CardDraft {
    size_t line = 0;  // of its BEGIN
    VCardVersion version = VCardVersion::V30;
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
    ReusedList<Label> labels;
    ReusedList<LinedText> members;

    void Clear();
};

class CardReceiver {
  public:
    // A complete card. Cards inside another come before it.
    virtual void Receive(CardDraft& card) = 0;
    virtual void Report(size_t line, std::string_view what, std::string_view advice) = 0;

  protected:
    ~CardReceiver() = default;
};

// Reads every card of a text, to its end.
void ReadCards(std::istream& text, CardReceiver& receiver);
