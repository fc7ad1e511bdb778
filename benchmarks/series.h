// Series of measurements, and the lines in which they are shown.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

class Series {
  public:
    void Add(double value) { values_.push_back(value); }
    bool IsEmpty() const { return values_.empty(); }
    double Median() const;
    // The distance of the extremes, in percent of the median.
    double Spread() const;

  private:
    std::vector<double> values_;
};

// Nanoseconds that the work takes, for each of `count` pieces of it.
template <class Work>
double TimePer(double count, Work work) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count() / count;
}

// Prints a table, and the same figures to a file of lines "section, what, size, library, floor" with tabs between them,
// for whoever draws them.
class Report {
  public:
    // The file may be null.
    explicit Report(const char* resultsFile);
    ~Report();
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    void Begin(const std::string& section);
    // The floor may be empty: then the figure stands alone.
    void Add(const std::string& what, double size, const Series& library, const Series& floor = {});

  private:
    std::FILE* results_;
    std::string current_;
};
