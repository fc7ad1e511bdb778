// The commands. Each reads through the library, prints its rows and notes what a user should know beside them, and
// throws CommandFailure when it cannot do what it was asked for.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "output/output.h"
#include "terminal/console.h"

struct CommandContext {
    Console& console;
    Format format = Format::Tabs;
    std::string profile;  // empty: the default one

    Table MakeTable(std::vector<Column> columns) const { return {console, format, std::move(columns)}; }
};

struct Service {
    std::string name;
    uint32_t flags = 0;
};

namespace commands {

// address_book_commands.cpp
void ListBooks(const CommandContext& context);
void ListDestinations(const CommandContext& context, const std::string& book, const std::string& searchWord);

// destination_commands.cpp
void ShowDetails(const CommandContext& context, const std::string& book, const std::string& name);
void ListGroupMembers(const CommandContext& context, const std::string& book, const std::string& group);

// diagnosis_commands.cpp
void ExplainPerson(const CommandContext& context, const std::string& book, const std::string& name);
// An empty folder stands for the profile.
void CheckFiles(const CommandContext& context, const std::string& folder);

// provider_test_command.cpp
void TestProvider(const CommandContext& context, const std::string& path);

// profile_commands.cpp
void ListProfiles(const CommandContext& context);
void CreateProfile(const CommandContext& context, const std::string& name, const std::vector<Service>& services);
void AdministerProfiles(const CommandContext& context);

// resource_commands.cpp
void ListResources(const CommandContext& context);

}  // namespace commands
