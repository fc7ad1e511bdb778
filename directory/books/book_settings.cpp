// Reads an address book's settings file.
#include "books/book_settings.h"

#include <string>

#include "diagnostics.h"
#include "platform/files.h"
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

// What is wrong with a value; nothing when it is right.
struct Complaint {
    std::string what;
    std::string advice;
};

template <typename Value, size_t count>
std::optional<Complaint> ReadName(std::string_view key, std::string_view value, const Name<Value> (&names)[count],
                                  std::optional<Value>& setting) {
    std::string known;
    for (const Name<Value>& name : names) {
        if (EqualsIgnoringCase(name.text, value)) {
            setting = name.value;
            return std::nullopt;
        }
        known.append(known.empty() ? "" : ", ").append(name.text);
    }
    return Complaint{"unknown " + std::string(key) + " " + std::string(value), "known are: " + known};
}

std::optional<Complaint> ReadSetting(std::string_view key, std::string_view value, BookSettings& settings) {
    if (EqualsIgnoringCase(key, "style")) return ReadName(key, value, styleNames, settings.style);
    if (EqualsIgnoringCase(key, "categories")) return ReadName(key, value, categoryUses, settings.categoriesAreGroups);
    if (EqualsIgnoringCase(key, "charset")) {
        settings.charset = CodePageOfCharset(value);
        if (settings.charset) return std::nullopt;
        return Complaint{"unknown charset " + std::string(value), "name one as in CHARSET, such as windows-1251"};
    }
    return Complaint{"unknown setting", "known are: style, charset, categories"};
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
        const std::string_view key = line.kind == IniLine::Kind::Setting ? line.name : std::string_view();
        if (const std::optional<Complaint> complaint = ReadSetting(key, line.value, settings))
            diagnostics.Report(file, line.number, complaint->what, complaint->advice);
    }
    return settings;
}
