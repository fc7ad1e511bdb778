// The formats and how a file of each is brought to its reader.
#include "books/card_files.h"

#include <fstream>

#include "cards/card_draft.h"
#include "platform/files.h"
#include "text/ascii.h"
#include "text/charset_guess.h"
#include "text/code_pages.h"
#include "vcard/card_reader.h"

namespace fs = std::filesystem;

namespace {

using Reader = std::optional<UINT>(std::istream& file, std::optional<UINT> charset, CardReceiver& receiver);

struct Format {
    std::string_view ending;
    Reader* read;
};

constexpr Format formats[] = {
    {".vcf", ReadCards},
};

const Format* FormatOf(const fs::path& path) {
    const std::string ending = Utf8Of(path.extension());
    for (const Format& format : formats)
        if (EqualsIgnoringCase(ending, format.ending)) return &format;
    return nullptr;
}

}  // namespace

bool IsCardFileName(const fs::path& path) {
    return FormatOf(path) != nullptr;
}

std::optional<UINT> ReadCardFile(const fs::path& path, std::optional<UINT> charset, CardReceiver& receiver) {
    std::error_code error;
    std::ifstream file(path, std::ios::binary);
    if (!file || !fs::is_regular_file(path, error)) {
        receiver.Report(0, "file cannot be read", "check that it exists and that you may read it");
        return std::nullopt;
    }
    const std::optional<UINT> guessed = FormatOf(path)->read(file, charset, receiver);
    if (file.bad()) receiver.Report(0, "file cannot be read to its end", "check the disk");
    return guessed;
}
