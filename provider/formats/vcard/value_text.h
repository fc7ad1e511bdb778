// From the bytes of a property's value to text: unfolding, quoted-printable and base64, and the escapes of each
// version.
#pragma once

#include <string>
#include <string_view>

#include "formats/vcard/property.h"

// The bytes of a value, without folds and transfer encoding. They lie in the line or, where they had to be changed, in
// `buffer`.
std::string_view DecodeValue(const Property& property, VCardVersion version, std::string& buffer);

// Calls the function with each component of a structured value, as it stands.
template <typename Function>
void ForEachComponent(std::string_view value, char separator, Function&& function) {
    size_t start = 0;
    for (size_t i = 0; i <= value.size(); ++i) {
        if (i < value.size() && value[i] == '\\') {
            ++i;
        } else if (i >= value.size() || value[i] == separator) {
            function(value.substr(start, i - start));
            start = i + 1;
        }
    }
}

// Appends a component without its escapes. A line break is "\n" in the result.
void AppendUnescaped(std::string_view value, VCardVersion version, std::string& text);
