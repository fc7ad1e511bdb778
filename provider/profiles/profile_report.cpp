// All profiles are read before the first is told, so that a program may change them.
#include "profiles/profile_report.h"

#include "platform/system/files.h"
#include "reports.h"

void ReportProfiles(const ProfileStore& store, const VOKProfileReceiver& receiver) {
    const std::string path = Utf8Of(store.File());
    if (receiver.OnProfilesFile != nullptr) receiver.OnProfilesFile(receiver.context, path.c_str());
    const ProfileStore::Listing listing = store.ListAll();
    if (receiver.OnProfile == nullptr) return;
    for (const Profile& profile : listing.profiles) {
        std::vector<std::string> locations;
        locations.reserve(profile.services.size());
        std::vector<VOKServiceReport> services;
        services.reserve(profile.services.size());
        std::vector<const VOKServiceReport*> addresses;
        addresses.reserve(profile.services.size());
        for (const ProfileService& service : profile.services) {
            locations.push_back(Utf8Of(service.location));
            services.push_back({MakeReportHead<VOKServiceReport>(path.c_str()), service.name.c_str(),
                                locations.back().c_str(), service.flags});
            addresses.push_back(&services.back());
        }
        const VOKProfileReport report = {MakeReportHead<VOKProfileReport>(path.c_str()), profile.name.c_str(),
                                         profile.name == listing.display, static_cast<ULONG>(addresses.size()),
                                         addresses.data()};
        const HRESULT answer = receiver.OnProfile(receiver.context, &report);
        Require(SUCCEEDED(answer), answer);
    }
}
