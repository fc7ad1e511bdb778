// Takes the head of a content line apart without copying it, unless it is folded before its value begins.
#include "vcard/property.h"

#include "text/ascii.h"

bool IsTypeParameter(const Parameter& parameter) {
    return parameter.name.empty() || EqualsIgnoringCase(parameter.name, "TYPE");
}

bool Property::Parse(const ContentLine& line) {
    std::string_view text = line.raw;
    isFolded = line.folded;
    if (line.folded && text.find_first_of("\r\n") < text.find(':')) {
        unfolded_.clear();
        AppendUnfolded(text, false, unfolded_);
        text = unfolded_;
        isFolded = false;
    }
    // A quote that is never closed would swallow the colon: then quotes mean nothing in this line.
    return ParseHead(text, true) || ParseHead(text, false);
}

bool Property::ParseHead(std::string_view text, bool heedQuotes) {
    parameters.clear();
    group = {};
    name = {};
    bool quoted = false;
    bool named = false;
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"' && heedQuotes) quoted = !quoted;
        if (quoted || (c != ':' && c != ';')) continue;
        const std::string_view piece = text.substr(start, i - start);
        if (named) {
            AddParameter(piece);
        } else {
            const std::string_view whole = Trimmed(piece);
            const size_t dot = whole.rfind('.');
            name = dot == std::string_view::npos ? whole : whole.substr(dot + 1);
            group = dot == std::string_view::npos ? std::string_view() : whole.substr(0, dot);
            named = true;
        }
        start = i + 1;
        if (c == ':') {
            rawValue = text.substr(start);
            return !name.empty();
        }
    }
    return false;
}

void Property::AddParameter(std::string_view text) {
    const size_t equals = text.find('=');
    Parameter parameter;
    if (equals != std::string_view::npos) parameter.name = Trimmed(text.substr(0, equals));
    parameter.value = Trimmed(equals == std::string_view::npos ? text : text.substr(equals + 1));
    if (parameter.value.starts_with('"')) parameter.value.remove_prefix(1);
    if (parameter.value.ends_with('"')) parameter.value.remove_suffix(1);
    if (!parameter.value.empty()) parameters.push_back(parameter);
}

std::string_view Property::ParameterValue(std::string_view parameterName) const {
    for (const Parameter& parameter : parameters)
        if (EqualsIgnoringCase(parameter.name, parameterName)) return parameter.value;
    return {};
}

bool Property::HasEncoding(std::string_view first, std::string_view second) const {
    for (const Parameter& parameter : parameters)
        if ((parameter.name.empty() || EqualsIgnoringCase(parameter.name, "ENCODING")) &&
            (EqualsIgnoringCase(parameter.value, first) || EqualsIgnoringCase(parameter.value, second)))
            return true;
    return false;
}

bool Property::IsQuotedPrintable() const {
    return HasEncoding("QUOTED-PRINTABLE", "Q");
}
bool Property::IsBase64() const {
    return HasEncoding("BASE64", "B");
}
