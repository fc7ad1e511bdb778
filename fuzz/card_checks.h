// What holds for the cards of any file, whatever was in it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string_view>

#include "cards/card_set_builder.h"
#include "promise.h"

// Counts what is reported, and looks at it.
class ReportCounter final : public MessageReceiver {
  public:
    void Take(const Message& message) override;
    size_t Count() const { return count_; }

  private:
    size_t count_ = 0;
};

// Hands on what a reader gives, and looks at it: everything in a draft is UTF-8.
class DraftChecker final : public CardReceiver {
  public:
    explicit DraftChecker(CardReceiver& next) : next_(next) {}
    void Receive(CardDraft& card) override;
    void Take(const Message& message) override { next_.Take(message); }

  private:
    CardReceiver& next_;
};

// Every text is well-formed in the active code page, every reference leads to something, every card can be found by
// its identifier.
void CheckCards(const CardSet& cards);

// The first bytes of an input choose how it is read; they are taken away.
struct ReadingChoice {
    CardSetContents contents;
    std::optional<UINT> charset;
};
ReadingChoice TakeChoice(std::string_view& input);
