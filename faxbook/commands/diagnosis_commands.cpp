// faxbook why, faxbook check: what the provider itself says of the files that it reads.
#include <algorithm>
#include <map>

#include "client/books.h"
#include "client/loaded_module.h"
#include "client/name_lists.h"
#include "client/record_text.h"
#include "client/results.h"
#include "commands/command_failure.h"
#include "commands/commands.h"
#include "qdxl7ra.h"
#include "text/characters.h"

namespace {

std::string Position(const char* path, ULONG line) {
    return line == 0 ? std::string(path) : std::string(path) + ":" + std::to_string(line);
}

std::string Line(const VOKMessageReport& message) {
    std::string line = Position(message.path, message.line) + ": " + message.what;
    if (*message.advice != '\0') line.append("; ").append(message.advice);
    return line;
}

// The location is null for the profile's own.
void Diagnose(const std::string& profile, const char* location, VOKDiagnosisReceiver& receiver) {
    const LoadedModule provider("QDXL7RA.DLL");
    auto* const diagnose = provider.Resolve<VOKDiagnoseFunction>("VOKDiagnose");
    const HRESULT result = diagnose(profile.c_str(), location, &receiver);
    if (result >= 0) return;
    throw CommandFailure("cannot read " +
                         (profile.empty() ? "the address books" : "those of the profile \"" + profile + "\"") +
                         ": the provider answered " + ResultText(result) + "; see \"faxbook profiles\"");
}

// Finds out what books there are, and reads nothing.
class BookLister final : public VOKDiagnosisReceiver {
  public:
    HRESULT STDMETHODCALLTYPE OnBook(const VOKBookReport* report) override {
        const auto parent = positionOfNumber_.find(report->parent);
        const bool isTop = report->parent == report->number || parent == positionOfNumber_.end();
        const Book parentBook = isTop ? Book() : books_[parent->second];
        books_.Add(isTop ? nullptr : &parentBook, report->name).isContainer = !isTop;
        positionOfNumber_.emplace(report->number, books_.size() - 1);
        numbers_.push_back(report->number);
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnFile(const VOKFileReport*) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnCard(const VOKCardReport*) override { return S_OK; }
    void STDMETHODCALLTYPE OnMessage(const VOKMessageReport*) override {}

    const Books& AllBooks() const { return books_; }
    ULONG NumberOf(const Book& book) const { return numbers_[static_cast<size_t>(&book - &books_[0])]; }

  private:
    Books books_;
    std::vector<ULONG> numbers_;
    std::map<ULONG, size_t> positionOfNumber_;
};

// Collects the numbers of the persons of one name in one book.
class NumberCollector final : public VOKDiagnosisReceiver {
  public:
    NumberCollector(ULONG book, const std::string& name, Table& table, Console& console)
        : book_(book), folded_(FoldCase(AsCodePageHasIt(name))), table_(table), console_(console) {}

    HRESULT STDMETHODCALLTYPE OnBook(const VOKBookReport* report) override {
        return report->number == book_ ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnFile(const VOKFileReport*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnCard(const VOKCardReport* card) override;
    // What is wrong with other cards is for the diagnostics and for "faxbook check".
    void STDMETHODCALLTYPE OnMessage(const VOKMessageReport*) override {}

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

HRESULT NumberCollector::OnCard(const VOKCardReport* card) {
    console_.CountOne();
    if (FoldCase(AsCodePageHasIt(card->name)) != folded_) {
        otherNames_.emplace_back(card->name);
        return S_OK;
    }
    if (card->isGroup) {
        hasFoundGroup_ = true;
        return S_OK;
    }
    hasFound_ = true;
    for (ULONG i = 0; i < card->telephoneCount; ++i) {
        const VOKTelephoneReport& telephone = card->telephones[i];
        table_.AddRow({telephone.number, telephone.kind, telephone.place, telephone.rule, telephone.source, card->path,
                       std::to_string(telephone.line)});
    }
    if (card->telephoneCount == 0) {
        console_.Note("\"" + std::string(card->name) + "\" has no number at all, in " +
                      Position(card->path, card->line));
    }
    return S_OK;
}

class FileCollector final : public VOKDiagnosisReceiver {
  public:
    FileCollector(Table& table, Console& console) : table_(table), console_(console) {}

    HRESULT STDMETHODCALLTYPE OnBook(const VOKBookReport*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnFile(const VOKFileReport* file) override;
    HRESULT STDMETHODCALLTYPE OnCard(const VOKCardReport*) override {
        console_.CountOne();
        return S_OK;
    }
    void STDMETHODCALLTYPE OnMessage(const VOKMessageReport* message) override { console_.Report(Line(*message)); }

  private:
    Table& table_;
    Console& console_;
};

HRESULT FileCollector::OnFile(const VOKFileReport* file) {
    table_.AddRow({file->path, std::to_string(file->cardCount), std::to_string(file->personCount),
                   std::to_string(file->groupCount), std::to_string(file->businessCount),
                   std::to_string(file->homeCount), std::to_string(file->otherCount),
                   std::to_string(file->primaryCount), std::to_string(file->unplacedCount),
                   std::to_string(file->missingMemberCount), std::to_string(file->namelessCount),
                   file->guessedCharset ? file->guessedCharset : ""});
    return S_OK;
}

}  // namespace

namespace commands {

void ExplainPerson(const CommandContext& context, const std::string& book, const std::string& name) {
    BookLister lister;
    Diagnose(context.profile, nullptr, lister);
    const Book& found = FindBook(lister.AllBooks(), book);
    Table table = context.MakeTable({{"number", Column::Kind::Telephone},
                                     {"kind"},
                                     {"place"},
                                     {"rule"},
                                     {"source"},
                                     {"file"},
                                     {"line", Column::Kind::Number}});
    NumberCollector numbers(lister.NumberOf(found), name, table, context.console);
    Diagnose(context.profile, nullptr, numbers);
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
    Diagnose(context.profile, folder.empty() ? nullptr : folder.c_str(), files);
    table.Finish();
    if (table.RowCount() == 0) context.console.Note("there are no address files to check");
}

}  // namespace commands
