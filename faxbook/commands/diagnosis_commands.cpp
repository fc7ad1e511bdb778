// faxbook why, faxbook check: what the provider itself says of the files that it reads.
#include <algorithm>
#include <map>

#include "client/books.h"
#include "client/name_lists.h"
#include "client/provider_reports.h"
#include "client/record_text.h"
#include "commands/command_failure.h"
#include "commands/commands.h"
#include "text/characters.h"

namespace {

// Finds out what books there are, and reads nothing.
class BookLister final : public DiagnosisListener {
  public:
    bool HearBook(const VOKBookReport& report) override {
        const auto parent = positionOfNumber_.find(report.parent);
        const bool isTop = report.parent == report.number || parent == positionOfNumber_.end();
        const Book parentBook = isTop ? Book() : books_[parent->second];
        books_.Add(isTop ? nullptr : &parentBook, report.name).isContainer = !isTop;
        positionOfNumber_.emplace(report.number, books_.size() - 1);
        numbers_.push_back(report.number);
        return false;
    }

    const Books& AllBooks() const { return books_; }
    ULONG NumberOf(const Book& book) const { return numbers_[static_cast<size_t>(&book - &books_[0])]; }

  private:
    Books books_;
    std::vector<ULONG> numbers_;
    std::map<ULONG, size_t> positionOfNumber_;
};

// Collects the numbers of the persons of one name in one book.
class NumberCollector final : public DiagnosisListener {
  public:
    NumberCollector(ULONG book, const std::string& name, Table& table, Console& console)
        : book_(book), folded_(FoldCase(AsCodePageHasIt(name))), table_(table), console_(console) {}

    // What is wrong with other cards is for the diagnostics and for "faxbook check".
    bool HearBook(const VOKBookReport& report) override { return report.number == book_; }
    void HearCard(const VOKCardReport& card) override;

    bool HasFound() const { return hasFound_; }
    bool HasFoundGroup() const { return hasFoundGroup_; }
    const std::vector<std::string>& OtherNames() const { return otherNames_; }

  private:
    ULONG book_;
    std::u32string folded_;
    Table& table_;
    Console& console_;
    bool hasFound_ = false;
    bool hasFoundGroup_ = false;
    std::vector<std::string> otherNames_;
};

void NumberCollector::HearCard(const VOKCardReport& card) {
    console_.CountOne();
    if (FoldCase(AsCodePageHasIt(card.name)) != folded_) {
        otherNames_.emplace_back(card.name);
        return;
    }
    if (card.isGroup) {
        hasFoundGroup_ = true;
        return;
    }
    hasFound_ = true;
    for (ULONG i = 0; i < card.telephoneCount; ++i) {
        const VOKTelephoneReport& telephone = *card.telephones[i];
        table_.AddRow({telephone.number, telephone.kind, telephone.place, telephone.rule, telephone.source,
                       card.head.path, std::to_string(telephone.head.line)});
    }
    if (card.telephoneCount == 0) {
        console_.Note("\"" + std::string(card.name) + "\" has no number at all, in " + PlaceText(card.head));
    }
}

class FileCollector final : public DiagnosisListener {
  public:
    FileCollector(Table& table, Console& console) : table_(table), console_(console) {}

    bool HearFile(const VOKFileReport& file) override;
    void HearCard(const VOKCardReport&) override { console_.CountOne(); }
    void HearMessage(const VOKMessageReport& message) override { console_.Report(MessageLine(message)); }

  private:
    Table& table_;
    Console& console_;
};

bool FileCollector::HearFile(const VOKFileReport& file) {
    table_.AddRow({file.head.path, std::to_string(file.cardCount), std::to_string(file.personCount),
                   std::to_string(file.groupCount), std::to_string(file.businessCount), std::to_string(file.homeCount),
                   std::to_string(file.otherCount), std::to_string(file.primaryCount),
                   std::to_string(file.unplacedCount), std::to_string(file.missingMemberCount),
                   std::to_string(file.namelessCount), file.guessedCharset ? file.guessedCharset : ""});
    return true;
}

}  // namespace

namespace commands {

void ExplainPerson(const CommandContext& context, const std::string& book, const std::string& name) {
    BookLister lister;
    Diagnose(context.profile, {}, lister);
    const Book& found = FindBook(lister.AllBooks(), book);
    Table table = context.MakeTable({{"number", Column::Kind::Telephone},
                                     {"kind"},
                                     {"place"},
                                     {"rule"},
                                     {"source"},
                                     {"file"},
                                     {"line", Column::Kind::Number}});
    NumberCollector numbers(lister.NumberOf(found), name, table, context.console);
    Diagnose(context.profile, {}, numbers);
    if (!numbers.HasFound()) {
        if (numbers.HasFoundGroup()) {
            throw CommandFailure("\"" + name + "\" in " + PathText(found) +
                                 " is a group, not a person; \"faxbook group\" lists where a fax to it goes");
        }
        const std::vector<std::string> nearNames = NearNames(name, numbers.OtherNames());
        throw CommandFailure("there is no person \"" + name + "\" in " + PathText(found) + "; " +
                             (nearNames.empty() ? "\"faxbook destinations\" lists those that it has"
                                                : "near it: " + JoinNames(nearNames)));
    }
    table.Finish();
}

void CheckFiles(const CommandContext& context, const std::string& folder) {
    constexpr auto number = Column::Kind::Number;
    constexpr auto hide = Column::WhenEmpty::Hide;
    Table table = context.MakeTable({{"file"},
                                     {"cards", number},
                                     {"persons", number},
                                     {"groups", number, hide},
                                     {"business_fax", number, hide},
                                     {"home_fax", number, hide},
                                     {"other_fax", number, hide},
                                     {"primary_fax", number, hide},
                                     {"without_place", number, hide},
                                     {"members_missing", number, hide},
                                     {"without_name", number, hide},
                                     {"guessed_charset", Column::Kind::Text, hide}});
    FileCollector files(table, context.console);
    Diagnose(context.profile, folder, files);
    table.Finish();
    if (table.RowCount() == 0) context.console.Note("there are no address files to check");
}

}  // namespace commands
