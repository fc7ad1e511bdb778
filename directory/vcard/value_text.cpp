// The value decoders. Each appends to a text that the caller uses again.
#include "vcard/value_text.h"

#include "text/ascii.h"
#include "text/code_pages.h"

namespace {

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const char lower = ToLowerAscii(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// A line end is never text here: it is a soft break after "=", else a fold. What only looks like an escape stays.
void AppendQuotedPrintable(std::string_view raw, bool keepBlank, std::string& bytes) {
    for (size_t i = 0; i < raw.size(); ++i) {
        const char c = raw[i];
        if (c == '\r' || c == '\n') {
            if (c == '\r' && i + 1 < raw.size() && raw[i + 1] == '\n') ++i;
            if (!keepBlank && i + 1 < raw.size() && IsBlank(raw[i + 1])) ++i;
        } else if (c != '=') {
            bytes.push_back(c);
        } else if (i + 2 < raw.size() && HexValue(raw[i + 1]) >= 0 && HexValue(raw[i + 2]) >= 0) {
            bytes.push_back(static_cast<char>(HexValue(raw[i + 1]) * 16 + HexValue(raw[i + 2])));
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

void AppendBase64(std::string_view raw, std::string& bytes) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    unsigned bits = 0;
    int count = 0;
    for (const char c : raw) {
        const size_t digit = digits.find(c);
        if (digit == std::string_view::npos) continue;
        bits = (bits << 6 | static_cast<unsigned>(digit)) & 0xFFFF;
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes.push_back(static_cast<char>(bits >> count & 0xFF));
    }
}

bool IsEscapable(char c, VCardVersion version) {
    return c == ';' || c == ',' || c == '\\' || c == ':' || (version != VCardVersion::V21 && c == '"');
}

}  // namespace

ValueProblem AppendDecodedValue(const Property& property, VCardVersion version, std::string& utf8) {
    const bool keepBlank = version == VCardVersion::V21;
    const std::string_view raw = property.rawValue;
    std::string decoded;
    std::string_view bytes = raw;
    if (property.IsQuotedPrintable()) {
        AppendQuotedPrintable(raw, keepBlank, decoded);
        bytes = decoded;
    } else if (property.IsBase64()) {
        AppendBase64(raw, decoded);
        bytes = decoded;
    } else if (property.isFolded) {
        AppendUnfolded(raw, keepBlank, decoded);
        bytes = decoded;
    }

    const std::string_view label = property.ParameterValue("CHARSET");
    const std::optional<UINT> codePage = label.empty() ? std::nullopt : CodePageOfCharset(label);
    if (codePage && AppendAsUtf8(bytes, *codePage, utf8)) return ValueProblem::None;
    if (codePage) {
        AppendRepairedUtf8(bytes, utf8);
        return ValueProblem::BrokenText;
    }
    const bool wasUtf8 = AppendAsUtf8(bytes, CP_UTF8, utf8);
    if (!wasUtf8) AppendAsUtf8(bytes, codePageWesternEuropean, utf8);
    if (!label.empty()) return ValueProblem::UnknownCharset;
    return wasUtf8 ? ValueProblem::None : ValueProblem::GuessedCharset;
}

void AppendUnescaped(std::string_view value, VCardVersion version, std::string& text) {
    for (size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text.push_back(value[i]);
            continue;
        }
        const char next = value[i + 1];
        if (version != VCardVersion::V21 && (next == 'n' || next == 'N')) {
            text.push_back('\n');
            ++i;
        } else if (IsEscapable(next, version)) {
            text.push_back(next);
            ++i;
        } else {
            text.push_back('\\');
        }
    }
}

void MakeSingleLine(std::string& text) {
    size_t length = 0;
    bool blankDue = false;
    for (const char c : text) {
        if (static_cast<unsigned char>(c) <= ' ' || c == '\x7F') {
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
