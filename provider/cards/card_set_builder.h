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
    void Take(const Message& message) override { messages_.Take(message); }

    // A group of cards of the sources. The name, in the active code page, is its identifier, too, without regard to the
    // case of ASCII letters: no two groups have the same.
    void AddCategoryGroup(std::string_view name, const std::vector<CardPlace>& cards);
    // Where the members of categories stand: the set keeps them.
    void SetSources(std::vector<FileCards> sources) { set_->sources_ = std::move(sources); }

    std::shared_ptr<CardSet> Finish(std::optional<UINT> guessedCharset);

  private:
    TextPosition Keep(std::string_view utf8);
    // Not more than so many bytes; that the rest is left out is reported. `meaning` is what the user calls the text.
    TextPosition KeepBeginning(std::string_view utf8, size_t mostBytes, std::string_view meaning,
                               const CardDraft& draft);
    TextPosition KeepActive(std::string_view text);
    // False, with nothing done, for an address that names nothing.
    bool KeepAddress(std::string_view address);
    void AddFaxNumbers(const CardDraft& draft, Card& card);
    void AddAddresses(const CardDraft& draft);
    void PutInOrder();

    CardSetContents contents_;
    MessageReceiver& messages_;
    std::shared_ptr<CardSet> set_ = std::make_shared<CardSet>();
    std::vector<FaxNumberOfCard> numbersOfCard_;
    bool inOrder_ = true;
};
