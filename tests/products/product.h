// A product: something that a file may repeat as often as it likes beside something that may be as long as it likes. A
// reader that looks at the long thing for each of the repeated ones takes minutes for a file of some megabytes.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

struct Product {
    std::string name;
    // Makes the contacts in an empty folder; all their files together have about so many bytes.
    std::function<void(const std::filesystem::path& folder, size_t bytes)> make;
    // What differs is in what becomes of the entries, and not only in how the file is read.
    bool isListed = true;
};
using Products = std::vector<Product>;

void AddCardProducts(Products& products);
void AddCsvProducts(Products& products);
void AddFolderProducts(Products& products);

// Contacts lie in two folders below that of a product: in one they are read as fax entries and with their categories as
// groups, in the other as people in plain style. The same files lie in both, unless a product has only the first.
inline constexpr std::string_view entriesFolder = "entries";
inline constexpr std::string_view plainFolder = "plain";

void WriteFile(const std::filesystem::path& file, const std::string& text);
// One address book of one file, in both folders.
void WriteBook(const std::filesystem::path& folder, const std::string& fileName, const std::string& text);

// The text again and again, with the number of each in place of "#", up to so many bytes.
std::string Repeated(std::string_view text, size_t bytes);
