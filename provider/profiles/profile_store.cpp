// The file as sections of raw lines: services are read out of them, and changes touch only the lines they are about.
#include "profiles/profile_store.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>

#include "platform/system/file_lock.h"
#include "platform/system/files.h"
#include "profiles/profile_name.h"
#include "text/ascii.h"
#include "text/code_pages.h"
#include "text/ini_lines.h"

namespace {

constexpr std::string_view sectionStart = "profile ";
constexpr std::string_view cannotRead = "profiles cannot be read", cannotWrite = "profiles cannot be written";
constexpr std::string_view newFileHead = "# Profiles of the fax address books. Text is UTF-8.\n\n";

std::optional<std::uint32_t> ReadFlags(std::string_view text) {
    const bool isHex = StartsWithIgnoringCase(text, "0x");
    if (isHex) text.remove_prefix(2);
    std::uint32_t flags = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), flags, isHex ? 16 : 10);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return flags;
}

std::string WriteFlags(std::uint32_t flags) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4) text.push_back(digits[flags >> shift & 15]);
    return text;
}

std::string HeaderOf(std::string_view name) {
    return "[" + std::string(sectionStart) + std::string(name) + "]\n";
}

std::string LocationLine(const std::filesystem::path& location) {
    const std::string text = Utf8Of(location);
    if (Trimmed(text) != text || text.find('\n') != text.npos) throw ProfileError(ProfileError::Reason::BadLocation);
    return "location = " + text + "\n";
}

std::string LinesOf(const ProfileService& service) {
    return "service = " + service.name + "\n" + (service.location.empty() ? "" : LocationLine(service.location)) +
           "flags = " + WriteFlags(service.flags) + "\n";
}

}  // namespace

// The lines of one profile behind its header, comments included.
struct ProfileStore::Section {
    Profile profile;
    std::string header;
    std::string lines;
};

struct ProfileStore::Contents {
    std::string head;  // the lines before the first profile, up to the display setting
    std::string display;
    std::string behindDisplay;
    std::vector<Section> sections;

    std::vector<Section>::iterator Find(std::string_view name) {
        return std::find_if(sections.begin(), sections.end(),
                            [&](const Section& section) { return section.profile.name == name; });
    }
    Section& Get(std::string_view name) {
        const auto found = Find(name);
        if (found == sections.end()) throw ProfileError(ProfileError::Reason::NotFound);
        return *found;
    }
    std::string Text() const {
        std::string text = head;
        if (!text.empty() && !text.ends_with('\n')) text.push_back('\n');
        if (!display.empty()) text.append("display = ").append(display).append("\n");
        text.append(behindDisplay.empty() && !display.empty() ? "\n" : behindDisplay);
        for (const Section& section : sections) {
            text.append(section.header);
            if (!section.header.ends_with('\n')) text.push_back('\n');
            text.append(section.lines);
        }
        return text;
    }
    Section& Add(const Profile& profile) {
        if (!FaultOfNewName(profile.name).empty()) throw ProfileError(ProfileError::Reason::BadName);
        if (Find(profile.name) != sections.end()) throw ProfileError(ProfileError::Reason::NameTaken);
        // An empty line between two profiles.
        if (!sections.empty() && !sections.back().lines.ends_with("\n\n")) {
            std::string& lines = sections.back().lines;
            lines.append(lines.empty() || lines.ends_with('\n') ? "\n" : "\n\n");
        }
        sections.push_back({profile, HeaderOf(profile.name), {}});
        for (const ProfileService& service : profile.services) sections.back().lines.append(LinesOf(service));
        return sections.back();
    }
};

void ProfileStore::RefuseLine(size_t line, std::string_view what) const {
    Diagnostics(messages_).Report(file_, line, what, "correct the line; the file was left as it is");
    throw ProfileError(ProfileError::Reason::UnreadableLines);
}

void ProfileStore::Refuse(std::string_view failure, const FileProblem& problem) const {
    Diagnostics(messages_).Report(file_, 0, std::string(failure).append(": ").append(problem.what), problem.advice);
    throw ProfileError(ProfileError::Reason::NoAccess);
}

SettingsFile ProfileStore::ReadFile(const std::filesystem::path& path, std::string_view failure) const {
    if (path.empty()) {
        Diagnostics(messages_).Report("profiles.ini", 0, "no place for profiles is known",
                                      "set FAXBOOK_PROFILES to a file");
        throw ProfileError(ProfileError::Reason::NoAccess);
    }
    SettingsFile file = ReadSettingsFile(path);
    if (file.state == SettingsFile::State::Unreadable) Refuse(failure, file.problem);
    return file;
}

ProfileStore::Contents ProfileStore::ReadContents(const SettingsFile& file) const {
    Contents contents;
    if (file.state == SettingsFile::State::Missing) {
        contents.head = newFileHead;
        return contents;
    }
    std::unordered_set<std::string_view> names;
    if (!IsUtf8(file.bytes)) RefuseLine(0, "text is not UTF-8");
    for (const IniLine& line : ReadIniLines(WithoutUtf8Mark(file.bytes))) {
        if (line.kind == IniLine::Kind::Unreadable) RefuseLine(line.number, "neither a setting nor a section");
        if (line.kind == IniLine::Kind::Section) {
            if (!StartsWithIgnoringCase(line.name, sectionStart))
                RefuseLine(line.number, "unknown section; [profile NAME] is known");
            const std::string_view name = Trimmed(line.name.substr(sectionStart.size()));
            if (name.empty() || !names.insert(name).second)
                RefuseLine(line.number, "profile without a name or with the name of another");
            contents.sections.push_back({{std::string(name), {}}, std::string(line.raw), {}});
            continue;
        }
        if (contents.sections.empty()) {
            if (line.kind == IniLine::Kind::Blank)
                (contents.display.empty() ? contents.head : contents.behindDisplay).append(line.raw);
            else if (EqualsIgnoringCase(line.name, "display"))
                contents.display = line.value;
            else
                RefuseLine(line.number, "unknown setting; before the first profile only display is known");
            continue;
        }
        Section& section = contents.sections.back();
        section.lines.append(line.raw);
        if (line.kind == IniLine::Kind::Blank) continue;
        std::vector<ProfileService>& services = section.profile.services;
        const std::optional<std::uint32_t> flags = ReadFlags(line.value);
        if (EqualsIgnoringCase(line.name, "service"))
            services.push_back({std::string(line.value), {}, 0});
        else if (services.empty())
            RefuseLine(line.number, "setting before the first service of its profile");
        else if (EqualsIgnoringCase(line.name, "location"))
            services.back().location = PathOfUtf8(line.value);
        else if (EqualsIgnoringCase(line.name, "flags") && flags)
            services.back().flags = *flags;
        else
            RefuseLine(line.number, "unknown setting; known are: service, location, flags (a number)");
    }
    return contents;
}

ProfileStore::Contents ProfileStore::Read() const {
    FileLock::GiveWay(file_);
    return ReadContents(ReadFile(file_, cannotRead));
}

ProfileStore::Listing ProfileStore::ListAll() const {
    Contents contents = Read();
    Listing listing = {{}, std::move(contents.display)};
    listing.profiles.reserve(contents.sections.size());
    for (Section& section : contents.sections) listing.profiles.push_back(std::move(section.profile));
    return listing;
}

std::optional<Profile> ProfileStore::Find(std::string_view name) const {
    Contents contents = Read();
    const auto found = contents.Find(name);
    if (found == contents.sections.end()) return std::nullopt;
    return std::move(found->profile);
}

template <typename Function>
void ProfileStore::Change(Function&& change, Purpose purpose) {
    // Before anything is made, for where it cannot be told whether there is a file, nothing is.
    const SettingsFile first = ReadFile(file_, cannotWrite);
    const std::filesystem::path place = PlaceOfSettingsFile(file_, first);
    if (place.empty()) Refuse(cannotWrite, wentAway);
    std::error_code ignored;  // whoever cannot make the folder cannot write the file
    std::filesystem::create_directories(place.parent_path(), ignored);
    const FileLock lock(place);
    if (lock.GetState() == FileLock::State::Held) RemoveAbandonedFiles(place);
    // Programs that use a store wait for the lock: who comes between is an editor, and once is enough for one.
    constexpr int mostRounds = 20;
    for (int round = 0; round < mostRounds && lock.GetState() != FileLock::State::Busy; ++round) {
        const SettingsFile file = ReadFile(place, cannotWrite);
        if (first.state == SettingsFile::State::Read && file.state == SettingsFile::State::Missing)
            Refuse(cannotWrite, wentAway);
        Contents contents = ReadContents(file);
        change(contents);
        SettingsFileReplacement replacement(place, file, contents.Text());
        if (!replacement.Problem().what.empty()) Refuse(cannotWrite, replacement.Problem());
        if (purpose == Purpose::Rehearsal) return;
        const auto outcome = replacement.PutInPlace();
        if (outcome == SettingsFileReplacement::Outcome::Done) return;
        if (outcome == SettingsFileReplacement::Outcome::Failed) Refuse(cannotWrite, replacement.Problem());
    }
    Diagnostics(messages_).Report(file_, 0, "profiles are being changed by another program",
                                  "wait until it has done so, or end it");
    throw ProfileError(ProfileError::Reason::NoAccess);
}

void ProfileStore::Create(const Profile& profile) {
    Change([&](Contents& contents) { contents.Add(profile); });
}

void ProfileStore::RehearseCreating(const Profile& profile) {
    Change([&](Contents& contents) { contents.Add(profile); }, Purpose::Rehearsal);
}

void ProfileStore::Copy(std::string_view from, std::string_view to) {
    Change([&](Contents& contents) {
        const std::string lines = contents.Get(from).lines;
        contents.Add({std::string(to), {}}).lines = lines;
    });
}

void ProfileStore::Remove(std::string_view name) {
    Change([&](Contents& contents) {
        contents.Get(name);
        contents.sections.erase(contents.Find(name));
        if (contents.display == name) contents.display.clear();
    });
}

void ProfileStore::AddService(std::string_view profile, const ProfileService& service) {
    Change([&](Contents& contents) {
        std::string& lines = contents.Get(profile).lines;
        // Before the empty lines that set the profile off from the next one.
        const std::string_view used = Trimmed(lines);
        const size_t end = used.empty() ? 0 : static_cast<size_t>(used.data() + used.size() - lines.data());
        std::string added = (end == 0 ? "" : "\n") + LinesOf(service);
        if (lines.find('\n', end) != lines.npos) added.pop_back();
        lines.insert(end, added);
    });
}

void ProfileStore::SetDisplayProfile(std::string_view name) {
    Change([&](Contents& contents) {
        contents.Get(name);
        contents.display = name;
    });
}

// The new location stands right below the service; every other line stays.
void ProfileStore::SetLocation(std::string_view profile, size_t service, const std::filesystem::path& location) {
    Change([&](Contents& contents) {
        Section& section = contents.Get(profile);
        if (service >= section.profile.services.size()) throw ProfileError(ProfileError::Reason::NotFound);
        std::string lines;
        size_t servicesSeen = 0;
        for (const IniLine& line : ReadIniLines(section.lines)) {
            const bool isService = EqualsIgnoringCase(line.name, "service");
            if (isService) ++servicesSeen;
            const bool isOfService = servicesSeen == service + 1;
            if (isOfService && EqualsIgnoringCase(line.name, "location")) continue;
            lines.append(line.raw);
            if (!isOfService || !isService) continue;
            if (!lines.ends_with('\n')) lines.push_back('\n');
            lines.append(LocationLine(location));
        }
        section.lines = std::move(lines);
    });
}
