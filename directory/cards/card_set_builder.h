// Turns the cards that a reader hands on into the records of a set.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "cards/card_draft.h"
#include "cards/card_set.h"

// What the records of a set hold beside what every set has: each costs memory for every card.
struct CardSetContents {
    bool addresses = false;  // e-mail addresses and numbers of cards, by which a group may name its members
    bool categories = false;

    CardSetContents And(const CardSetContents& other) const {
        return {addresses || other.addresses, categories || other.categories};
    }
    // Whether this is all that the other one asks for.
    bool Includes(const CardSetContents& other) const {
        return (addresses || !other.addresses) && (categories || !other.categories);
    }
};

class CardSetBuilder final : public CardReceiver {
  public:
    // What is reported goes to `messages`. The text's size is needed only roughly, to make room.
    CardSetBuilder(CardSetContents contents, size_t textSize, MessageReceiver& messages);

    void Receive(CardDraft& draft) override;
    void Report(size_t line, std::string_view what, std::string_view advice) override {
        messages_.Report(line, what, advice);
    }

    // A group of cards of any files. The name is in the active code page.
    void AddCategoryGroup(std::string_view name, const std::vector<CardPlace>& cards);

    std::shared_ptr<const CardSet> Finish(std::optional<UINT> guessedCharset);

  private:
    TextPosition Keep(std::string_view utf8);
    TextPosition KeepActive(std::string_view text);
    void KeepAddress(std::string_view address);
    void AddFaxNumbers(const CardDraft& draft, Card& card);
    void AddAddresses(const CardDraft& draft);
    void PutInOrder();

    CardSetContents contents_;
    MessageReceiver& messages_;
    std::shared_ptr<CardSet> set_ = std::make_shared<CardSet>();
    std::vector<FaxNumberOfCard> numbersOfCard_;
    bool inOrder_ = true;
};
