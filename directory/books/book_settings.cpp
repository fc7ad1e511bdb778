// Reads an address book's settings file.
#include "books/book_settings.h"

#include <string>

#include "diagnostics.h"
#include "platform/files.h"
#include "text/ascii.h"
#include "text/code_pages.h"
#include "text/ini_lines.h"

namespace {

struct StyleName {
    std::string_view name;
    ContentsStyle style;
};
constexpr StyleName styleNames[] = {{"plain", ContentsStyle::Plain},
                                    {"primary-secondary", ContentsStyle::PrimarySecondary},
                                    {"fax-entries", ContentsStyle::FaxEntries}};

std::optional<ContentsStyle> StyleOf(std::string_view name) {
    for (const StyleName& known : styleNames)
        if (EqualsIgnoringCase(known.name, name)) return known.style;
    return std::nullopt;
}

}  // namespace

std::filesystem::path SettingsFileOf(const std::filesystem::path& book, bool isFolder) {
    return isFolder ? book / "addressbook.ini" : std::filesystem::path(book).replace_extension(".ini");
}

BookSettings ReadBookSettings(const std::filesystem::path& file, Diagnostics& diagnostics) {
    BookSettings settings;
    if (!ReadFileStatus(file)) return settings;
    const std::optional<std::string> text = ReadWholeFile(file);
    if (!text) {
        diagnostics.Report(file, 0, "settings cannot be read", "the defaults are used");
        return settings;
    }
    for (const IniLine& line : ReadIniLines(WithoutUtf8Mark(*text))) {
        if (line.kind == IniLine::Kind::Blank) continue;
        if (line.kind != IniLine::Kind::Setting || !EqualsIgnoringCase(line.name, "style")) {
            diagnostics.Report(file, line.number, "unknown setting", "known is: style");
            continue;
        }
        const std::optional<ContentsStyle> style = StyleOf(line.value);
        if (style)
            settings.style = style;
        else
            diagnostics.Report(file, line.number, "unknown style " + std::string(line.value),
                               "known are: plain, primary-secondary, fax-entries");
    }
    return settings;
}
