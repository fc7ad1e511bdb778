// Walks the books as a caller would who opens every one of them.
#include "diagnosis/diagnosis.h"

#include "diagnosis/card_explainer.h"
#include "failure.h"
#include "reading_stop.h"
#include "reports.h"
#include "session/group_members.h"
#include "session/unplaced_numbers.h"
#include "text/charset_names.h"
#include "text/code_pages.h"

namespace {

// Whether the receiver wants more of what it was told about; it does where it has no function for that.
template <typename Report>
bool IsWanted(HRESULT(STDAPICALLTYPE* function)(void*, const Report*), void* context, const Report& report) {
    if (function == nullptr) return true;
    const HRESULT answer = function(context, &report);
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
    std::uint32_t node = 0;
    BookSettings settings;
};

void DiagnoseFile(Session& session, MemberFinder& finder, const DiagnosedBook& book, std::uint32_t file,
                  const VOKDiagnosisReceiver& receiver) {
    MessagePass pass(session.Messages());
    const std::shared_ptr<const CardSet> cards = session.ReadFile(file);
    const std::string path = Utf8Of(session.FilePath(file));
    VOKFileReport report = {};
    report.head = MakeReportHead<VOKFileReport>(path.c_str(), 0,
                                                session.IsComplete(file) ? VOK_READ_COMPLETE : VOK_READ_INCOMPLETE);
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
    if (IsWanted(receiver.OnFile, receiver.context, report) && isThere && receiver.OnCard != nullptr)
        ExplainCards(session.FilePath(file), book.settings, receiver);
}

}  // namespace

void Diagnose(Session& session, const VOKDiagnosisReceiver& receiver) {
    const StoppableReading reading;
    MemberFinder finder(session);
    for (const std::uint32_t node : session.ListAllBooks()) {
        const BookNode& book = *session.FindNode(node);
        const std::string name = FromActiveCodePage(book.name);
        const ULONG parent = book.role == BookNode::Role::Book ? node : book.parent;
        const std::string path = Utf8Of(book.path);
        const VOKBookReport report = {MakeReportHead<VOKBookReport>(path.c_str()), node, parent, name.c_str()};
        if (!IsWanted(receiver.OnBook, receiver.context, report)) continue;
        const BookSettings settings = session.ReadSettings(node);
        for (const std::uint32_t file : session.ListFiles(node, settings))
            DiagnoseFile(session, finder, {node, settings}, file, receiver);
    }
}
