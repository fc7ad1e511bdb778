// Takes a settings file apart without losing a byte of it.
#include "text/ini_lines.h"

#include "text/ascii.h"

namespace {

IniLine ReadLine(std::string_view raw, size_t number) {
    const std::string_view text = Trimmed(raw);
    if (text.empty() || text.front() == '#' || text.front() == ';') return {IniLine::Kind::Blank, number, raw, {}, {}};
    // A section's name may itself hold brackets.
    if (text.front() == '[' && text.back() == ']')
        return {IniLine::Kind::Section, number, raw, Trimmed(text.substr(1, text.size() - 2)), {}};
    const size_t equals = text.find('=');
    if (text.front() == '[' || equals == std::string_view::npos || equals == 0)
        return {IniLine::Kind::Unreadable, number, raw, {}, {}};
    return {IniLine::Kind::Setting, number, raw, Trimmed(text.substr(0, equals)), Trimmed(text.substr(equals + 1))};
}

}  // namespace

std::vector<IniLine> ReadIniLines(std::string_view text) {
    std::vector<IniLine> lines;
    while (!text.empty()) {
        const size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(ReadLine(text.substr(0, length), lines.size() + 1));
        text.remove_prefix(length);
    }
    return lines;
}
