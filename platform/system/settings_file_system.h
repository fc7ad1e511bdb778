// The system's part of settings_file.h: settings_file_host.cpp and settings_file_windows.cpp have it.
#pragma once

#include "platform/system/patience.h"
#include "platform/system/settings_file.h"

namespace settings_file {

// Far more than anybody's settings; what has more is another file.
inline constexpr size_t mostBytes = size_t{16} << 20;
// Read at once, into the heap: a caller's stack may be small.
inline constexpr size_t bytesAtOnce = size_t{64} << 10;

// How reading fails.
inline constexpr FileProblem leadsNowhere = {
    "it is a link that leads nowhere, or behind one, or on a drive that is not there",
    "see to its disk or server; a link that nobody wants any more must be removed"};
inline constexpr FileProblem noFile = {"it is not a file", "name a file, or remove what has its name"};
inline constexpr FileProblem notReadable = {"the system refuses it",
                                            "check that you may read it, and that its disk or server is there"};
inline constexpr FileProblem endsEarly = {"it has no end that can be read", "see to its disk or server"};
inline constexpr FileProblem tooLarge = {"it is too large", "name a file of settings"};
inline constexpr FileProblem isInUse = {"another program keeps it open for itself", "close that program"};

// How changing fails.
inline constexpr FileProblem notWritable = {"it is read-only for you", "ask who may write it"};
inline constexpr FileProblem rightsNotKept = {"its owner or its rights would change", "ask its owner to do it"};
inline constexpr FileProblem nothingBeside = {"no file can be made beside it",
                                              "check that you may write to its folder, and that its disk has room"};

// Whether nothing at all has the name, not even a link that leads nowhere. False, too, when that cannot be told.
bool IsNameFree(const std::filesystem::path& path);
// Follows links.
bool IsFolder(const std::filesystem::path& path);

// One attempt. Missing stands for the system's answer that there is no such file; the caller looks whether that is
// sure.
Attempt Read(const std::filesystem::path& path, SettingsFile& file);

// The path of a file that is there; empty when that cannot be told.
std::filesystem::path FollowLinks(const std::filesystem::path& path);

// Makes a file of a name that is free, with the rights of the one that it is to replace, if any, and flushes it to the
// disk. `isMade` tells whether there is a file now; one that did not succeed is the caller's to remove.
FileProblem WriteNewFile(const std::filesystem::path& path, const std::filesystem::path* replaced,
                         std::string_view bytes, bool& isMade);

// One attempt; the new name is on the disk when it succeeds. `replaces`: the file is there and goes; else there must be
// none, and `isTaken` tells that there is one.
Attempt Rename(const std::filesystem::path& from, const std::filesystem::path& to, bool replaces, bool& isTaken);

unsigned long ProcessNumber();

}  // namespace settings_file
