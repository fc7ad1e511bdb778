// Small operations on text in which only ASCII letters have a case: names of properties, parameters and keys.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

constexpr char ToLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

constexpr char ToUpperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

// Whether the predicate holds for any character. It looks at all of them, and needs no branches: compilers make vector
// code of that, and nearly all text has none of what is looked for.
template <typename Predicate>
constexpr bool HasAny(std::string_view text, Predicate predicate) {
    unsigned char found = 0;
    for (const char c : text) found = static_cast<unsigned char>(found | static_cast<unsigned char>(predicate(c)));
    return found != 0;
}

constexpr bool IsAscii(std::string_view text) {
    return !HasAny(text, [](char c) { return static_cast<signed char>(c) < 0; });
}

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

constexpr bool EqualsIgnoringCase(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) return false;
    for (size_t i = 0; i < left.size(); ++i)
        if (ToLowerAscii(left[i]) != ToLowerAscii(right[i])) return false;
    return true;
}

constexpr bool StartsWithIgnoringCase(std::string_view text, std::string_view start) {
    return text.size() >= start.size() && EqualsIgnoringCase(text.substr(0, start.size()), start);
}

constexpr bool EndsWithIgnoringCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && EqualsIgnoringCase(text.substr(text.size() - end.size()), end);
}

inline std::string LowerCased(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ToLowerAscii);
    return lower;
}

constexpr bool IsBlankOrLineEnd(char c) {
    return IsBlank(c) || c == '\r' || c == '\n';
}

// Without the blanks and line ends at the beginning, at the end, at both ends.
constexpr std::string_view TrimmedAtStart(std::string_view text) {
    while (!text.empty() && IsBlankOrLineEnd(text.front())) text.remove_prefix(1);
    return text;
}
constexpr std::string_view TrimmedAtEnd(std::string_view text) {
    while (!text.empty() && IsBlankOrLineEnd(text.back())) text.remove_suffix(1);
    return text;
}
constexpr std::string_view Trimmed(std::string_view text) {
    return TrimmedAtEnd(TrimmedAtStart(text));
}
