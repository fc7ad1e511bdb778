// The reader of vCard texts. Beside what CheckCards looks at: a text gives the same cards each time, and whatever it
// is, a good card behind it is read.
#include <cstdint>
#include <sstream>
#include <string>

#include "card_checks.h"
#include "cards/card_identity.h"
#include "text/code_pages.h"
#include "vcard/card_reader.h"

namespace {

std::shared_ptr<const CardSet> Read(const std::string& text, const ReadingChoice& choice) {
    ReportCounter reports;
    std::istringstream stream(text);
    CardSetBuilder builder(choice.contents, text.size(), reports);
    DraftChecker drafts(builder);
    const std::optional<UINT> guessed = ReadCards(stream, choice.charset, drafts);
    return builder.Finish(guessed);
}

bool AreEqual(const CardSet& left, const CardSet& right) {
    return HashCards(left, 0) == HashCards(right, 0) && left.NamelessCount() == right.NamelessCount();
}

// The empty line ends a quoted-printable value that was going on.
constexpr char goodCard[] =
    "\r\n\r\nBEGIN:VCARD\r\nVERSION:3.0\r\nFN:Good\r\nTEL;TYPE=WORK,FAX:+1 555 0100\r\nEND:VCARD\r\n";

void CheckGoodCardBehind(std::string text, const ReadingChoice& choice) {
    // In UTF-16 the card's bytes would be other letters.
    if (Utf8FromUtf16Bytes(text.substr(0, 4) + "\r\n")) return;
    text += goodCard;
    const std::shared_ptr<const CardSet> cards = Read(text, choice);
    Promise(!cards->Cards().empty(), "a good card behind any text is read");
    const Card& last = cards->Cards().back();
    Promise(std::string_view(cards->Text(last.name)) == "Good" && !last.isGroup, "a good card keeps its name");
    Promise(
        last.faxNumberCount == 1 && std::string_view(cards->Text(cards->FaxNumbers(last)[0].number)) == "+1 555 0100",
        "a good card keeps its fax number");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const ReadingChoice choice = TakeChoice(input);
    const std::string text(input);
    const std::shared_ptr<const CardSet> cards = Read(text, choice);
    CheckCards(*cards);
    Promise(AreEqual(*cards, *Read(text, choice)), "the same text gives the same cards");
    CheckGoodCardBehind(text, choice);
    return 0;
}
