// How one address book shows its people: the settings file beside its cards.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

class Diagnostics;

// The values are those that GetContentsTable answers.
enum class ContentsStyle : std::int32_t { Plain = 0, PrimarySecondary = 1, FaxEntries = 4 };

struct BookSettings {
    std::optional<ContentsStyle> style;
};

// The settings file of a folder is addressbook.ini in it, that of NAME.vcf is NAME.ini beside it.
std::filesystem::path SettingsFileOf(const std::filesystem::path& book, bool isFolder);

// A missing file has no settings; what cannot be understood is reported and passed over.
BookSettings ReadBookSettings(const std::filesystem::path& file, Diagnostics& diagnostics);
