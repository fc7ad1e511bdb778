// Walks the books as a caller would who opens every one of them.
#include "diagnosis/diagnosis.h"

#include "books/group_members.h"
#include "books/unplaced_numbers.h"
#include "diagnosis/card_explainer.h"
#include "failure.h"
#include "text/charset_names.h"
#include "text/code_pages.h"

namespace {

// Whether the receiver wants more of what it was told about.
bool IsWanted(HRESULT answer) {
    Require(SUCCEEDED(answer), answer);
    return answer == S_OK;
}

void CountFaxNumbers(const CardSet& cards, const Card& card, VOKFileReport& report) {
    for (const FaxNumber& number : cards.FaxNumbers(card)) {
        if (number.kind == FaxKind::Business) ++report.businessCount;
        if (number.kind == FaxKind::Home) ++report.homeCount;
        if (number.kind == FaxKind::Other) ++report.otherCount;
        if (number.kind == FaxKind::Primary) ++report.primaryCount;
    }
}

struct DiagnosedBook {
    std::uint32_t node;
    BookSettings settings;
};

void DiagnoseFile(Session& session, MemberFinder& finder, const DiagnosedBook& book, std::uint32_t file,
                  VOKDiagnosisReceiver& receiver) {
    MessagePass pass(session.Messages());
    const std::shared_ptr<const CardSet> cards = session.ReadFile(file);
    const std::string path = Utf8Of(session.FilePath(file));
    VOKFileReport report = {};
    report.path = path.c_str();
    report.cardCount = static_cast<ULONG>(cards->Cards().size() + cards->NamelessCount());
    report.namelessCount = static_cast<ULONG>(cards->NamelessCount());
    for (std::uint32_t i = 0; i < cards->Cards().size(); ++i) {
        const Card& card = cards->Cards()[i];
        if (card.isGroup) {
            ++report.groupCount;
            report.missingMemberCount +=
                static_cast<ULONG>(finder.FindMembers(book.node, {cards, file, i}).missingCount);
        } else {
            ++report.personCount;
            CountFaxNumbers(*cards, card, report);
        }
    }
    report.unplacedCount = static_cast<ULONG>(ReportUnplacedNumbers(session, file, *cards, book.settings.Style()));
    const std::string charset(cards->GuessedCharset() ? CharsetNameOf(*cards->GuessedCharset()) : std::string_view());
    if (!charset.empty()) report.guessedCharset = charset.c_str();
    pass.Finish();
    const bool isThere = session.IsComplete(file) || !cards->Cards().empty();
    if (IsWanted(receiver.OnFile(&report)) && isThere) ExplainCards(session.FilePath(file), book.settings, receiver);
}

}  // namespace

void MessageForwarder::Take(const std::filesystem::path& file, size_t line, std::string_view what,
                            std::string_view advice) {
    const std::string path = Utf8Of(file);
    const std::string whatText(what);
    const std::string adviceText(advice);
    const VOKMessageReport report = {path.c_str(), static_cast<ULONG>(line), whatText.c_str(), adviceText.c_str()};
    receiver_.OnMessage(&report);
}

void Diagnose(Session& session, VOKDiagnosisReceiver& receiver) {
    MemberFinder finder(session);
    for (const std::uint32_t node : session.ListAllBooks()) {
        const BookNode& book = *session.FindNode(node);
        const std::string name = FromActiveCodePage(book.name);
        const ULONG parent = book.role == BookNode::Role::Book ? node : book.parent;
        const VOKBookReport report = {node, parent, name.c_str()};
        if (!IsWanted(receiver.OnBook(&report))) continue;
        const BookSettings settings = session.ReadSettings(node);
        for (const std::uint32_t file : session.ListFiles(node, settings))
            DiagnoseFile(session, finder, {node, settings}, file, receiver);
    }
}
