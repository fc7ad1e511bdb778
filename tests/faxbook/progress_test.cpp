// The line that comes and goes while something is read.
#include "terminal/progress.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "terminal/console.h"

namespace {

// What a terminal was told, and waiting for it to be told more.
class DrawnLines {
  public:
    Progress::Draw Draw() {
        return [this](std::string_view line) {
            const std::lock_guard lock(mutex_);
            lines_.emplace_back(line);
            more_.notify_all();
        };
    }
    std::string WaitForLineWith(const std::string& part) {
        std::unique_lock lock(mutex_);
        more_.wait_for(lock, std::chrono::minutes(5),
                       [&] { return !lines_.empty() && lines_.back().find(part) != std::string::npos; });
        return lines_.empty() ? "" : lines_.back();
    }
    std::vector<std::string> All() const { return lines_; }

  private:
    std::mutex mutex_;
    std::condition_variable more_;
    std::vector<std::string> lines_;
};

// However many seconds it took to get there.
testing::AssertionResult IsLine(const std::string& line) {
    if (std::regex_match(line, std::regex("reading Company: 12, [0-9]+ s"))) return testing::AssertionSuccess();
    return testing::AssertionFailure() << line;
}

}  // namespace

TEST(ProgressTest, ALineIsDrawnWhileReadingGoesOnAndWipedAtTheEnd) {
    DrawnLines drawn;
    {
        Progress progress(drawn.Draw(), std::chrono::milliseconds(1));
        progress.Say("reading Company");
        for (int i = 0; i < 12; ++i) progress.CountOne();
        EXPECT_TRUE(IsLine(drawn.WaitForLineWith("12, ")));
        progress.Wipe();
        EXPECT_TRUE(IsLine(drawn.WaitForLineWith("reading"))) << "it comes back";
    }
    EXPECT_EQ(drawn.All().back(), "");
}

TEST(ProgressTest, WhatIsOverSoonIsNotTold) {
    DrawnLines drawn;
    { Progress progress(drawn.Draw(), std::chrono::hours(1)); }
    EXPECT_TRUE(drawn.All().empty());
}

// Names come from files: a terminal must not obey them.
TEST(ConsoleTest, NoControlCharacterReachesTheTerminalInANote) {
    std::ostringstream out;
    std::ostringstream notes;
    Console console(out, notes);
    console.Note("no \"A\x1B[2J\nB\xC2\x9B\"");
    EXPECT_EQ(notes.str(), "faxbook: no \"A [2J B \"\n");
}
