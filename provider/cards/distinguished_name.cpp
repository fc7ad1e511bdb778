// One pass cuts the name at its separators, another takes the escapes out of each value.
#include "cards/distinguished_name.h"

#include <algorithm>
#include <iterator>

#include "text/ascii.h"
#include "text/byte_escapes.h"
#include "text/letter_case.h"

namespace {

struct Synonym {
    std::string_view spelling;
    std::string_view type;
};

// Of attributes that names are made of, their other names and their object identifiers.
constexpr Synonym synonyms[] = {
    {"commonname", "cn"},
    {"2.5.4.3", "cn"},
    {"surname", "sn"},
    {"2.5.4.4", "sn"},
    {"countryname", "c"},
    {"2.5.4.6", "c"},
    {"localityname", "l"},
    {"2.5.4.7", "l"},
    {"stateorprovincename", "st"},
    {"2.5.4.8", "st"},
    {"streetaddress", "street"},
    {"2.5.4.9", "street"},
    {"organizationname", "o"},
    {"2.5.4.10", "o"},
    {"organizationalunitname", "ou"},
    {"2.5.4.11", "ou"},
    {"2.5.4.42", "givenname"},
    {"gn", "givenname"},
    {"domaincomponent", "dc"},
    {"0.9.2342.19200300.100.1.25", "dc"},
    {"userid", "uid"},
    {"0.9.2342.19200300.100.1.1", "uid"},
    {"rfc822mailbox", "mail"},
    {"0.9.2342.19200300.100.1.3", "mail"},
    {"e", "emailaddress"},
    {"email", "emailaddress"},
    {"1.2.840.113549.1.9.1", "emailaddress"},
};

bool IsType(std::string_view type) {
    const auto isLetter = [](char c) { return ToLowerAscii(c) >= 'a' && ToLowerAscii(c) <= 'z'; };
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (type.empty() || (!isLetter(type.front()) && !isDigit(type.front()))) return false;
    return std::ranges::all_of(type, [&](char c) { return isLetter(c) || isDigit(c) || c == '-' || c == '.'; });
}

std::string TypeOf(std::string_view spelling) {
    std::string type = LowerCased(spelling);
    if (type.starts_with("oid.") && type.size() > 4 && type[4] >= '0' && type[4] <= '9') type.erase(0, 4);
    const auto* const synonym = std::ranges::find(synonyms, type, &Synonym::spelling);
    return synonym == std::end(synonyms) ? type : std::string(synonym->type);
}

// What "#04024869" holds, which is BER: of a string that is shorter than 64 KB the text, else all of it. Nothing for
// what is not hexadecimal.
std::optional<std::string> BytesOfHex(std::string_view digits) {
    std::string bytes;
    for (; !digits.empty(); digits.remove_prefix(2)) {
        const int byte = HexPair(digits);
        if (byte < 0) return std::nullopt;
        bytes.push_back(static_cast<char>(byte));
    }
    constexpr std::string_view stringTags = "\x04\x0C\x13\x14\x16";  // octets, UTF-8, printable, T.61, IA5
    if (bytes.size() < 2 || stringTags.find(bytes[0]) == std::string_view::npos) return bytes;
    const auto byteAt = [&](size_t i) { return static_cast<size_t>(static_cast<unsigned char>(bytes[i])); };
    size_t header = 2;
    size_t length = byteAt(1);
    if (length == 0x81 || length == 0x82) {
        header += length - 0x80;
        if (bytes.size() < header) return bytes;
        length = header == 3 ? byteAt(2) : byteAt(2) << 8 | byteAt(3);
    }
    return bytes.size() - header == length ? bytes.substr(header) : bytes;
}

std::string ValueOf(std::string_view raw) {
    raw = TrimmedAtStart(raw);
    if (raw.starts_with('#'))
        if (std::optional<std::string> bytes = BytesOfHex(Trimmed(raw.substr(1)))) return *bytes;
    const bool isQuoted = raw.starts_with('"') && Trimmed(raw).ends_with('"') && Trimmed(raw).size() > 1;
    if (isQuoted) raw = Trimmed(raw).substr(1, Trimmed(raw).size() - 2);
    std::string value;
    for (size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] != '\\' || i + 1 == raw.size()) {
            value.push_back(raw[i]);
            continue;
        }
        const int byte = HexPair(raw.substr(++i));
        value.push_back(byte < 0 ? raw[i] : static_cast<char>(byte));
        if (byte >= 0) ++i;
    }
    return value;
}

// What stands between separators: with the one before it, and its first "=" that is no part of an escape.
struct Piece {
    char separator = ',';
    std::string_view text;
    size_t equals = std::string_view::npos;

    bool IsAttribute() const { return equals != std::string_view::npos && IsType(Trimmed(text.substr(0, equals))); }
};

std::vector<Piece> Cut(std::string_view name) {
    std::vector<Piece> pieces;
    const size_t lastQuote = name.rfind('"');
    Piece piece;
    size_t start = 0;
    bool isValueStart = false;
    for (size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        if (c == ',' || c == ';' || c == '+') {
            piece.text = name.substr(start, i - start);
            pieces.push_back(piece);
            piece = {};
            piece.separator = c;
            start = i + 1;
        } else if (c == '\\') {
            isValueStart = false;
            ++i;
        } else if (c == '=' && piece.equals == std::string_view::npos) {
            piece.equals = i - start;
            isValueStart = true;
        } else if (c == '"' && isValueStart && lastQuote != std::string_view::npos && i < lastQuote) {
            isValueStart = false;
            for (++i; i < lastQuote && name[i] != '"'; ++i)
                if (name[i] == '\\') ++i;
        } else if (!IsBlank(c)) {
            isValueStart = false;
        }
    }
    piece.text = name.substr(start);
    pieces.push_back(piece);
    return pieces;
}

// As directories compare: without regard to case, and to blanks at the ends and beside others.
void AppendComparable(std::string_view value, std::string& text) {
    constexpr std::string_view escaped = ",+\"\\<>;=#";
    const auto isContinuation = [&](size_t i) {
        return i < value.size() && (static_cast<unsigned char>(value[i]) & 0xC0) == 0x80;
    };
    value = Trimmed(value);
    for (size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        const auto byte = static_cast<unsigned char>(c);
        if (IsBlankOrLineEnd(c)) {
            if (!text.ends_with(' ')) text.push_back(' ');
        } else if (byte >= 0xC2 && byte <= 0xDF && isContinuation(i + 1)) {
            const char32_t small = SmallLetter((byte & 0x1FU) << 6 | (static_cast<unsigned char>(value[++i]) & 0x3FU));
            if (small < 0x80) {
                text.push_back(static_cast<char>(small));
                continue;
            }
            AppendByteEscape(static_cast<unsigned char>(0xC0 | small >> 6), text);
            AppendByteEscape(static_cast<unsigned char>(0x80 | (small & 0x3F)), text);
        } else if (byte >= 0x7F || byte < ' ' || escaped.find(c) != std::string_view::npos) {
            AppendByteEscape(byte, text);
        } else {
            text.push_back(ToLowerAscii(c));
        }
    }
}

}  // namespace

std::optional<std::vector<RelativeName>> ParseName(std::string_view name) {
    std::vector<RelativeName> parts;
    if (Trimmed(name).empty()) return parts;
    const std::vector<Piece> pieces = Cut(name);
    for (size_t i = 0; i < pieces.size();) {
        const Piece& piece = pieces[i];
        if (!piece.IsAttribute()) return std::nullopt;
        std::string_view raw = piece.text.substr(piece.equals + 1);
        // Pieces of one value lie behind each other in the name.
        while (++i < pieces.size() && !pieces[i].IsAttribute())
            raw = {raw.data(), static_cast<size_t>(pieces[i].text.data() + pieces[i].text.size() - raw.data())};
        if (piece.separator != '+' || parts.empty()) parts.emplace_back();
        parts.back().push_back({TypeOf(Trimmed(piece.text.substr(0, piece.equals))), ValueOf(raw)});
    }
    return parts;
}

std::string NormalisedName(const std::vector<RelativeName>& name) {
    std::string normalised;
    std::vector<std::string> attributes;
    for (const RelativeName& part : name) {
        attributes.clear();
        for (const NameAttribute& attribute : part) {
            std::string& text = attributes.emplace_back(attribute.type);
            text.push_back('=');
            AppendComparable(attribute.value, text);
        }
        std::ranges::sort(attributes);
        for (size_t i = 0; i < attributes.size(); ++i) {
            if (!normalised.empty()) normalised.push_back(i == 0 ? ',' : '+');
            normalised.append(attributes[i]);
        }
    }
    return normalised;
}
