// A format is a folder with a reader, and a line here.
#include "formats/card_formats.h"

#include "formats/csv/csv_cards.h"
#include "formats/ldif/ldif_cards.h"
#include "formats/vcard/card_reader.h"
#include "text/ascii.h"

namespace {

struct Format {
    std::string_view ending;
    CardFormatReader* read;
};

constexpr Format formats[] = {
    {".vcf", ReadCards},
    {".csv", ReadCsvFile},
    // As directories and mail programs name them, servers of Windows, and systems with short names.
    {".ldif", ReadLdifCards},
    {".ldf", ReadLdifCards},
    {".ldi", ReadLdifCards},
};

}  // namespace

CardFormatReader* FindFormat(std::string_view ending) {
    for (const Format& format : formats)
        if (EqualsIgnoringCase(ending, format.ending)) return format.read;
    return nullptr;
}
