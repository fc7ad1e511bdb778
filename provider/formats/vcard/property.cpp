// Takes the head of a content line apart without copying it, unless it is folded before its value begins.
#include "formats/vcard/property.h"

#include "text/ascii.h"

bool IsTypeParameter(const Parameter& parameter) {
    return parameter.name.empty() || EqualsIgnoringCase(parameter.name, "TYPE");
}

bool Property::ParseName(const ContentLine& line) {
    text_ = line.raw;
    isFolded = line.folded;
    if (line.folded && text_.find_first_of("\r\n") < text_.find(':')) {
        unfolded_.clear();
        AppendUnfolded(text_, false, unfolded_);
        text_ = unfolded_;
        isFolded = false;
    }
    size_t start = 0;
    nameEnd_ = 0;
    while (nameEnd_ < text_.size() && text_[nameEnd_] != ':' && text_[nameEnd_] != ';') {
        if (text_[nameEnd_] == '.') start = nameEnd_ + 1;
        ++nameEnd_;
    }
    if (nameEnd_ == text_.size() || (text_[nameEnd_] == ';' && text_.find(':', nameEnd_) == std::string_view::npos))
        return false;
    name = Trimmed(text_.substr(start, nameEnd_ - start));
    group = start == 0 ? std::string_view() : Trimmed(text_.substr(0, start - 1));
    return !name.empty();
}

void Property::ParseRest() {
    // A quote that is never closed would swallow the colon: then quotes mean nothing in this line.
    if (!ParseParameters(true)) ParseParameters(false);
}

bool Property::ParseParameters(bool heedQuotes) {
    parameters.clear();
    bool quoted = false;
    size_t start = nameEnd_ + 1;
    for (size_t i = nameEnd_; i < text_.size(); ++i) {
        const char c = text_[i];
        if (c == '"' && heedQuotes) quoted = !quoted;
        if (quoted || (c != ':' && c != ';')) continue;
        if (i > nameEnd_) AddParameter(text_.substr(start, i - start));
        start = i + 1;
        if (c == ':') {
            head = text_.substr(0, i);
            rawValue = text_.substr(start);
            return true;
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
