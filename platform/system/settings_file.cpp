// What is the same on both systems: when a file counts as missing, the names of new files, and looking once more before
// one takes the old one's place.
#include "platform/system/settings_file.h"

#include <algorithm>
#include <vector>

#include "platform/system/settings_file_system.h"

namespace fs = std::filesystem;
using namespace settings_file;

namespace {

constexpr char newFileEnd[] = ".new";

// profiles.ini.4711-0.new: the process, and a number of its own.
fs::path NewFileName(const fs::path& path, int number) {
    fs::path name = path;
    name += "." + std::to_string(ProcessNumber()) + "-" + std::to_string(number) + newFileEnd;
    return name;
}

bool IsNumber(const fs::path::string_type& text) {
    return !text.empty() && std::ranges::all_of(text, [](auto c) { return c >= '0' && c <= '9'; });
}

// Whether the name is one that another process gave to a new file. This one knows of no crash of its own.
bool IsNewFileOfAnother(const fs::path& name, const fs::path& path) {
    if (name.extension() != newFileEnd || name.stem().stem() != path.filename()) return false;
    const fs::path::string_type numbers = name.stem().extension().native();
    const size_t line = numbers.find('-');
    if (line == numbers.npos) return false;
    const fs::path::string_type process = numbers.substr(1, line - 1), number = numbers.substr(line + 1);
    return IsNumber(process) && IsNumber(number) && process != fs::path(std::to_string(ProcessNumber())).native();
}

// Behind a link whose end is away, on a drive that is not there and below a file nothing can be told of a name.
bool IsCertainlyMissing(const fs::path& path) {
    for (fs::path name = path; IsNameFree(name);) {
        const fs::path folder = name.parent_path();
        if (folder.empty() || IsFolder(folder)) return true;
        if (folder == name) return false;
        name = folder;
    }
    return false;
}

Attempt Look(const fs::path& path, SettingsFile& file) {
    const Attempt answer = Read(path, file);
    if (file.state == SettingsFile::State::Missing && !IsCertainlyMissing(path)) {
        file.state = SettingsFile::State::Unreadable;
        file.problem = leadsNowhere;
    }
    return answer;
}

}  // namespace

SettingsFile ReadSettingsFile(const fs::path& path) {
    SettingsFile file;
    file.problem = noFile;
    if (path.has_filename()) TryPatiently([&] { return Look(path, file); });
    return file;
}

fs::path PlaceOfSettingsFile(const fs::path& path, const SettingsFile& file) {
    if (file.state == SettingsFile::State::Read) return FollowLinks(path);
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    return error ? fs::path() : absolute;
}

void RemoveAbandonedFiles(const fs::path& path) {
    std::error_code error;
    std::vector<fs::path> abandoned;
    for (fs::directory_iterator entry(path.parent_path(), error), end; !error && entry != end; entry.increment(error))
        if (IsNewFileOfAnother(entry->path().filename(), path) && fs::is_regular_file(entry->symlink_status(error)))
            abandoned.push_back(entry->path());
    // One that cannot be removed is in nobody's way.
    for (const fs::path& file : abandoned) fs::remove(file, error);
}

SettingsFileReplacement::SettingsFileReplacement(fs::path place, SettingsFile old, std::string_view bytes)
    : place_(std::move(place)), old_(std::move(old)) {
    if (bytes.size() > mostBytes) {
        problem_ = tooLarge;
        return;
    }
    constexpr int mostNumbers = 10'000;
    fs::path name = NewFileName(place_, 0);
    for (int number = 1; number < mostNumbers && !IsNameFree(name); ++number) name = NewFileName(place_, number);
    bool isMade = false;
    problem_ = WriteNewFile(name, old_.state == SettingsFile::State::Read ? &place_ : nullptr, bytes, isMade);
    if (isMade) temporary_ = name;
}

SettingsFileReplacement::~SettingsFileReplacement() {
    std::error_code error;
    if (!temporary_.empty()) fs::remove(temporary_, error);
}

// Whoever changes files without asking for their lock, such as a text editor, can do so up to the last moment.
SettingsFileReplacement::Outcome SettingsFileReplacement::PutInPlace() {
    const bool replaces = old_.state == SettingsFile::State::Read;
    bool isTaken = false;
    const Attempt answer = TryPatiently([&] {
        SettingsFile now;
        const Attempt looked = Look(place_, now);
        problem_ = now.problem;
        if (looked == Attempt::InTheWay || now.state == SettingsFile::State::Unreadable) return looked;
        isTaken = now.state == SettingsFile::State::Read && !(replaces && now.bytes == old_.bytes);
        if (replaces && now.state == SettingsFile::State::Missing) problem_ = wentAway;
        if (isTaken || !problem_.what.empty()) return Attempt::Failed;
        const Attempt renamed = Rename(temporary_, place_, replaces, isTaken);
        if (renamed == Attempt::InTheWay) problem_ = isInUse;
        if (renamed == Attempt::Failed) problem_ = {"the system refuses it", "check that you may write to its folder"};
        return renamed;
    });
    if (answer == Attempt::Succeeded) {
        temporary_.clear();
        return Outcome::Done;
    }
    return isTaken ? Outcome::Changed : Outcome::Failed;
}
