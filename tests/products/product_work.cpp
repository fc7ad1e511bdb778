// product_work: makes each product in three sizes, reads it the whole way, and prints what that took.
//
// usage: product_work LIBRARIES FOLDER BYTES PART PARTS [NAME]
// LIBRARIES is the folder of QDXL7RC.DLL, FOLDER an empty one to work in, BYTES the middle size: the others are
// next to nothing and four times as much. Of all products,
// every one whose number is PART modulo PARTS is taken, or those with NAME in their names. A line is, with tabs
// between: product, size, way, bytes of memory in all, at one time, bytes of text that was told, destinations or cards.
// The first product of all is empty files. Callgrind has the instructions of a line under its number, from 0.
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "product.h"
#include "whole_way.h"
#include "work_counter.h"

namespace fs = std::filesystem;

namespace {

size_t lineCount = 0;

enum class Counted { No, Yes };

void ReadWholeWay(const WholeWay& whole, const Product& product, const fs::path& folder, size_t bytes,
                  Counted counted) {
    fs::remove_all(folder);
    fs::create_directories(folder / entriesFolder);
    product.make(folder, bytes);
    const fs::path plain = fs::exists(folder / plainFolder) ? folder / plainFolder : folder / entriesFolder;
    WorkCounter counter;
    const Answers listed = product.isListed ? whole.List(folder / entriesFolder) : Answers();
    const Answers checked = whole.Diagnose(plain);
    const Memory memory = counter.Stop(counted == Counted::Yes ? std::to_string(lineCount) : "");
    if (counted == Counted::No) return;
    ++lineCount;
    std::printf("%s\t%zu\t%zu\t%zu\t%zu\t%zu\n", product.name.c_str(), bytes, memory.taken, memory.most,
                listed.bytes + checked.bytes, listed.count + checked.count);
}

void Run(const fs::path& libraries, const fs::path& folder, size_t size, size_t part, size_t parts, const char* name) {
    // Of which each file has something.
    constexpr size_t least = 256;
    Products products;
    AddCardProducts(products);
    AddCsvProducts(products);
    AddFolderProducts(products);
    setenv("FAXBOOK_PROFILES", (folder / "profiles.ini").c_str(), 1);
    setenv("HOST_CODE_PAGE", "65001", 1);
    fs::create_directories(folder / "profile");
    setenv("FAXBOOK_CONTACTS", (folder / "profile").c_str(), 1);
    const WholeWay whole(libraries);
    for (size_t i = 0; i < products.size(); ++i) {
        const bool isWanted = name == nullptr ? i % parts == part : products[i].name.find(name) != std::string::npos;
        if (!isWanted) continue;
        // What is done once in a process, such as loading a character set, is no work for this file.
        ReadWholeWay(whole, products[i], folder / "product", least, Counted::No);
        for (const size_t bytes : {least, size, 4 * size})
            ReadWholeWay(whole, products[i], folder / "product", bytes, Counted::Yes);
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 6) return 2;
    try {
        Run(arguments[1], arguments[2], std::strtoul(arguments[3], nullptr, 10),
            std::strtoul(arguments[4], nullptr, 10), std::strtoul(arguments[5], nullptr, 10), arguments[6]);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "product_work: %s\n", exception.what());
        return 1;
    }
    return 0;
}
