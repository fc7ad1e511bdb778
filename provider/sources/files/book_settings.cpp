// Reads an address book's settings file.
#include "sources/files/book_settings.h"

#include <string>

#include "diagnostics.h"
#include "platform/system/files.h"
#include "text/ascii.h"
#include "text/charset_names.h"
#include "text/code_pages.h"
#include "text/ini_lines.h"

namespace {

template <typename Value>
struct Name {
    std::string_view text;
    Value value;
};
constexpr Name<ContentsStyle> styleNames[] = {{"plain", ContentsStyle::Plain},
                                              {"primary-secondary", ContentsStyle::PrimarySecondary},
                                              {"fax-entries", ContentsStyle::FaxEntries}};
constexpr Name<bool> categoryUses[] = {{"ignore", false}, {"groups", true}};

// Each of these calls `complain` as Diagnostics::Report is called, when something is wrong with the value.
template <typename Value, size_t count, typename Complain>
void ReadName(std::string_view key, std::string_view value, const Name<Value> (&names)[count],
              std::optional<Value>& setting, Complain&& complain) {
    std::string known;
    for (const Name<Value>& name : names) {
        if (EqualsIgnoringCase(name.text, value)) {
            setting = name.value;
            return;
        }
        known.append(known.empty() ? "" : ", ").append(name.text);
    }
    complain("unknown {} {}", "known are: {}", {key, value, known});
}

template <typename Complain>
void ReadSetting(std::string_view key, std::string_view value, BookSettings& settings, Complain&& complain) {
    if (EqualsIgnoringCase(key, "style")) return ReadName(key, value, styleNames, settings.style, complain);
    if (EqualsIgnoringCase(key, "categories"))
        return ReadName(key, value, categoryUses, settings.categoriesAreGroups, complain);
    if (EqualsIgnoringCase(key, "charset")) {
        settings.charset = CodePageOfCharset(value);
        if (!settings.charset) complain("unknown charset {}", "name one as in CHARSET, such as windows-1251", {value});
        return;
    }
    complain("unknown setting", "known are: style, charset, categories", {});
}

}  // namespace

void BookSettings::Inherit(const BookSettings& parent) {
    if (!style) style = parent.style;
    if (!charset) charset = parent.charset;
    if (!categoriesAreGroups) categoriesAreGroups = parent.categoriesAreGroups;
}

std::filesystem::path SettingsFileOf(const std::filesystem::path& book, bool isFolder) {
    return isFolder ? book / "addressbook.ini" : std::filesystem::path(book).replace_extension(".ini");
}

std::optional<BookSettings> ReadBookSettings(const std::filesystem::path& file, Diagnostics& diagnostics) {
    BookSettings settings;
    if (IsNothingThere(file)) return settings;
    const std::optional<std::string> text = ReadWholeFile(file);
    if (!text) {
        diagnostics.Report(file, 0, "settings cannot be read",
                           "the defaults are used; check that this is a small file and that you may read it");
        return std::nullopt;
    }
    MessagePass pass(diagnostics);
    for (const IniLine& line : ReadIniLines(WithoutUtf8Mark(*text))) {
        if (line.kind == IniLine::Kind::Blank) continue;
        const std::string_view key = line.kind == IniLine::Kind::Setting ? line.name : std::string_view();
        ReadSetting(key, line.value, settings, [&](std::string_view what, std::string_view advice, MessageNames names) {
            diagnostics.Report(file, line.number, what, advice, names);
        });
    }
    pass.Finish();
    return settings;
}
