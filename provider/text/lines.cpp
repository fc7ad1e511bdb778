// Nearly all texts are as they should be: they are looked at and left.
#include "text/lines.h"

#include <string_view>

#include "text/ascii.h"
#include "text/control_characters.h"

namespace {

bool IsSingleLine(std::string_view text) {
    return !HasAny(text, IsControl) && text.find("  ") == std::string_view::npos && !text.starts_with(' ') &&
           !text.ends_with(' ');
}

}  // namespace

void MakeSingleLine(std::string& text) {
    if (IsSingleLine(text)) return;
    size_t length = 0;
    bool blankDue = false;
    for (const char c : text) {
        if (c == ' ' || IsControl(c)) {
            blankDue = length > 0;
            continue;
        }
        if (blankDue) text[length++] = ' ';
        blankDue = false;
        text[length++] = c;
    }
    text.resize(length);
}

void MakeWindowsLines(std::string& text) {
    if (IsSingleLine(text)) return;
    const std::string_view body = Trimmed(text);
    std::string lines;
    lines.reserve(body.size());
    for (size_t i = 0; i < body.size(); ++i) {
        const char c = body[i];
        if (c == '\r' || c == '\n') {
            if (c == '\r' && i + 1 < body.size() && body[i + 1] == '\n') ++i;
            lines.append("\r\n");
        } else {
            lines.push_back(static_cast<unsigned char>(c) < ' ' ? ' ' : c);
        }
    }
    text = std::move(lines);
}
