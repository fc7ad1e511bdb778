// What a word can be is found by following the words before it through the commands.
#include "help/completion/completion.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <ostream>
#include <set>

#include "client/books.h"
#include "client/library_session.h"
#include "client/record_text.h"
#include "help/completion/bash_line.h"
#include "help/completion/scripts.h"
#include "help/shown_commands.h"
#include "platform/system/environment.h"
#include "profiles/profile_store.h"
#include "text/characters.h"

namespace {

constexpr struct {
    std::string_view shell;
    std::string_view text;
} scripts[] = {{"bash", bashScript}, {"powershell", powerShellScript}};

// What stands before the word to complete.
struct Place {
    const CLI::App* command;
    std::string argument;  // the name of the argument or option that the word is a value of; empty: none
    std::string option;    // "--profile=", when the word begins with the option that it is a value of
    bool isBehindOptions;  // behind "--"
    std::string profile;
    std::string book;
};

// Null when there is none of that name.
const CLI::App* FindCommand(const CLI::App& command, const std::string& name) {
    const std::vector<const CLI::App*> commands = ShownCommands(command);
    const auto found = std::ranges::find(commands, name, [](const CLI::App* app) { return app->get_name(); });
    return found == commands.end() ? nullptr : *found;
}

bool IsOption(std::string_view word) {
    return word.starts_with("--") && word.size() > 2;
}

std::vector<const CLI::Option*> Arguments(const CLI::App& command) {
    return command.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

// "--profile", or "" for an option without a value and for an unknown one.
std::string OptionWithValue(const CLI::App& command, const std::string& word) {
    const CLI::Option* option = command.get_option_no_throw(word);
    return option && option->get_type_size() != 0 ? word : "";
}

Place FindPlace(const CLI::App& app, const std::vector<std::string>& wordsBefore, const std::string& lastWord) {
    Place place = {&app, {}, {}, false, {}, {}};
    size_t argumentCount = 0;
    const auto argumentName = [&] {
        const std::vector<const CLI::Option*> arguments = Arguments(*place.command);
        return argumentCount < arguments.size() ? arguments[argumentCount]->get_name(true) : std::string();
    };
    for (const std::string& word : wordsBefore) {
        if (!place.argument.empty()) {
            if (place.argument == "--profile") place.profile = word;
            place.argument.clear();
        } else if (!place.isBehindOptions && IsOption(word)) {
            const size_t sign = word.find('=');
            const std::string option = OptionWithValue(*place.command, word.substr(0, sign));
            if (sign == std::string::npos) place.argument = option;
            if (sign != std::string::npos && option == "--profile") place.profile = word.substr(sign + 1);
        } else if (!place.isBehindOptions && word == "--") {
            place.isBehindOptions = true;
        } else if (const CLI::App* inner = argumentCount == 0 ? FindCommand(*place.command, word) : nullptr) {
            place.command = inner;
        } else {
            if (argumentName() == "BOOK") place.book = word;
            ++argumentCount;
        }
    }
    if (!place.argument.empty()) return place;
    const size_t sign = lastWord.find('=');
    const bool isOptionWithValue = !place.isBehindOptions && IsOption(lastWord) && sign != std::string::npos;
    if (isOptionWithValue) place.option = lastWord.substr(0, sign + 1);
    place.argument = isOptionWithValue ? OptionWithValue(*place.command, lastWord.substr(0, sign)) : argumentName();
    return place;
}

// None when the file of the profiles is damaged: "faxbook profiles" says so.
std::vector<std::string> ProfileNames() try {
    std::vector<std::string> names;
    for (const Profile& profile : ProfileStore(ProfilesFile()).List()) names.push_back(profile.name);
    return names;
} catch (const ProfileError&) {
    return {};
}

// The paths of the books, or the names of the persons or of the groups in the book that was named before.
std::vector<std::string> NamesInBooks(const Place& place) {
    std::vector<std::string> names;
    const Library library;
    LibrarySession session(library, place.profile);
    const Books books = ReadBooks(session);
    if (place.argument == "BOOK") {
        std::ranges::transform(books, std::back_inserter(names), PathText);
        return names;
    }
    session.ForEachDestination(FindBook(books, place.book).entry, [&](const DestinationRecord& record) {
        if (place.argument == "NAME" || record.type == DESTINATION_GROUP) names.push_back(FieldText(record.name));
    });
    return names;
}

std::vector<std::string> ValuesAt(const Place& place) {
    if (place.argument == "--profile") return ProfileNames();
    if (place.argument == "SHELL") return CompletionShells();
    const bool namesProfile = place.command->get_parent() && place.command->get_parent()->get_name() == "profile";
    if (namesProfile) return place.command->get_name() == "create" ? std::vector<std::string>() : ProfileNames();
    const std::set<std::string> inBooks = {"BOOK", "NAME", "GROUP"};
    return inBooks.contains(place.argument) ? NamesInBooks(place) : std::vector<std::string>();
}

std::vector<std::string> Options(const CLI::App& command) {
    std::vector<std::string> options;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) options.push_back("--" + name);
    }
    return options;
}

std::vector<std::string> Commands(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::App* inner : ShownCommands(command)) names.push_back(inner->get_name());
    return names;
}

// What the last word can be. No word at all is an empty one.
std::vector<Candidate> FindCandidates(const CLI::App& app, std::vector<std::string> words) {
    if (words.empty()) words.emplace_back();
    const std::string word = words.back();
    words.pop_back();
    const Place place = FindPlace(app, words, word);
    const bool isOptionValue = place.argument.starts_with('-');
    const bool canBeOption = !place.isBehindOptions && !isOptionValue && word.starts_with('-');
    std::vector<Candidate> candidates;
    const auto add = [&](const std::vector<std::string>& added, bool areNames) {
        for (const std::string& name : added) {
            const bool looksLikeOption = areNames && !isOptionValue && !place.isBehindOptions && name.starts_with('-');
            candidates.push_back({place.option + name, looksLikeOption});
        }
    };
    if (canBeOption) add(Options(*place.command), false);
    if (place.argument.empty() && place.option.empty()) add(Commands(*place.command), false);
    if (!place.argument.empty()) add(ValuesAt(place), true);
    const std::u32string start = FoldCase(word);
    std::set<std::string> seen;
    std::erase_if(candidates, [&](const Candidate& candidate) {
        return candidate.word.empty() || !FoldCase(candidate.word).starts_with(start) ||
               !seen.insert(candidate.word).second;
    });
    return candidates;
}

}  // namespace

std::vector<std::string> CompletionShells() {
    std::vector<std::string> shells;
    std::ranges::transform(scripts, std::back_inserter(shells),
                           [](const auto& script) { return std::string(script.shell); });
    return shells;
}

std::string_view CompletionScript(std::string_view shell) {
    const auto* const found = std::ranges::find_if(scripts, [&](const auto& script) { return script.shell == shell; });
    return found == std::end(scripts) ? std::string_view() : found->text;
}

void PrintBashCandidates(const CLI::App& app, std::string_view line, std::string_view replaced, std::ostream& out) {
    const BashLine bash(line, replaced);
    for (const std::string& text : bash.Write(FindCandidates(app, bash.Words()))) out << text << '\n';
}

void PrintPowerShellCandidates(const CLI::App& app, std::vector<std::string> words, size_t position,
                               ArgumentPassing passing, std::ostream& out) {
    words.resize(std::min(position, words.size()) + 1);
    words.back() = ReadPowerShellWord(words.back());
    const std::vector<Candidate> candidates = FindCandidates(app, std::move(words));
    for (const Candidate& candidate : candidates) {
        out << (candidate.looksLikeOption ? "-- " : "") << WriteForPowerShell(candidate.word, passing) << '\n';
    }
}
