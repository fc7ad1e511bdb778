// The distance of two names is the number of letters to insert, remove or change.
#include "client/name_lists.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <utility>

#include "text/characters.h"

namespace {

constexpr size_t listedNames = 12;

size_t EditDistance(std::u32string_view from, std::u32string_view to) {
    std::vector<size_t> distances(to.size() + 1);
    std::iota(distances.begin(), distances.end(), size_t{0});
    for (size_t i = 0; i < from.size(); ++i) {
        size_t diagonal = std::exchange(distances[0], i + 1);
        for (size_t j = 0; j < to.size(); ++j) {
            const size_t changed = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = distances[j + 1];
            distances[j + 1] = std::min({changed, diagonal + 1, distances[j] + 1});
        }
    }
    return distances.back();
}

}  // namespace

std::vector<std::string> NearNames(std::string_view wanted, const std::vector<std::string>& names) {
    const std::u32string folded = FoldCase(wanted);
    const size_t farthest = folded.size() / 3 + 1;
    std::set<std::pair<size_t, std::string>> nearNames;
    for (const std::string& name : names) {
        const std::u32string other = FoldCase(name);
        const bool contains = !folded.empty() && other.find(folded) != std::u32string::npos;
        const size_t lengthDifference = std::max(folded.size(), other.size()) - std::min(folded.size(), other.size());
        const size_t distance = contains                      ? 0
                                : lengthDifference > farthest ? lengthDifference
                                                              : EditDistance(folded, other);
        if (distance <= farthest) nearNames.emplace(distance, name);
    }
    std::vector<std::string> result;
    result.reserve(nearNames.size());
    for (const auto& [distance, name] : nearNames) result.push_back(name);
    return result;
}

std::string JoinNames(const std::vector<std::string>& names) {
    std::string text;
    for (size_t i = 0; i < std::min(names.size(), listedNames); ++i) {
        if (i > 0) text += ", ";
        text += names[i];
    }
    if (names.size() > listedNames) text += " and " + std::to_string(names.size() - listedNames) + " more";
    return text;
}
