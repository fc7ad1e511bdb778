// What QDXL7RA.DLL, the provider beside this program, says beside what the library delivers: qdxl7ra.h as a C++ program
// uses it. A provider of another maker has none of it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "qdxl7ra.h"

struct ProfileService {
    std::string name;
    std::string location;  // UTF-8; empty: the service's own usual place
    std::uint32_t flags = 0;
};

struct Profile {
    std::string name;  // UTF-8
    bool isForDisplay = false;
    std::vector<ProfileService> services;
};

struct ProfileListing {
    std::string file;
    std::vector<Profile> profiles;
};

// "path:line", and "path:line: what; advice".
std::string PlaceText(const VOKReportHead& head);
std::string MessageLine(const VOKMessageReport& message);

// Takes messages of the provider.
using TakeMessage = std::function<void(const VOKMessageReport&)>;

// Throws ClientError when they cannot be listed. Messages go where the provider's diagnostics go, if nobody takes them.
ProfileListing ListProfiles(const TakeMessage& takeMessage = {});

// Hears a diagnosis. What a function throws ends the diagnosis and is thrown by Diagnose.
class DiagnosisListener {
  public:
    virtual ~DiagnosisListener() = default;
    // Whether the book's files are to be read.
    virtual bool HearBook(const VOKBookReport&) { return true; }
    // Whether the file's cards are to be told.
    virtual bool HearFile(const VOKFileReport&) { return true; }
    virtual void HearCard(const VOKCardReport&) {}
    virtual void HearMessage(const VOKMessageReport&) {}
};

// Of the address books of a profile, the default one for an empty name, or of what is at a location, if that is not
// empty. Throws ClientError when there is no answer.
void Diagnose(const std::string& profile, const std::string& location, DiagnosisListener& listener);
