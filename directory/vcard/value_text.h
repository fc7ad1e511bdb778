// From the bytes of a property's value to text: unfolding, quoted-printable and base64, the character set, and the
// escapes of each version.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vcard/property.h"

enum class ValueProblem { None, BrokenText, UnknownCharset, GuessedCharset };

// Appends the value as UTF-8, escapes still in it. Without a label that is known, text that is not UTF-8 is read as
// Windows-1252, in which every byte is a character; what disagrees with its label becomes U+FFFD.
ValueProblem AppendDecodedValue(const Property& property, VCardVersion version, std::string& utf8);

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

// Makes a text that is one line: every run of control characters and blanks becomes one blank.
void MakeSingleLine(std::string& text);
// Line breaks as Windows shows them; other control characters become blanks; nothing blank at the ends.
void MakeWindowsLines(std::string& text);
