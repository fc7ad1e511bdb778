// Judges the numbers of a card again by the rules by which it was read, and keeps what they say.
#include "diagnosis/card_explainer.h"

#include <algorithm>
#include <string>
#include <vector>

#include "cards/card_draft.h"
#include "failure.h"
#include "platform/system/files.h"
#include "reading_stop.h"
#include "reports.h"
#include "session/fax_places.h"
#include "sources/files/card_files.h"

namespace {

const char* NameOfKind(FaxKind kind) {
    switch (kind) {
        case FaxKind::Business:
            return "business";
        case FaxKind::Home:
            return "home";
        case FaxKind::Other:
            return "other";
        case FaxKind::Primary:
            return "primary";
        case FaxKind::None:
            break;
    }
    return "";
}

const char* NameOfPlace(const FaxPlaces& places, const FaxNumber& number) {
    if (places.business == &number) return "business";
    if (places.home == &number) return "home";
    if (places.primary == &number) return "primary";
    if (places.further == &number) return "extended";
    return "";
}

class Explainer final : public CardReceiver {
  public:
    Explainer(const std::filesystem::path& file, ContentsStyle style, const VOKDiagnosisReceiver& receiver)
        : path_(Utf8Of(file)), style_(style), receiver_(receiver) {}

    void Receive(CardDraft& card) override;
    void Take(const Message&) override {}

  private:
    void PlaceNumbers(const CardDraft& card);

    std::string path_;
    ContentsStyle style_;
    const VOKDiagnosisReceiver& receiver_;
    std::vector<FaxNumberOfCard> faxNumbers_;
    std::vector<VOKTelephoneReport> telephones_;
    std::vector<const VOKTelephoneReport*> addresses_;  // of those
};

void Explainer::Receive(CardDraft& card) {
    RequireNotStopped();
    telephones_.clear();
    ListFaxNumbers(card, faxNumbers_);
    for (Telephone& telephone : card.telephones) {
        const FaxVerdict verdict = JudgeTelephone(telephone.facts);
        const bool isTooLong = telephone.number.size() > longestNumber;
        CutToTell(telephone.number, longestNumber);
        VOKTelephoneReport& report = telephones_.emplace_back();
        report = {MakeReportHead<VOKTelephoneReport>(path_.c_str(), telephone.line),
                  telephone.source.c_str(),
                  telephone.number.c_str(),
                  NameOfKind(verdict.kind),
                  "",
                  verdict.rule};
        if (verdict.kind == FaxKind::None) continue;
        if (card.isGroup)
            report.rule = "left out: a group has no number of its own";
        else if (isTooLong)
            report.rule = "left out: it is longer than any number";
        else
            report.rule = telephone.number.empty() ? "left out: no number stands there"
                                                   : "left out: the card has the same number of the same kind already";
    }
    if (!card.isGroup) PlaceNumbers(card);
    const std::string name(NameOf(card));
    addresses_.clear();
    for (const VOKTelephoneReport& telephone : telephones_) addresses_.push_back(&telephone);
    const VOKCardReport report = {MakeReportHead<VOKCardReport>(path_.c_str(), card.line), name.c_str(), card.isGroup,
                                  static_cast<ULONG>(addresses_.size()), addresses_.data()};
    const HRESULT answer = receiver_.OnCard(receiver_.context, &report);
    Require(SUCCEEDED(answer), answer);
}

void Explainer::PlaceNumbers(const CardDraft& card) {
    std::vector<FaxNumber> numbers;
    for (const auto& [kind, telephone] : faxNumbers_) numbers.push_back({0, 0, kind, telephone->facts.preference});
    const FaxPlaces places = PlaceFaxNumbers(numbers, style_);
    for (size_t i = 0; i < numbers.size(); ++i) {
        const Telephone* const telephone = faxNumbers_[i].telephone;
        VOKTelephoneReport& report = telephones_[static_cast<size_t>(telephone - card.telephones.begin())];
        report.rule = JudgeTelephone(telephone->facts).rule;
        report.place = style_ == ContentsStyle::FaxEntries ? "entry" : NameOfPlace(places, numbers[i]);
    }
}

}  // namespace

void ExplainCards(const std::filesystem::path& file, const BookSettings& settings,
                  const VOKDiagnosisReceiver& receiver) {
    Explainer explainer(file, settings.Style(), receiver);
    ReadCardFile(file, settings.charset, explainer);
}
