// What products are made with.
#include "product.h"

#include <fstream>

namespace fs = std::filesystem;

void WriteFile(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

// A blank line before it is longer than the reader's first buffer: all sizes go through the second.
void WriteBook(const fs::path& folder, const std::string& fileName, const std::string& content) {
    const std::string text = std::string(20'000, ' ') + "\r\n" + content;
    WriteFile(folder / entriesFolder / "Book" / fileName, text);
    WriteFile(folder / entriesFolder / "Book" / "addressbook.ini", "style = fax-entries\ncategories = groups\n");
    WriteFile(folder / plainFolder / "Book" / fileName, text);
}

std::string Repeated(std::string_view text, size_t bytes) {
    std::string repeated;
    repeated.reserve(bytes + text.size());
    for (size_t number = 1; repeated.size() < bytes; ++number)
        for (const char c : text) c == '#' ? repeated.append(std::to_string(number)) : repeated.append(1, c);
    return repeated;
}
