// Distinguished names, by which directories name their entries (RFC 4514, and what older programs write): taken apart,
// and in the one form in which they are compared.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// One attribute of a name: "cn" and "Lee, Ann". The type is in small letters and the same for all its spellings; the
// value is without escapes, and any bytes.
struct NameAttribute {
    std::string type;
    std::string value;
};
// What stands between two commas; several attributes where they are joined by "+".
using RelativeName = std::vector<NameAttribute>;

// Nothing for a text that is no name. The empty name has no parts. A comma, semicolon or plus sign that no attribute
// follows belongs to the value before it: mail programs write names without escapes.
std::optional<std::vector<RelativeName>> ParseName(std::string_view name);

// The same for all spellings of a name, in small letters. It is ASCII, other bytes being escapes, so that no code page
// makes two names one.
std::string NormalisedName(const std::vector<RelativeName>& name);
