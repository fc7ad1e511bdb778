// What stands between files: folders, links, settings, members that are looked for in all of them.
#include "product.h"

namespace fs = std::filesystem;

namespace {

// A file in a folder counts for so many bytes, with what the system keeps of it.
constexpr size_t bytesPerFile = 200;

std::string Card(const std::string& lines) {
    return "BEGIN:VCARD\r\nVERSION:4.0\r\n" + lines + "END:VCARD\r\n";
}

std::string Group(size_t number, const std::string& members) {
    return Card("FN:G" + std::to_string(number) + "\r\nKIND:group\r\n" + members);
}

std::string Numbered(const char* name, size_t number, const char* ending) {
    return name + std::to_string(number) + ending;
}

void WriteFiles(const fs::path& folder, size_t bytes, const std::function<std::string(size_t)>& textOf) {
    for (size_t i = 0; i < bytes / bytesPerFile; ++i) WriteFile(folder / Numbered("f", i, ".vcf"), textOf(i));
}

// Folders in folders, and as many of these beside each other as the size asks for.
void WriteDeepFolders(const fs::path& contacts, size_t bytes, const std::string& settings) {
    constexpr size_t depth = 16;
    fs::path folder;
    for (size_t i = 0; i < bytes / bytesPerFile; ++i, folder /= "d") {
        if (i % depth == 0) folder = contacts / Numbered("b", i / depth, "");
        WriteFile(folder / "a.vcf", Card("FN:A\r\nTEL;TYPE=FAX:1\r\n"));
        if (!settings.empty()) WriteFile(folder / "addressbook.ini", settings);
    }
}

const Product folderProducts[] = {
    {"files x missing members",
     [](const fs::path& folder, size_t bytes) {
         const fs::path book = folder / entriesFolder / "Book";
         WriteFiles(book, bytes / 2, [](size_t i) { return Card(Numbered("FN:", i, "\r\n")); });
         WriteFile(book / "z.vcf", Group(0, Repeated("MEMBER:m#\r\n", bytes / 2)));
     }},
    {"files x groups with missing members",
     [](const fs::path& folder, size_t bytes) {
         const fs::path book = folder / entriesFolder / "Book";
         WriteFiles(book, bytes / 2, [](size_t i) { return Card(Numbered("FN:", i, "\r\n")); });
         std::string groups;
         for (size_t i = 0; groups.size() < bytes / 2; ++i) groups += Group(i, Numbered("MEMBER:m", i, "\r\n"));
         WriteFile(book / "z.vcf", groups);
     }},
    {"files of groups with missing members",
     [](const fs::path& folder, size_t bytes) {
         WriteFiles(folder / entriesFolder / "Book", bytes,
                    [](size_t i) { return Group(i, Numbered("MEMBER:mailto:m", i, "\r\n")); });
     }},
    {"books of groups with missing members",
     [](const fs::path& folder, size_t bytes) {
         WriteFiles(folder / entriesFolder, bytes, [](size_t i) { return Group(i, Numbered("MEMBER:m", i, "\r\n")); });
     }},
    {"files of groups x cards of their member",
     [](const fs::path& folder, size_t bytes) {
         const fs::path book = folder / entriesFolder / "Book";
         WriteFiles(book, bytes / 2, [](size_t i) { return Group(i, "MEMBER:mailto:a\r\n"); });
         WriteFile(book / "z.vcf", Repeated("BEGIN:VCARD\r\nFN:#\r\nEMAIL:a\r\nTEL;FAX:1\r\nEND:VCARD\r\n", bytes / 2));
     }},
    {"files of groups x numbers of their member",
     [](const fs::path& folder, size_t bytes) {
         const fs::path book = folder / entriesFolder / "Book";
         WriteFiles(book, bytes / 2, [](size_t i) { return Group(i, "MEMBER:mailto:a\r\n"); });
         const std::string card = Card("FN:A\r\nEMAIL:a\r\n" + Repeated("TEL;TYPE=FAX:#\r\n", bytes / 4));
         WriteFile(book / "z.vcf", card + card);
     }},
    {"groups x members that they share",
     [](const fs::path& folder, size_t bytes) {
         std::string groups;
         for (size_t i = 0; groups.size() < bytes / 2; ++i) groups += Group(i, "MEMBER:mailto:a\r\n");
         WriteBook(folder, "a.vcf",
                   groups + Repeated("BEGIN:VCARD\r\nFN:#\r\nEMAIL:a\r\nTEL;FAX:1\r\nEND:VCARD\r\n", bytes / 2));
     }},
    {"files x a long name",
     [](const fs::path& folder, size_t bytes) {
         const fs::path book = folder / entriesFolder / "Book";
         WriteFiles(book, bytes / 2, [](size_t) { return Card("FN:A\r\nCATEGORIES:C\r\n"); });
         WriteFile(book / "addressbook.ini", "categories = groups\nstyle = fax-entries\n");
         WriteFile(book / "z.vcf", Card("FN:" + std::string(bytes / 2, 'x') + "\r\nCATEGORIES:C\r\n"));
     }},
    {"files of one category",
     [](const fs::path& folder, size_t bytes) {
         WriteFiles(folder / entriesFolder / "Book", bytes,
                    [](size_t i) { return Card(Numbered("FN:", i, "\r\nCATEGORIES:C,D\r\n")); });
         WriteFile(folder / entriesFolder / "Book" / "addressbook.ini", "categories = groups\n");
     }},
    {"books",
     [](const fs::path& folder, size_t bytes) {
         WriteFiles(folder / entriesFolder, bytes, [](size_t i) { return Card(Numbered("FN:", i, "\r\n")); });
     }},
    {"books of one name in folders",
     [](const fs::path& folder, size_t bytes) {
         for (size_t i = 0; i < bytes / bytesPerFile; ++i)
             WriteFile(folder / entriesFolder / Numbered("b", i, "") / "Same" / "a.vcf", Card("FN:A\r\n"));
     }},
    {"folders in folders",
     [](const fs::path& folder, size_t bytes) { WriteDeepFolders(folder / entriesFolder, bytes, ""); }},
    {"folders in folders x settings",
     [](const fs::path& folder, size_t bytes) {
         WriteDeepFolders(folder / entriesFolder, bytes, "charset = nothing\nstyle = fax-entries\n");
     }},
    {"folders in a folder x long settings",
     [](const fs::path& folder, size_t bytes) {
         const fs::path book = folder / entriesFolder / "Book";
         for (size_t i = 0; i < bytes / bytesPerFile / 2; ++i)
             WriteFile(book / Numbered("d", i, "") / "a.vcf", Card("FN:A\r\n"));
         WriteFile(book / "addressbook.ini", Repeated("unknown# = 1\n", bytes / 2));
     }},
    {"settings x a long value",
     [](const fs::path& folder, size_t bytes) {
         WriteBook(folder, "a.vcf", Card("FN:A\r\n"));
         WriteFile(folder / entriesFolder / "Book" / "addressbook.ini",
                   "style = " + std::string(bytes / 2, 'x') + "\n" + Repeated("charset = x#\n", bytes / 2));
     }},
    {"folders that are linked to each other",
     [](const fs::path& folder, size_t bytes) {
         // Each link makes ways to all the others.
         size_t count = 2;
         while (count * count < bytes / bytesPerFile) ++count;
         const fs::path contacts = folder / entriesFolder;
         for (size_t i = 0; i < count; ++i) WriteFile(contacts / Numbered("d", i, "") / "a.vcf", Card("FN:A\r\n"));
         for (size_t i = 0; i < count; ++i)
             for (size_t j = 0; j < count; ++j)
                 fs::create_directory_symlink(contacts / Numbered("d", j, ""),
                                              contacts / Numbered("d", i, "") / Numbered("link", j, ""));
     }},
    {"links to one folder",
     [](const fs::path& folder, size_t bytes) {
         const fs::path contacts = folder / entriesFolder;
         WriteFile(contacts / "Book" / "a.vcf", Card("FN:A\r\n"));
         for (size_t i = 0; i < bytes / bytesPerFile; ++i)
             fs::create_directory_symlink(contacts / "Book", contacts / Numbered("link", i, ""));
     }},
    {"links to one large file",
     [](const fs::path& folder, size_t bytes) {
         const fs::path book = folder / entriesFolder / "Book";
         WriteFiles(book, bytes / 2, [](size_t) { return Card("FN:A\r\n"); });
         WriteFile(book / "z.vcf", Card("FN:A\r\nNOTE:" + std::string(bytes / 2, 'x') + "\r\n"));
     }},
    {"files with something to say",
     [](const fs::path& folder, size_t bytes) {
         WriteFiles(folder / entriesFolder / "Book", bytes,
                    [](size_t) { return std::string("stray\r\nBEGIN:VCARD\r\n"); });
     }},
};

}  // namespace

void AddFolderProducts(Products& products) {
    for (const Product& product : folderProducts) products.push_back({"folders: " + product.name, product.make});
}
