// What a user should know about the files that were read: one line per event, `file:line: what; what to do`.
//
// The lines go to standard error; FAXBOOK_DIAGNOSTICS=off keeps them quiet, any other value is a file that they are
// appended to. They are UTF-8. One object says the same line once only, however often a file is asked for.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_set>

// Takes the events instead, where a program asked for them.
class DiagnosticsSink {
  public:
    virtual void Take(const std::filesystem::path& file, size_t line, std::string_view what,
                      std::string_view advice) = 0;

  protected:
    ~DiagnosticsSink() = default;
};

class Diagnostics {
  public:
    explicit Diagnostics(DiagnosticsSink* sink = nullptr) : sink_(sink) {}

    // Line 0 stands for the file or folder as a whole.
    void Report(const std::filesystem::path& file, size_t line, std::string_view what, std::string_view advice = {});

  private:
    DiagnosticsSink* sink_;
    std::unordered_set<std::string> said_;
};
