// CSV files: every heading, cell, value and row that may be repeated, beside every one that may be long.
#include "product.h"

namespace {

// A file with a place for everything.
struct CsvFile {
    std::string before;
    std::string faxHeading = "Business Fax";
    std::string headings;  // more of them
    std::string name = "Ann";
    std::string fax = "1";
    std::string email;
    std::string categories = "Customers";
    std::string note;
    std::string label = "Work Fax";
    std::string labelled = "2";
    std::string cells;  // more of them
    std::string rows;

    std::string Text() const {
        return before + "Name," + faxHeading + ",E-mail Address,Categories,Notes,Phone 1 - Label,Phone 1 - Value" +
               headings + "\r\n" + name + "," + fax + "," + email + "," + categories + "," + note + "," + label + "," +
               labelled + cells + "\r\n" + rows;
    }
};

struct Part {
    const char* name;
    void (*put)(CsvFile& file, size_t bytes);
    bool makesEntries = false;
    enum class Kind { Row, Column, Other } kind = Kind::Other;
};
using Kind = Part::Kind;

const Part repeatedParts[] = {
    {"rows", [](CsvFile& file, size_t bytes) { file.rows += Repeated("b#,#\r\n", bytes); }, true, Kind::Row},
    {"rows of one cell", [](CsvFile& file, size_t bytes) { file.rows += Repeated("a\n", bytes); }, false, Kind::Row},
    {"empty rows", [](CsvFile& file, size_t bytes) { file.rows += Repeated(",,\n", bytes); }, false, Kind::Row},
    {"values", [](CsvFile& file, size_t bytes) { file.fax += Repeated(" ::: #", bytes); }, true},
    {"labelled values", [](CsvFile& file, size_t bytes) { file.labelled += Repeated(" ::: #", bytes); }},
    {"addresses", [](CsvFile& file, size_t bytes) { file.email += Repeated("#:::", bytes); }},
    {"categories", [](CsvFile& file, size_t bytes) { file.categories += Repeated(";#", bytes); }, true},
    {"persons of a category", [](CsvFile& file, size_t bytes) { file.rows += Repeated("b#,1,,Customers\r\n", bytes); },
     true},
    {"headings", [](CsvFile& file, size_t bytes) { file.headings += Repeated(",h#", bytes); }, false, Kind::Column},
    {"empty headings", [](CsvFile& file, size_t bytes) { file.headings += Repeated(",", bytes); }, false, Kind::Column},
    {"headings of numbers",
     [](CsvFile& file, size_t bytes) {
         file.headings += Repeated(",fax", bytes / 3 * 2);
         file.cells += Repeated(",1", bytes / 3);
     },
     false, Kind::Column},
    {"numbered telephones",
     [](CsvFile& file, size_t bytes) {
         file.headings += Repeated(",phone # value,phone # label", bytes / 10 * 9);
         file.cells += Repeated(",1,fax", bytes / 10);
     },
     false, Kind::Column},
    {"telephones of one number",
     [](CsvFile& file, size_t bytes) {
         file.headings += Repeated(",phone 7 value,phone 7 label", bytes / 10 * 9);
         file.cells += Repeated(",1,fax", bytes / 10);
     },
     false, Kind::Column},
    {"headings of notes",
     [](CsvFile& file, size_t bytes) {
         file.headings += Repeated(",notes", bytes / 2);
         file.cells += Repeated(",a", bytes / 2);
     },
     false, Kind::Column},
    {"cells without a heading", [](CsvFile& file, size_t bytes) { file.cells += Repeated(",#", bytes); }, false,
     Kind::Column},
    {"quoted cells", [](CsvFile& file, size_t bytes) { file.rows += Repeated("\"a\",\"#\"\r\n", bytes); }, false,
     Kind::Row},
    {"open quotes", [](CsvFile& file, size_t bytes) { file.rows += Repeated("\"a#,1\r\n", bytes); }, false, Kind::Row},
    {"open quotes in a row", [](CsvFile& file, size_t bytes) { file.cells += Repeated(",\"a", bytes); }},
    {"doubled quotes", [](CsvFile& file, size_t bytes) { file.cells += Repeated(",\"\"\"\"", bytes); }},
    {"guarded cells", [](CsvFile& file, size_t bytes) { file.rows += Repeated("'=#,'+1\r\n", bytes); }},
    {"empty lines", [](CsvFile& file, size_t bytes) { file.rows += Repeated("\r\n", bytes); }},
};

// Some at a time: each changes another place of the file.
const std::vector<Part> longParts[] = {
    {{"heading of numbers", [](CsvFile& file, size_t bytes) { file.faxHeading = "Fax " + std::string(bytes, 'x'); }},
     {"heading", [](CsvFile& file, size_t bytes) { file.headings += "," + std::string(bytes, 'x'); }},
     {"name", [](CsvFile& file, size_t bytes) { file.name = std::string(bytes, 'x'); }},
     {"label", [](CsvFile& file, size_t bytes) { file.label = "Fax " + std::string(bytes, 'x'); }},
     {"note",
      [](CsvFile& file, size_t bytes) { file.note = "\"" + Repeated("xxxxxxxxxxxxxxxxxxxxxxx\n", bytes) + "\""; }}},
    {{"heading that says fax", [](CsvFile& file, size_t bytes) { file.faxHeading = Repeated("Halifax ", bytes); }},
     {"number", [](CsvFile& file, size_t bytes) { file.fax.insert(0, bytes, '1'); }},
     {"label that says fax", [](CsvFile& file, size_t bytes) { file.label = Repeated("Halifax ", bytes); }},
     {"address", [](CsvFile& file, size_t bytes) { file.email.insert(0, bytes, 'x'); }},
     {"quoted cell", [](CsvFile& file, size_t bytes) { file.note = "\"" + Repeated("\"\"", bytes) + "\""; }}},
    {{"number of blanks and $",
      [](CsvFile& file, size_t bytes) { file.fax.insert(0, Repeated("$", bytes / 2) + Repeated(" ", bytes / 2)); }},
     {"category", [](CsvFile& file, size_t bytes) { file.categories.insert(0, bytes, 'x'); }},
     {"guarded cell", [](CsvFile& file, size_t bytes) { file.note = "\"" + Repeated("'=;", bytes) + "\""; }},
     {"row", [](CsvFile& file, size_t bytes) { file.rows += Repeated(",", bytes) + "\r\n"; }}},
    {{"blanks", [](CsvFile& file, size_t bytes) { file.note = Repeated(" \"", bytes); }},
     {"open quote", [](CsvFile& file, size_t bytes) { file.rows.insert(0, "\"" + Repeated("x\n", bytes)); }}},
};

void AddPairs(const Part& repeated, Products& products) {
    for (const std::vector<Part>& parts : longParts) {
        std::string name = std::string("csv: ") + repeated.name + " x a long ";
        for (const Part& part : parts) name.append(&part == &parts.front() ? "" : ", ").append(part.name);
        products.push_back({std::move(name),
                            [&](const auto& folder, size_t bytes) {
                                CsvFile file;
                                for (const Part& part : parts) part.put(file, bytes / 2 / parts.size());
                                repeated.put(file, bytes / 2);
                                WriteBook(folder, "a.csv", file.Text());
                            },
                            repeated.makesEntries});
    }
}

// Columns meet every row.
void AddPairsOf(const Part& first, const Part& second, Products& products) {
    products.push_back({std::string("csv: ") + first.name + " x " + second.name,
                        [&](const auto& folder, size_t bytes) {
                            CsvFile file;
                            first.put(file, bytes / 2);
                            second.put(file, bytes / 2);
                            WriteBook(folder, "a.csv", file.Text());
                        },
                        first.makesEntries && second.makesEntries});
}

}  // namespace

void AddCsvProducts(Products& products) {
    products.push_back({"csv: names in no character set", [](const auto& folder, size_t bytes) {
                            WriteBook(folder, "a.csv", "Name\n" + Repeated("\xE9#\xE9 a\n", bytes));
                        }});
    for (const Part& part : repeatedParts) {
        AddPairs(part, products);
        for (const Part& other : repeatedParts)
            if (part.kind == Kind::Column && other.kind == Kind::Row) AddPairsOf(part, other, products);
    }
}
