// A small file of settings that several programs and people change: it is read whole, and changed by putting a new file
// into its place, so that everybody sees the old state or the new one, also after a crash.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/system/interrupt_hold.h"

// Why a file is left alone, and what to do about it.
struct FileProblem {
    std::string_view what;  // empty: there is none
    std::string_view advice;
};

// Of a file that was read and is missing now: its share or disk may be away, so that nothing is to be made in its
// place.
inline constexpr FileProblem wentAway = {"it went away while it was being changed",
                                         "see to its disk or server, and try again"};

struct SettingsFile {
    enum class State {
        Read,
        Missing,     // nothing has that name, not even a link, and the nearest folder above it is there
        Unreadable,  // everything else: whether there is such a file, or what is in it, cannot be told
    };
    State state = State::Unreadable;
    std::string bytes;    // of a file that was read
    FileProblem problem;  // of one that was not
};

// Follows links, opens nothing but a file, and shares it with everybody. Who has it for himself is waited for.
SettingsFile ReadSettingsFile(const std::filesystem::path& path);

// Where the file, which was read or is missing, is or will be: an absolute path without links. Empty when that cannot
// be told any more.
std::filesystem::path PlaceOfSettingsFile(const std::filesystem::path& path, const SettingsFile& file);

// Removes the new files that other processes left beside the file when they crashed. Only for who has the file's
// FileLock: else they may be those of a writer who is at work.
void RemoveAbandonedFiles(const std::filesystem::path& path);

// The next state of a file, flushed to the disk beside it until it is put in place.
//
// A file that is there keeps its owner, group, mode and lists of access; on Windows its attributes and list of access,
// while its owner is who changed it. Where that cannot be, or the user may not write the file, there is a problem and
// the file stays as it is. Other hard links to it keep the old state, as backups made of such links need it.
class SettingsFileReplacement {
  public:
    // `place` is the file's own, and `old` what the change was made of, read or missing; the folder must be there.
    SettingsFileReplacement(std::filesystem::path place, SettingsFile old, std::string_view bytes);
    // Removes what was not put in place.
    ~SettingsFileReplacement();
    SettingsFileReplacement(const SettingsFileReplacement&) = delete;
    SettingsFileReplacement& operator=(const SettingsFileReplacement&) = delete;

    // Why it cannot be put in place.
    const FileProblem& Problem() const { return problem_; }

    enum class Outcome {
        Done,
        Changed,  // somebody has changed the file since it was read: the change is to be made of the new state
        Failed,   // see Problem
    };
    // Once only, and only without a problem. Where the system wants nobody to have the file open, it is waited for
    // that.
    Outcome PutInPlace();

  private:
    const std::filesystem::path place_;
    const SettingsFile old_;
    std::filesystem::path temporary_;  // empty when there is none
    FileProblem problem_;
    InterruptHold hold_;
};
