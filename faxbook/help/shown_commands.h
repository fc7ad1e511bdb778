// The commands that help, the manual page and completion know of: those in a group. CLI11 hides the others.
#pragma once

#include <CLI/CLI.hpp>
#include <vector>

inline std::vector<const CLI::App*> ShownCommands(const CLI::App& command) {
    return command.get_subcommands([](const CLI::App* inner) { return !inner->get_group().empty(); });
}
