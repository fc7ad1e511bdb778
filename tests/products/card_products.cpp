// vCard files: every line, part of a line and card that may be repeated, beside every part that may be long.
#include "product.h"

namespace {

// A file with a place for everything. All lines of the card have the group g, so that labels belong to them.
struct CardFile {
    std::string before;
    std::string version = "3.0";
    std::string name = "Ann";
    std::string parameters = ";TYPE=WORK,FAX";  // of the telephone
    std::string number = "+1 555 1";
    std::string lines;
    std::string behind;  // other cards

    std::string Text() const {
        return before + "BEGIN:VCARD\r\nVERSION:" + version + "\r\ng.FN:" + name + "\r\ng.TEL" + parameters + ":" +
               number + "\r\n" + lines + "END:VCARD\r\n" + behind;
    }
};

// Puts about so many bytes into the file.
struct Part {
    const char* name;
    void (*put)(CardFile& file, size_t bytes);
    bool makesEntries = false;
};

std::string Letters(size_t bytes) {
    return std::string(bytes, 'x');
}

const Part repeatedParts[] = {
    {"numbers", [](CardFile& file, size_t bytes) { file.lines += Repeated("g.TEL;TYPE=FAX:#\r\n", bytes); }, true},
    {"same numbers", [](CardFile& file, size_t bytes) { file.lines += Repeated("g.TEL;FAX:1\r\n", bytes); }},
    {"labels", [](CardFile& file, size_t bytes) { file.lines += Repeated("g.X-ABLABEL:Fax\r\n", bytes); }, true},
    {"groups of lines",
     [](CardFile& file, size_t bytes) { file.lines += Repeated("i#.TEL:#\r\ni#.X-ABLABEL:Fax\r\n", bytes); }},
    {"addresses", [](CardFile& file, size_t bytes) { file.lines += Repeated("EMAIL:a#@example.com\r\n", bytes); }},
    {"missing members",
     [](CardFile& file, size_t bytes) { file.lines += "KIND:group\r\n" + Repeated("MEMBER:m#\r\n", bytes); }},
    {"members",
     [](CardFile& file, size_t bytes) {
         file.lines += "KIND:group\r\n" + Repeated("MEMBER:tel:#\r\n", bytes / 3);
         file.behind += Repeated("BEGIN:VCARD\r\nFN:A\r\nTEL;FAX:#\r\nEND:VCARD\r\n", bytes / 3 * 2);
     },
     true},
    {"categories", [](CardFile& file, size_t bytes) { file.lines += "CATEGORIES:" + Repeated("#,", bytes) + "\r\n"; },
     true},
    {"components of a name",
     [](CardFile& file, size_t bytes) {
         file.name.clear();
         file.lines += "g.N:" + Repeated("#;a,", bytes) + "\r\n";
     }},
    {"components of an organisation",
     [](CardFile& file, size_t bytes) { file.lines += "ORG:" + Repeated("#;", bytes) + "\r\n"; }},
    {"parameters", [](CardFile& file, size_t bytes) { file.parameters += Repeated(";X=#", bytes); }},
    {"types", [](CardFile& file, size_t bytes) { file.parameters += ";TYPE=" + Repeated("fax,#,", bytes) + "cell"; }},
    {"unknown properties", [](CardFile& file, size_t bytes) { file.lines += Repeated("g.X-A:=\r\n", bytes); }},
    {"strays in a card", [](CardFile& file, size_t bytes) { file.lines += Repeated("AAAA\r\n", bytes); }},
    {"strays before a card", [](CardFile& file, size_t bytes) { file.before += Repeated("text\r\n", bytes); }},
    {"folds", [](CardFile& file, size_t bytes) { file.name += Repeated("\r\n #", bytes); }},
    {"soft breaks",
     [](CardFile& file, size_t bytes) {
         file.lines += "NOTE;ENCODING=QUOTED-PRINTABLE:" + Repeated("#=\r\n", bytes) + "\r\n";
     }},
    {"soft breaks of no interest",
     [](CardFile& file, size_t bytes) {
         file.lines += "X-A;ENCODING=QUOTED-PRINTABLE:" + Repeated("#=\r\n", bytes) + "\r\n";
     }},
    {"BEGIN", [](CardFile& file, size_t bytes) { file.lines += Repeated("BEGIN:VCARD\r\n", bytes); }},
    {"END", [](CardFile& file, size_t bytes) { file.behind += Repeated("END:VCARD\r\n", bytes); }},
    {"cards",
     [](CardFile& file, size_t bytes) { file.behind += Repeated("BEGIN:VCARD\r\nFN:#\r\nEND:VCARD\r\n", bytes); },
     true},
    {"groups",
     [](CardFile& file, size_t bytes) {
         file.behind += Repeated("BEGIN:VCARD\r\nFN:#\r\nKIND:group\r\nMEMBER:m#\r\nEND:VCARD\r\n", bytes);
     },
     true},
    {"groups in groups",
     [](CardFile& file, size_t bytes) {
         file.behind += Repeated(
             "BEGIN:VCARD\r\nFN:G\r\nUID:u#\r\nKIND:group\r\nMEMBER:u#0\r\nMEMBER:u#1\r\nMEMBER:u1\r\n"
             "END:VCARD\r\n",
             bytes);
     },
     true},
    {"cards of one identifier",
     [](CardFile& file, size_t bytes) {
         file.lines += "KIND:group\r\nMEMBER:u\r\n";
         file.behind += Repeated("BEGIN:VCARD\r\nFN:#\r\nUID:u\r\nEND:VCARD\r\n", bytes);
     }},
    {"notes", [](CardFile& file, size_t bytes) { file.lines += Repeated("NOTE:#\r\n", bytes); }},
    {"versions", [](CardFile& file, size_t bytes) { file.lines += Repeated("VERSION:4.0\r\n", bytes); }},
    {"unknown character sets",
     [](CardFile& file, size_t bytes) { file.lines += Repeated("NICKNAME;CHARSET=x#:a\r\n", bytes); }},
    {"texts in no character set",
     [](CardFile& file, size_t bytes) { file.lines += Repeated("EMAIL:aaaaaaaaaaaaaaaaaaaaaaaa\xE9#\r\n", bytes); }},
    {"empty lines", [](CardFile& file, size_t bytes) { file.lines += Repeated("\r\n", bytes); }},
    {"lone returns", [](CardFile& file, size_t bytes) { file.lines += Repeated("g.TEL:#\r", bytes); }},
};

// Some at a time: each changes another place of the file. Strays follow the head of a base64 value.
const std::vector<Part> longParts[] = {
    {{"name", [](CardFile& file, size_t bytes) { file.name = Letters(bytes); }},
     {"number", [](CardFile& file, size_t bytes) { file.number = std::string(bytes, '1'); }},
     {"label", [](CardFile& file, size_t bytes) { file.lines += "g.X-ABLABEL:Fax " + Letters(bytes) + "\r\n"; }},
     {"group of a line", [](CardFile& file, size_t bytes) { file.lines += Letters(bytes) + ".TEL;TYPE=FAX:1\r\n"; }},
     {"note", [](CardFile& file, size_t bytes) { file.lines += "NOTE:" + Repeated("x\\n", bytes) + "\r\n"; }},
     {"head of base64",
      [](CardFile& file, size_t bytes) { file.lines += "PHOTO;ENCODING=b;X=" + Letters(bytes) + ":AAAA\r\n"; }}},
    {{"name beyond ASCII", [](CardFile& file, size_t bytes) { file.name = Repeated("\xC3\xA9", bytes); }},
     {"number of blanks and $",
      [](CardFile& file, size_t bytes) { file.number = Repeated("$", bytes / 2) + Repeated(" ", bytes / 2) + "1"; }},
     {"label that says fax",
      [](CardFile& file, size_t bytes) { file.lines += "g.X-ABLABEL:" + Repeated("Halifax ", bytes) + "\r\n"; }},
     {"organisation", [](CardFile& file, size_t bytes) { file.lines += "ORG:A;" + Letters(bytes) + "\r\n"; }},
     {"head without encoding",
      [](CardFile& file, size_t bytes) { file.lines += "PHOTO;X=" + Letters(bytes) + ":AAAA\r\n"; }}},
    {{"name of escapes", [](CardFile& file, size_t bytes) { file.name = Repeated("\\,", bytes) + "a"; }},
     {"number with extensions",
      [](CardFile& file, size_t bytes) { file.number = "tel:1" + Repeated(";ext=#", bytes); }},
     {"groups of one line",
      [](CardFile& file, size_t bytes) { file.lines += Repeated("a.", bytes) + "TEL;TYPE=FAX:1\r\n"; }},
     {"property", [](CardFile& file, size_t bytes) { file.lines += "X-" + Letters(bytes) + ":1\r\n"; }},
     {"identifier", [](CardFile& file, size_t bytes) { file.lines += "UID:" + Letters(bytes) + "\r\n"; }}},
    {{"component of a name",
      [](CardFile& file, size_t bytes) {
          file.name.clear();
          file.lines += "N:" + Letters(bytes) + "\r\n";
      }},
     {"parameter", [](CardFile& file, size_t bytes) { file.parameters += ";" + Letters(bytes) + "=1"; }},
     {"value of a parameter", [](CardFile& file, size_t bytes) { file.parameters += ";TYPE=" + Letters(bytes); }},
     {"address", [](CardFile& file, size_t bytes) { file.lines += "EMAIL:" + Letters(bytes) + "\r\n"; }},
     {"base64",
      [](CardFile& file, size_t bytes) { file.lines += "NOTE;ENCODING=b:" + Repeated("AAAA\r\n ", bytes) + "\r\n"; }}},
    {{"quote without end", [](CardFile& file, size_t bytes) { file.parameters += ";X=\"" + Repeated(";", bytes); }},
     {"quoted-printable",
      [](CardFile& file, size_t bytes) {
          file.lines += "NOTE;ENCODING=QUOTED-PRINTABLE:" + Repeated("=41=20", bytes) + "\r\n";
      }},
     {"character set",
      [](CardFile& file, size_t bytes) { file.lines += "NICKNAME;CHARSET=" + Letters(bytes) + ":a\r\n"; }},
     {"category", [](CardFile& file, size_t bytes) { file.lines += "CATEGORIES:" + Letters(bytes) + "\r\n"; }},
     {"member",
      [](CardFile& file, size_t bytes) { file.lines += "KIND:group\r\nMEMBER:mailto:" + Letters(bytes) + "\r\n"; }},
     {"stray", [](CardFile& file, size_t bytes) { file.lines += Letters(bytes) + "\r\n"; }},
     {"blanks", [](CardFile& file, size_t bytes) { file.lines += "NOTE:a=" + Repeated(" \t", bytes) + "\r\n"; }}},
};

// Guessing its character set takes so long that nothing else would be seen beside it.
const Part inNoCharacterSet = {"a name in no character set", [](CardFile& file, size_t bytes) {
                                   file.name = Repeated("\xE9 aaaaaaaaaaaaaaa ", bytes);
                               }};

// As often as it is long.
template <typename Function>
void ForSquare(size_t bytes, Function&& function) {
    size_t side = 1;
    while (side * side < bytes) ++side;
    for (size_t i = 0; i < side; ++i) function(side);
}

void AddPairs(const Part& repeated, Products& products) {
    for (const std::vector<Part>& parts : longParts) {
        std::string name = std::string("vcf: ") + repeated.name + " x a long ";
        for (const Part& part : parts) name.append(&part == &parts.front() ? "" : ", ").append(part.name);
        products.push_back({std::move(name),
                            [&](const auto& folder, size_t bytes) {
                                CardFile file;
                                for (const Part& part : parts) part.put(file, bytes / 2 / parts.size());
                                repeated.put(file, bytes / 2);
                                WriteBook(folder, "a.vcf", file.Text());
                            },
                            repeated.makesEntries});
    }
}

// The square root of the size in cards, each as long.
void AddCardsWith(const Part& part, Products& products) {
    products.push_back({std::string("vcf: cards with ") + part.name,
                        [&](const auto& folder, size_t bytes) {
                            std::string text;
                            ForSquare(bytes, [&](size_t side) {
                                CardFile file;
                                part.put(file, side);
                                text += file.Text();
                            });
                            WriteBook(folder, "a.vcf", text);
                        },
                        part.makesEntries});
}

void AddManyOf(const Part& part, Products& products) {
    products.push_back({std::string("vcf: as many as they are long: ") + part.name,
                        [&](const auto& folder, size_t bytes) {
                            CardFile file;
                            ForSquare(bytes, [&](size_t side) { part.put(file, side); });
                            WriteBook(folder, "a.vcf", file.Text());
                        },
                        part.makesEntries});
}

}  // namespace

void AddCardProducts(Products& products) {
    AddCardsWith(inNoCharacterSet, products);
    for (const Part& part : repeatedParts) {
        AddPairs(part, products);
        AddCardsWith(part, products);
    }
    for (const std::vector<Part>& parts : longParts)
        for (const Part& part : parts) AddManyOf(part, products);
}
