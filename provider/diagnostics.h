// What a user should know about the files that were read: one line per event, `file:line: what; what to do`.
//
// The lines, in UTF-8, go where diagnostics_output.h says. One object says the same line once only, however often a
// file is asked for, and of one kind and file a hundred at most before it says how many more there are.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "qdxl7ra.h"
#include "text/told_text.h"

class MessagePass;

class Diagnostics {
  public:
    // Where a program asked for the messages of a call, its receiver gets them instead.
    explicit Diagnostics(const VOKMessageReceiver& receiver = {}) : receiver_(receiver) {}

    // Line 0 stands for the file or folder as a whole.
    void Report(const std::filesystem::path& file, const Message& message);
    void Report(const std::filesystem::path& file, size_t line, std::string_view what, std::string_view advice = {},
                MessageNames names = {}) {
        Report(file, Message{line, what, advice, names, false});
    }

  private:
    friend class MessagePass;
    void Say(const std::filesystem::path& file, const Message& message, const ToldMessage& told);

    VOKMessageReceiver receiver_;
    std::unordered_set<std::string> said_;
    MessagePass* pass_ = nullptr;  // the innermost that is under way
};

// Messages are counted from the beginning of a pass over one or more files, such as reading one or looking for the
// members of a group, to its end. A pass may be part of another one; each message counts in the innermost.
class MessagePass {
  public:
    explicit MessagePass(Diagnostics& diagnostics) : diagnostics_(diagnostics), outer_(diagnostics.pass_) {
        diagnostics.pass_ = this;
    }
    ~MessagePass() { diagnostics_.pass_ = outer_; }
    MessagePass(const MessagePass&) = delete;
    MessagePass& operator=(const MessagePass&) = delete;

    // Says how many more there were of each kind. A pass that fails is not finished, and whoever failed says so.
    void Finish();

  private:
    friend class Diagnostics;
    struct Kind {
        std::filesystem::path file;
        std::string advice;
        size_t count = 0;
    };

    // Whether the message is one of the first of its kind.
    bool Count(const std::filesystem::path& file, const Message& message);

    Diagnostics& diagnostics_;
    MessagePass* outer_;
    std::map<std::pair<std::string, std::string>, Kind> kinds_;  // by file and words
};
