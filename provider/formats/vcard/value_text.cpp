// The value decoders.
#include "formats/vcard/value_text.h"

#include "text/ascii.h"
#include "text/base64.h"
#include "text/byte_escapes.h"

namespace {

// A line end is never text here: it is a soft break after "=", else a fold. What only looks like an escape stays.
void AppendQuotedPrintable(std::string_view raw, bool keepBlank, std::string& bytes) {
    for (size_t i = 0; i < raw.size(); ++i) {
        const char c = raw[i];
        if (c == '\r' || c == '\n') {
            if (c == '\r' && i + 1 < raw.size() && raw[i + 1] == '\n') ++i;
            if (!keepBlank && i + 1 < raw.size() && IsBlank(raw[i + 1])) ++i;
        } else if (c != '=') {
            bytes.push_back(c);
        } else if (const int byte = HexPair(raw.substr(i + 1)); byte >= 0) {
            bytes.push_back(static_cast<char>(byte));
            i += 2;
        } else {
            const size_t next = raw.find_first_not_of(" \t", i + 1);
            if (next == std::string_view::npos) return;
            if (raw[next] != '\r' && raw[next] != '\n') {
                bytes.push_back(c);
                continue;
            }
            i = next;
            if (raw[next] == '\r' && next + 1 < raw.size() && raw[next + 1] == '\n') ++i;
        }
    }
}

bool IsEscapable(char c, VCardVersion version) {
    return c == ';' || c == ',' || c == '\\' || c == ':' || (version != VCardVersion::V21 && c == '"');
}

}  // namespace

std::string_view DecodeValue(const Property& property, VCardVersion version, std::string& buffer) {
    const bool keepBlank = version == VCardVersion::V21;
    const std::string_view raw = property.rawValue;
    buffer.clear();
    if (property.IsQuotedPrintable())
        AppendQuotedPrintable(raw, keepBlank, buffer);
    else if (property.IsBase64())
        AppendBase64(raw, buffer);
    else if (property.isFolded)
        AppendUnfolded(raw, keepBlank, buffer);
    else
        return raw;
    return buffer;
}

void AppendUnescaped(std::string_view value, VCardVersion version, std::string& text) {
    for (;;) {
        const size_t escape = value.find('\\');
        text.append(value.substr(0, escape));
        if (escape == std::string_view::npos) return;
        value.remove_prefix(escape + 1);
        if (version != VCardVersion::V21 && (value.starts_with('n') || value.starts_with('N')))
            text.push_back('\n');
        else if (!value.empty() && IsEscapable(value.front(), version))
            text.push_back(value.front());
        else {
            text.push_back('\\');
            continue;
        }
        value.remove_prefix(1);
    }
}
