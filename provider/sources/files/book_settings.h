// How one address book shows its people: the settings file beside its cards.
#pragma once

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <optional>

class Diagnostics;

// The values are those that GetContentsTable answers.
enum class ContentsStyle : std::int32_t { Plain = 0, PrimarySecondary = 1, FaxEntries = 4 };

// What is not set is as above: a container has its parent's settings.
struct BookSettings {
    std::optional<ContentsStyle> style;
    std::optional<UINT> charset;  // of text that is not UTF-8 and has no label
    std::optional<bool> categoriesAreGroups;

    ContentsStyle Style() const { return style.value_or(ContentsStyle::Plain); }
    bool ShowsCategories() const { return categoriesAreGroups.value_or(false); }
    // Takes over what is not set here.
    void Inherit(const BookSettings& parent);
};

// The settings file of a folder is addressbook.ini in it, that of a file NAME.vcf is NAME.ini beside it.
std::filesystem::path SettingsFileOf(const std::filesystem::path& book, bool isFolder);

// A missing file has no settings; what cannot be understood is reported and passed over. Nothing for a file that cannot
// be read, which is reported, too.
std::optional<BookSettings> ReadBookSettings(const std::filesystem::path& file, Diagnostics& diagnostics);
