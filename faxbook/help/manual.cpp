// Each command of the App becomes a section with its arguments, options and examples.
#include "help/manual.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

#include "command_line.h"
#include "help/shown_commands.h"
#include "platform/system/environment.h"
#include "text/ascii.h"

namespace {

struct Topic {
    const char* title;
    std::vector<std::pair<std::string, std::string>> entries;
};

std::vector<Topic> Topics() {
    return {{"Output",
             {{"at a terminal", "aligned columns in colours"},
              {"elsewhere", "a line of names and a line for each row, cells separated by tabs; every column"},
              {"--table", "aligned columns, without colours where there is no terminal"},
              {"--json, --csv", "every column, for programs"},
              {"control characters", "are blanks in all of these, and escapes in JSON; lines stay in cells of CSV"},
              {"formulas", "in cells of CSV get a ' before them, so that a spreadsheet runs none; numbers do not"}}},
            {"Environment",
             {{contactsVariable, "the folder, or the file, of the address books of the default profile"},
              {profilesVariable, "the file that the profiles are in"},
              {diagnosticsVariable, "a file that gets what is wrong with address files, or off; else standard error"},
              {noColourVariable, "when it is set to anything, there are no colours"}}},
            {"Exit codes",
             {{std::to_string(exitSuccess), "the command did what it was asked for"},
              {std::to_string(exitFailure),
               "it could not, or what it printed is not all; a line on standard error says why"},
              {std::to_string(exitUsage), "the arguments are not understood"},
              {std::to_string(exitReaderGone), "whoever read the output closed it before its end; nothing is said"}}}};
}

// Text that the formatter takes as it stands: neither a request nor an escape.
std::string Escaped(std::string_view text) {
    std::string escaped;
    bool beginsLine = true;
    for (const char c : text) {
        if (beginsLine && (c == '.' || c == '\'')) escaped += "\\&";
        if (c == '\\') {
            escaped += "\\e";
        } else if (c == '-') {
            escaped += "\\-";
        } else {
            escaped += c;
        }
        beginsLine = c == '\n';
    }
    return escaped;
}

// "--search WORD", "-h, --help", "BOOK".
std::string OptionName(const CLI::Option& option) {
    if (option.get_positional()) return option.get_name(true);
    std::string name;
    for (const std::string& shortName : option.get_snames()) name += "-" + shortName + ", ";
    for (const std::string& longName : option.get_lnames()) name += "--" + longName;
    return option.get_type_size() == 0 ? name : name + " " + option.get_type_name();
}

void PrintEntry(const std::string& name, const std::string& text, std::ostream& out) {
    out << ".TP\n.B " << Escaped(name) << '\n' << Escaped(text) << '\n';
}

void PrintOption(const CLI::Option& option, std::ostream& out) {
    PrintEntry(OptionName(option), option.get_description(), out);
}

// Those that the program itself has are explained there.
void PrintOptions(const CLI::App& command, const CLI::App& app, std::ostream& out) {
    std::string shared;
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_positional()) PrintOption(*option, out);
    }
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_positional()) continue;
        if (!app.get_option_no_throw(option->get_name())) {
            PrintOption(*option, out);
        } else if (option != command.get_help_ptr()) {
            shared += (shared.empty() ? "" : ", ") + option->get_name();
        }
    }
    if (!shared.empty()) out << ".PP\nTakes " << Escaped(shared) << ".\n";
}

void PrintCommand(const CLI::App& command, const std::string& name, const CLI::App& app, std::ostream& out) {
    out << ".SS " << Escaped(name);
    for (const CLI::Option* option : command.get_options()) {
        if (!option->get_positional()) continue;
        const std::string argument = option->get_name(true);
        out << ' ' << (option->get_required() ? argument : "[" + argument + "]");
    }
    out << '\n' << Escaped(command.get_description()) << ".\n";
    const std::vector<const CLI::App*> commands = ShownCommands(command);
    if (commands.empty()) {
        PrintOptions(command, app, out);
        out << ".PP\n.nf\n" << Escaped(command.get_footer()) << ".fi\n";
    }
    for (const CLI::App* inner : commands) PrintCommand(*inner, name + " " + inner->get_name(), app, out);
}

}  // namespace

std::string TopicsText() {
    std::string text;
    for (const auto& [title, entries] : Topics()) {
        text += std::string(title) + ":\n";
        for (const auto& [name, meaning] : entries) {
            constexpr size_t nameWidth = 26;
            text.append("  ").append(name).append(nameWidth - std::min(nameWidth, name.size()), ' ');
            text.append(meaning).append("\n");
        }
        text += '\n';
    }
    text.pop_back();
    return text;
}

void PrintManual(const CLI::App& app, std::ostream& out) {
    const std::string& name = app.get_name();
    out << ".TH FAXBOOK 1 \"\" \"" << name << " " FAXBOOK_VERSION "\" \"User Commands\"\n"
        << ".SH NAME\n"
        << name << " \\- " << Escaped("read address books for fax programs") << '\n'
        << ".SH SYNOPSIS\n.B " << name << "\n[OPTIONS] COMMAND [ARGUMENTS]\n"
        << ".SH DESCRIPTION\n"
        << Escaped(app.get_description()) << '\n'
        << ".SH OPTIONS\n";
    for (const CLI::Option* option : app.get_options()) PrintOption(*option, out);
    out << ".SH COMMANDS\n";
    for (const CLI::App* command : ShownCommands(app)) PrintCommand(*command, command->get_name(), app, out);
    for (const auto& [title, entries] : Topics()) {
        std::string heading = title;
        std::ranges::transform(heading, heading.begin(), ToUpperAscii);
        out << ".SH " << heading << '\n';
        for (const auto& [entry, meaning] : entries) PrintEntry(entry, meaning, out);
    }
}
