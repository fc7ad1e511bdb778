// The formats and how a file of each is brought to its reader.
#include "books/card_files.h"

#include <algorithm>
#include <istream>
#include <stdexcept>
#include <string>

#include "cards/card_draft.h"
#include "cards/card_set.h"
#include "csv/csv_cards.h"
#include "ldif/ldif_cards.h"
#include "platform/system/environment.h"
#include "platform/system/files.h"
#include "platform/system/input_file.h"
#include "text/ascii.h"
#include "text/charset_guess.h"
#include "text/charset_names.h"
#include "text/code_pages.h"
#include "vcard/card_reader.h"

namespace fs = std::filesystem;

namespace {

using Reader = std::optional<UINT>(std::istream& file, std::optional<UINT> charset, CardReceiver& receiver);

constexpr size_t longestSample = size_t{64} * 1024;

std::string LinesBeyondAscii(std::string_view text) {
    std::string lines;
    while (!text.empty() && lines.size() < longestSample) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (!IsAscii(line)) lines.append(line.substr(0, longestSample)).push_back('\n');
    }
    return lines;
}

struct Format {
    std::string_view ending;
    Reader* read;
};

// A CSV file is in one character set, and is converted as a whole.
std::optional<UINT> ReadCsvFile(std::istream& file, std::optional<UINT> charset, CardReceiver& receiver) {
    std::string text;
    AppendRest(file, text);
    if (std::optional<std::string> utf8 = Utf8FromUtf16Bytes(text)) text = std::move(*utf8);
    std::optional<UINT> guessed;
    if (!IsUtf8(text)) {
        if (!charset) charset = guessed = GuessCodePage(LinesBeyondAscii(text), CodePageOfFiles());
        std::string utf8;
        if (!AppendAsUtf8(text, *charset, utf8)) AppendRepaired(text, *charset, utf8);
        text = std::move(utf8);
    }
    ReadCsvCards(WithoutUtf8Mark(text), receiver);
    if (guessed)
        receiver.Report(0, "text is not UTF-8",
                        "it looks like {} and was read so; if names look wrong, save the file as UTF-8 or name its "
                        "charset in the settings of the address book",
                        {CharsetNameOf(*guessed)});
    return guessed;
}

constexpr Format formats[] = {
    {".vcf", ReadCards},
    {".csv", ReadCsvFile},
    // As directories and mail programs name them, servers of Windows, and systems with short names.
    {".ldif", ReadLdifCards},
    {".ldf", ReadLdifCards},
    {".ldi", ReadLdifCards},
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

CardFileReading ReadCardFile(const fs::path& path, std::optional<UINT> charset, CardReceiver& receiver) {
    InputFile file(path);
    if (file.IsNoFile()) {
        receiver.Report(0, "this is a pipe, a socket or a device, and no file", "it was passed over; remove it");
        return {.isComplete = true};
    }
    if (!file.IsOpen()) {
        receiver.Report(0, "file cannot be read",
                        "check that it exists, that you may read it and that its path is not too long");
        return {};
    }
    if (file.Size() > mostFileBytes) throw std::length_error("file too large");
    std::istream text(&file);
    const std::optional<UINT> guessed = FormatOf(path)->read(text, charset, receiver);
    if (file.Error()) receiver.Report(0, "file cannot be read to its end", "check the disk");
    return {guessed, !file.Error()};
}
