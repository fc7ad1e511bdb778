// Medians, spreads and their lines.
#include "series.h"

#include <algorithm>

double Series::Median() const {
    std::vector<double> sorted = values_;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
}

double Series::Spread() const {
    const auto [low, high] = std::minmax_element(values_.begin(), values_.end());
    return Median() != 0 ? (*high - *low) / Median() * 100 : 0;
}

Report::Report(const char* resultsFile) : results_(resultsFile != nullptr ? std::fopen(resultsFile, "a") : nullptr) {}

Report::~Report() {
    if (results_ != nullptr) std::fclose(results_);
}

void Report::Begin(const std::string& section) {
    current_ = section;
    std::printf("\n%-44s %9s %17s %17s %6s\n", section.c_str(), "size", "library (spread)", "floor (spread)", "ratio");
}

void Report::Add(const std::string& what, double size, const Series& library, const Series& floor) {
    std::printf("%-44s %9.0f %9.2f (%3.0f %%)", what.c_str(), size, library.Median(), library.Spread());
    if (!floor.IsEmpty())
        std::printf(" %9.2f (%3.0f %%) %6.2f", floor.Median(), floor.Spread(), library.Median() / floor.Median());
    std::printf("\n");
    if (results_ == nullptr) return;
    std::fprintf(results_, "%s\t%s\t%.0f\t%.3f\t", current_.c_str(), what.c_str(), size, library.Median());
    if (!floor.IsEmpty()) std::fprintf(results_, "%.3f", floor.Median());
    std::fprintf(results_, "\n");
}
