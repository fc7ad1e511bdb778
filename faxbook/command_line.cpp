// Built with CLI11: each command is an App with its options and a function that runs it when it was chosen.
#include "command_line.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <functional>
#include <optional>
#include <sstream>

#include "client/unread_watch.h"
#include "commands/commands.h"
#include "help/completion/completion.h"
#include "help/manual.h"

namespace {

// What the arguments said. The options of every command are read into the same places.
struct Choice {
    std::string profile;
    bool table = false;
    bool json = false;
    bool csv = false;
    std::string book;
    std::string name;
    std::string searchWord;
    std::string folder;
    std::string library;
    std::string shell;
    std::string line;
    std::string replaced;
    bool legacy = false;
    size_t position = 0;
    std::vector<std::string> words;
    std::vector<std::string> services;
    std::function<void(const CommandContext&)> run;
};

void AddProfileOption(CLI::App& app, Choice& choice) {
    app.add_option("--profile", choice.profile, "the profile to read; without it, the default one")->type_name("NAME");
}

void AddFormatOptions(CLI::App& app, Choice& choice) {
    app.add_flag("--table", choice.table, "align the columns where the output is no terminal, too");
    app.add_flag("--json", choice.json, "print JSON: an array with one object for each row");
    app.add_flag("--csv", choice.csv, "print CSV with a header line");
}

CLI::App* AddCommand(CLI::App& app, Choice& choice, const std::string& name, const std::string& description,
                     const std::string& examples, std::function<void(const CommandContext&)> run) {
    CLI::App* command = app.add_subcommand(name, description);
    command->group("Commands");
    command->footer("Examples:\n" + examples);
    command->callback([&choice, run = std::move(run)] { choice.run = run; });
    return command;
}

CLI::App* AddReadingCommand(CLI::App& app, Choice& choice, const std::string& name, const std::string& description,
                            const std::string& examples, std::function<void(const CommandContext&)> run) {
    const auto runAndWatch = [run = std::move(run)](const CommandContext& context) {
        const UnreadWatch watch;
        run(context);
        watch.RequireAll();
    };
    CLI::App* command = AddCommand(app, choice, name, description, examples, runAndWatch);
    AddProfileOption(*command, choice);
    AddFormatOptions(*command, choice);
    return command;
}

void AddBookArgument(CLI::App& command, Choice& choice) {
    command.add_option("BOOK", choice.book, "the address book: its name, its path or the end of its path")->required();
}

void AddNameArgument(CLI::App& command, Choice& choice, const std::string& name, const std::string& description) {
    command.add_option(name, choice.name, description)->required();
}

// NAME or NAME:FLAGS, the flags a number; nothing for another text.
std::optional<Service> ParseService(const std::string& text) {
    const size_t colon = text.rfind(':');
    Service service = {text.substr(0, colon), 0};
    if (service.name.empty()) return std::nullopt;
    if (colon != std::string::npos) {
        const char* end = text.data() + text.size();
        const auto [rest, error] = std::from_chars(text.data() + colon + 1, end, service.flags);
        if (error != std::errc() || rest != end) return std::nullopt;
    }
    return service;
}

std::string CheckService(const std::string& text) {
    return ParseService(text) ? "" : "\"" + text + "\" is not a name, or a name, a colon and a number";
}

void AddAddressBookCommands(CLI::App& app, Choice& choice) {
    AddReadingCommand(app, choice, "books", "List the address books and the containers in them",
                      "  faxbook books\n"
                      "  faxbook books --profile Work --json\n",
                      commands::ListBooks);

    CLI::App* destinations =
        AddReadingCommand(app, choice, "destinations",
                          "List the destinations of an address book: one line for each fax number, and groups",
                          "  faxbook destinations Company\n"
                          "  faxbook destinations Company/Sales --search berlin\n"
                          "  faxbook destinations Private --csv > private.csv\n"
                          "A slash that is part of a book's name is written \\/, a backslash \\\\.\n",
                          [&choice](const CommandContext& context) {
                              commands::ListDestinations(context, choice.book, choice.searchWord);
                          });
    AddBookArgument(*destinations, choice);
    destinations
        ->add_option("--search", choice.searchWord, "only lines with this word in any column, in capitals or not")
        ->type_name("WORD");

    CLI::App* details = AddReadingCommand(
        app, choice, "details", "Show the details of a person, or the members of a group by name",
        "  faxbook details Company \"Ada Example\"\n"
        "  faxbook details Company/Sales \"Everyone in Sales\"\n",
        [&choice](const CommandContext& context) { commands::ShowDetails(context, choice.book, choice.name); });
    AddBookArgument(*details, choice);
    AddNameArgument(*details, choice, "NAME", "the person or group");

    CLI::App* group = AddReadingCommand(
        app, choice, "group", "List the fax numbers that a fax to a group is sent to",
        "  faxbook group Company/Sales \"Everyone in Sales\"\n"
        "  faxbook group Company Everyone --json\n",
        [&choice](const CommandContext& context) { commands::ListGroupMembers(context, choice.book, choice.name); });
    AddBookArgument(*group, choice);
    AddNameArgument(*group, choice, "GROUP", "the group");
}

void AddDiagnosisCommands(CLI::App& app, Choice& choice) {
    CLI::App* why = AddReadingCommand(
        app, choice, "why", "Explain which of a person's numbers are fax numbers, and why",
        "  faxbook why Company \"Ada Example\"\n"
        "  faxbook why Private \"Ada Example\" --json\n",
        [&choice](const CommandContext& context) { commands::ExplainPerson(context, choice.book, choice.name); });
    AddBookArgument(*why, choice);
    AddNameArgument(*why, choice, "NAME", "the person");

    CLI::App* check = AddReadingCommand(
        app, choice, "check", "Read every address file and say what is in it and what is wrong with it",
        "  faxbook check\n"
        "  faxbook check ~/Downloads/contacts\n"
        "  faxbook check --csv > files.csv\n"
        "What is wrong is said on standard error, one line for each, with file and line.\n",
        [&choice](const CommandContext& context) { commands::CheckFiles(context, choice.folder); });
    check->add_option("FOLDER", choice.folder, "the folder or file to read; without it, those of the profile");
}

void AddProviderTestCommand(CLI::App& app, Choice& choice) {
    CLI::App* test = AddReadingCommand(
        app, choice, "provider-test", "Call a provider library in every way, and say what is wrong with its answers",
        "  faxbook provider-test C:\\Work\\QDXL7RA.DLL\n"
        "  faxbook provider-test ./QDXL7RA.DLL --profile Work\n"
        "A fault costs somebody an address, a session or memory. A remark is an answer that is not usual and that the\n"
        "library takes as it is: a provider with nothing but remarks passes.\n",
        [&choice](const CommandContext& context) { commands::TestProvider(context, choice.library); });
    test->add_option("PATH", choice.library, "the provider library")->required();
}

void AddProfileCommands(CLI::App& app, Choice& choice) {
    CLI::App* profiles = AddCommand(app, choice, "profiles", "List the profiles and their services",
                                    "  faxbook profiles\n"
                                    "  faxbook profiles --json\n",
                                    commands::ListProfiles);
    AddFormatOptions(*profiles, choice);

    CLI::App* profile = app.add_subcommand("profile", "Create and administer profiles");
    profile->group("Commands")->require_subcommand(0, 1);

    CLI::App* create = AddCommand(*profile, choice, "create", "Create a profile",
                                  "  faxbook profile create Work --service VCARD\n"
                                  "  faxbook profile create Work --service VCARD:1\n",
                                  [&choice](const CommandContext& context) {
                                      std::vector<Service> services;
                                      for (const std::string& text : choice.services)
                                          services.push_back(ParseService(text).value());
                                      commands::CreateProfile(context, choice.name, services);
                                  });
    AddNameArgument(*create, choice, "NAME", "the new profile");
    create->add_option("--service", choice.services, "a service of the profile, with its flags; may be repeated")
        ->type_name("NAME[:FLAGS]")
        ->allow_extra_args(false)
        ->check(CheckService);

    CLI::App* admin = AddCommand(*profile, choice, "admin", "Show the provider's administration of profiles",
                                 "  faxbook profile admin\n"
                                 "  faxbook profile admin Work\n",
                                 commands::AdministerProfiles);
    admin->add_option("NAME", choice.profile, "the profile to administer");
}

void AddResourceCommand(CLI::App& app, Choice& choice) {
    CLI::App* resources = AddCommand(app, choice, "resources",
                                     "List the strings, dialogs, icons and other resources that the library carries",
                                     "  faxbook resources\n"
                                     "  faxbook resources --csv > to-translate.csv\n",
                                     commands::ListResources);
    AddFormatOptions(*resources, choice);
}

void AddShellCommands(CLI::App& app, Choice& choice) {
    CLI::App* completion = AddCommand(
        app, choice, "completion", "Print what makes a shell complete faxbook's arguments",
        "  source <(faxbook completion bash)\n"
        "  faxbook completion powershell | Out-String | Invoke-Expression\n"
        "Put the line into ~/.bashrc or into the file that $PROFILE names.\n",
        [&choice](const CommandContext& context) { context.console.Out() << CompletionScript(choice.shell); });
    completion->add_option("SHELL", choice.shell, "bash or powershell")
        ->required()
        ->check(CLI::IsMember(CompletionShells()));
    AddCommand(app, choice, "manual", "Print the manual page",
               "  faxbook manual > faxbook.1\n"
               "  man ./faxbook.1\n",
               [&app](const CommandContext& context) { PrintManual(app, context.console.Out()); });

    // For the scripts that `completion` prints, and for nobody else.
    const auto addHidden = [&](const char* name, std::function<void(const CommandContext&)> run) {
        CLI::App* command =
            AddCommand(app, choice, name, "Print what a word of a command line can be", "", std::move(run));
        command->group("");
        return command;
    };
    CLI::App* bash = addHidden("complete-line", [&app, &choice](const CommandContext& context) {
        PrintBashCandidates(app, choice.line, choice.replaced, context.console.Out());
    });
    bash->add_option("LINE", choice.line, "bash's command line up to the cursor")->required();
    bash->add_option("REPLACED", choice.replaced, "the end of it that a candidate replaces")->required();
    CLI::App* powerShell = addHidden("complete", [&app, &choice](const CommandContext& context) {
        const auto passing = choice.legacy ? ArgumentPassing::Legacy : ArgumentPassing::Exact;
        PrintPowerShellCandidates(app, choice.words, choice.position, passing, context.console.Out());
    });
    powerShell->add_flag("--legacy", choice.legacy, "quotes reach a program with backslashes only");
    powerShell
        ->add_option("POSITION", choice.position, "the word to complete; 0 is the first behind the program's name")
        ->required();
    powerShell->add_option("WORDS", choice.words, "the words up to there");
}

Format ChosenFormat(const Choice& choice, const Terminal& terminal) {
    if (choice.json) return Format::Json;
    if (choice.csv) return Format::Csv;
    return choice.table || terminal.width > 0 ? Format::Aligned : Format::Tabs;
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& arguments, Console& console) {
    Choice choice;
    CLI::App app("Reads address books for fax programs: lists the books, their destinations and groups.", "faxbook");
    app.set_version_flag("--version", "faxbook " FAXBOOK_VERSION);
    // At most one: what follows a command's name is never taken for another command. That there is one is seen below.
    app.require_subcommand(0, 1);
    app.allow_windows_style_options(false);
    app.get_formatter()->column_width(28);
    app.get_formatter()->label("Positionals", "Arguments");
    app.get_formatter()->label("Subcommands", "Commands");
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("REQUIRED", "");
    app.get_formatter()->label("TEXT", "");
    app.footer("\"faxbook COMMAND --help\" shows a command's arguments and examples.\n\n" + TopicsText());
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return std::string(error.what()) + "; see \"faxbook --help\" or \"faxbook COMMAND --help\"";
    });
    AddProfileOption(app, choice);
    AddFormatOptions(app, choice);
    AddAddressBookCommands(app, choice);
    AddDiagnosisCommands(app, choice);
    AddProviderTestCommand(app, choice);
    AddProfileCommands(app, choice);
    AddResourceCommand(app, choice);
    AddShellCommands(app, choice);
    try {
        // CLI11 takes the arguments from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend() - 1));
        if (!choice.run) throw CLI::RequiredError("A command");
        if (choice.table + choice.json + choice.csv > 1) throw CLI::ExcludesError("--table", "--json and --csv");
    } catch (const CLI::ParseError& error) {
        std::ostringstream notes;
        const bool isHelp = app.exit(error, console.Out(), notes) == 0;
        if (!notes.str().empty()) console.Note(notes.str());
        return isHelp ? exitSuccess : exitUsage;
    }
    choice.run({console, ChosenFormat(choice, console.OutTerminal()), choice.profile});
    return exitSuccess;
}
