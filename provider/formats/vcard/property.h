// One property of a card: `group.NAME;PARAMETER=value:value`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/vcard/line_reader.h"

enum class VCardVersion { V21, V30, V40 };

// A parameter of vCard 2.1 may be a bare value: its name is empty then. Quotes are not part of a value.
struct Parameter {
    std::string_view name;
    std::string_view value;
};

// Used again and again for one property after another, so that its vectors and strings are allocated once. The views
// point into the line's text or into this object, until the next call.
class Property {
  public:
    // Takes the name off a line: enough for most properties, which nobody asks for. False when it is no property.
    bool ParseName(const ContentLine& line);
    // Takes the rest of the same line apart. The value keeps its folds.
    void ParseRest();

    std::string_view group;
    std::string_view name;
    std::string_view head;  // everything before the value, without the colon
    std::vector<Parameter> parameters;
    std::string_view rawValue;
    bool isFolded = false;  // the value holds line ends

    // The values of TYPE parameters and the bare ones, one by one, also from lists.
    template <typename Function>
    void ForEachType(Function&& function) const;
    // The first value of a parameter; empty when there is none.
    std::string_view ParameterValue(std::string_view parameterName) const;
    bool IsQuotedPrintable() const { return HasEncoding("QUOTED-PRINTABLE", "Q"); }
    bool IsBase64() const { return HasEncoding("BASE64", "B"); }

  private:
    bool ParseParameters(bool heedQuotes);
    void AddParameter(std::string_view text);
    bool HasEncoding(std::string_view first, std::string_view second) const;

    std::string_view text_;
    size_t nameEnd_ = 0;
    std::string unfolded_;
};

bool IsTypeParameter(const Parameter& parameter);

template <typename Function>
void Property::ForEachType(Function&& function) const {
    for (const Parameter& parameter : parameters) {
        if (!IsTypeParameter(parameter)) continue;
        std::string_view rest = parameter.value;
        for (;;) {
            const size_t comma = rest.find(',');
            function(rest.substr(0, comma));
            if (comma == std::string_view::npos) break;
            rest.remove_prefix(comma + 1);
        }
    }
}
