// What holds for the cards of any file, whatever was in it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "cards/card_set_builder.h"
#include "promise.h"
#include "text/code_pages.h"

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
// Two sets have the same cards in the same order.
void CheckAreEqual(const CardSet& left, const CardSet& right);
// The last card is the good one of CheckReading.
void CheckLastIsGood(const CardSet& cards);

// The first bytes of an input choose how it is read; they are taken away.
struct ReadingChoice {
    CardSetContents contents;
    std::optional<UINT> charset;
};
ReadingChoice TakeChoice(std::string_view& input);

// A reader of cards as `Read(stream, charset, receiver)`, with what a fuzz target looks at all the way.
template <typename Reader>
std::shared_ptr<const CardSet> ReadChecked(Reader read, const std::string& text, const ReadingChoice& choice) {
    ReportCounter reports;
    std::istringstream stream(text);
    CardSetBuilder builder(choice.contents, text.size(), reports);
    DraftChecker drafts(builder);
    const std::optional<UINT> guessed = read(stream, choice.charset, drafts);
    return builder.Finish(guessed);
}

// The same text gives the same cards, and whatever it is, `goodCard` behind it is read: a person Good with the fax
// number +1 555 0100.
template <typename Reader>
void CheckReading(Reader read, std::string text, std::string_view goodCard, const ReadingChoice& choice) {
    const std::shared_ptr<const CardSet> cards = ReadChecked(read, text, choice);
    CheckCards(*cards);
    CheckAreEqual(*cards, *ReadChecked(read, text, choice));
    // In UTF-16 the good card's bytes would be other letters.
    if (Utf8FromUtf16Bytes(text.substr(0, 4) + "\r\n")) return;
    CheckLastIsGood(*ReadChecked(read, text.append(goodCard), choice));
}
