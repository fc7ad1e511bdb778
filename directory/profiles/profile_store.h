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

struct ProfileService {
    std::string name;
    std::filesystem::path location;  // empty: the contacts folder
    std::uint32_t flags = 0;
};

struct Profile {
    std::string name;  // UTF-8, as every text here
    std::vector<ProfileService> services;
};

// Each operation reads the file anew and, if it changes something, writes it as a whole, while no other process that
// uses a store can. They throw Failure: MAPI_E_CORRUPT_DATA for a file that cannot be understood, which is then left
// alone, MAPI_E_NO_ACCESS for one that cannot be read or written, and what is said below.
class ProfileStore {
  public:
    explicit ProfileStore(std::filesystem::path file) : file_(std::move(file)) {}
    const std::filesystem::path& File() const { return file_; }

    std::vector<Profile> List() const;
    std::optional<Profile> Find(std::string_view name) const;
    // The profile that the user chose for displaying the address book; empty when none is chosen.
    std::string DisplayProfile() const;

    // MAPI_E_COLLISION when there is one of that name, MAPI_E_INVALID_PARAMETER for a name that the file cannot hold.
    void Create(std::string_view name);
    // MAPI_E_COLLISION and MAPI_E_NOT_FOUND.
    void Copy(std::string_view from, std::string_view to);
    // These three: MAPI_E_NOT_FOUND for an unknown profile.
    void Remove(std::string_view name);
    void AddService(std::string_view profile, const ProfileService& service);
    void SetDisplayProfile(std::string_view name);
    // `service` counts the profile's services from 0; MAPI_E_NOT_FOUND for an unknown one, too.
    void SetLocation(std::string_view profile, size_t service, const std::filesystem::path& location);

  private:
    struct Section;
    struct Contents;
    Contents Read() const;
    void Write(const Contents& contents);
    // Reads, has the function change what was read, and writes that.
    template <typename Function>
    void Change(Function&& change);

    std::filesystem::path file_;
};
