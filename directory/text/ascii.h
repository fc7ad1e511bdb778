// Small operations on text in which only ASCII letters have a case: names of properties, parameters and keys.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

constexpr char ToLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

constexpr bool EqualsIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return ToLowerAscii(a) == ToLowerAscii(b); });
}

constexpr bool StartsWithIgnoringCase(std::string_view text, std::string_view start) {
    return text.size() >= start.size() && EqualsIgnoringCase(text.substr(0, start.size()), start);
}

constexpr bool EndsWithIgnoringCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && EqualsIgnoringCase(text.substr(text.size() - end.size()), end);
}

inline bool ContainsIgnoringCase(std::string_view text, std::string_view word) {
    return std::search(text.begin(), text.end(), word.begin(), word.end(),
                       [](char a, char b) { return ToLowerAscii(a) == ToLowerAscii(b); }) != text.end();
}

inline std::string LowerCased(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ToLowerAscii);
    return lower;
}

// Without the blanks and line ends at both ends.
constexpr std::string_view Trimmed(std::string_view text) {
    const auto isSpace = [](char c) { return IsBlank(c) || c == '\r' || c == '\n'; };
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}
