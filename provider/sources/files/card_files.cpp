// Opening the files, and what is said of those that cannot be read.
#include "sources/files/card_files.h"

#include <istream>
#include <stdexcept>

#include "cards/card_draft.h"
#include "cards/card_set.h"
#include "formats/card_formats.h"
#include "platform/system/files.h"
#include "platform/system/input_file.h"

namespace fs = std::filesystem;

namespace {

CardFormatReader* FormatOf(const fs::path& path) {
    return FindFormat(Utf8Of(path.extension()));
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
    const std::optional<UINT> guessed = FormatOf(path)(text, charset, receiver);
    if (file.Error()) receiver.Report(0, "file cannot be read to its end", "check the disk");
    return {guessed, !file.Error()};
}
