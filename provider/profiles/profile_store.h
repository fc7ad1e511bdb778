// The user's profiles and their services, kept in one text file that people can read and edit:
//
//     display = Office
//
//     [profile Office]
//     service = VCARD
//     location = /home/eva/customers
//     flags = 0x00110000
//
// A profile's services stand in their order; `location` and `flags` belong to the service above them. The text is
// UTF-8. A change keeps every other line, comments included.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics.h"
#include "platform/system/settings_file.h"
#include "profiles/profile_error.h"

struct ProfileService {
    std::string name;
    std::filesystem::path location;  // empty: the contacts folder
    std::uint32_t flags = 0;
};

struct Profile {
    std::string name;  // UTF-8, as every text here
    std::vector<ProfileService> services;
};

// Each operation reads the file anew and, if it changes something, replaces it as a whole, while no other process that
// uses a store can; who changes it without a store meanwhile loses nothing, either. They throw ProfileError:
// UnreadableLines, NoAccess, and what is said below. Then the file is as it was, and why is in the diagnostics.
class ProfileStore {
  public:
    // Messages go to the receiver, if it has a function.
    explicit ProfileStore(std::filesystem::path file, const VOKMessageReceiver& messages = {})
        : file_(std::move(file)), messages_(messages) {}
    const std::filesystem::path& File() const { return file_; }

    struct Listing {
        std::vector<Profile> profiles;
        std::string
            display;  // the profile that the user chose for displaying the address book; empty when none is chosen
    };
    // In one reading of the file.
    Listing ListAll() const;
    std::vector<Profile> List() const { return ListAll().profiles; }
    std::optional<Profile> Find(std::string_view name) const;
    std::string DisplayProfile() const { return ListAll().display; }

    // A profile with its services is one change. NameTaken, BadName; these two of Copy, too.
    void Create(const Profile& profile);
    // Does all of Create but for the change itself, so that it throws what Create would.
    void RehearseCreating(const Profile& profile);
    // This and the next ones: NotFound for an unknown profile.
    void Copy(std::string_view from, std::string_view to);
    void Remove(std::string_view name);
    // BadLocation; so of Create and SetLocation.
    void AddService(std::string_view profile, const ProfileService& service);
    void SetDisplayProfile(std::string_view name);
    // `service` counts the profile's services from 0; NotFound for an unknown one, too.
    void SetLocation(std::string_view profile, size_t service, const std::filesystem::path& location);

  private:
    struct Section;
    struct Contents;
    [[noreturn]] void RefuseLine(size_t line, std::string_view what) const;
    enum class Purpose { Change, Rehearsal };
    // `failure` is what a user is told that cannot be done, if it cannot.
    SettingsFile ReadFile(const std::filesystem::path& path, std::string_view failure) const;
    Contents ReadContents(const SettingsFile& file) const;
    Contents Read() const;
    // Reads, has the function change what was read, and writes that. The function is called again when somebody has
    // changed the file meanwhile.
    template <typename Function>
    void Change(Function&& change, Purpose purpose = Purpose::Change);
    [[noreturn]] void Refuse(std::string_view failure, const FileProblem& problem) const;

    std::filesystem::path file_;
    VOKMessageReceiver messages_;
};
