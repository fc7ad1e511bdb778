// From a profile to the locations of its services.
#include "profiles/vcard_service.h"

#include "diagnostics.h"
#include "failure.h"
#include "platform/system/environment.h"
#include "text/ascii.h"

namespace {

// The profile that no name stands for; empty: the contacts folder. A contacts folder that the environment names comes
// before the profile that the user has chosen for display.
std::string ChooseDefaultProfile(const ProfileStore& store) {
    return EnvironmentPath(contactsVariable) ? std::string() : store.DisplayProfile();
}

}  // namespace

bool IsServiceName(std::string_view name) {
    return EqualsIgnoringCase(name, vcardServiceName);
}

std::shared_ptr<Session> OpenSession(std::string_view profileName, const ProfileStore& store,
                                     const VOKMessageReceiver& messages) {
    const std::string name = profileName.empty() ? ChooseDefaultProfile(store) : std::string(profileName);
    if (name.empty()) return std::make_shared<Session>(std::vector{ContactsFolder()}, messages);
    const std::optional<Profile> profile = store.Find(name);
    if (!profile) throw ProfileError(ProfileError::Reason::NotFound);
    std::vector<std::filesystem::path> locations;
    for (const ProfileService& service : profile->services) {
        if (!IsServiceName(service.name)) {
            Diagnostics(messages).Report(store.File(), 0, "unknown service {} in profile {}",
                                         "it is left out; known is: VCARD", {service.name, profile->name});
            throw Failure(MAPI_E_NOT_FOUND);
        }
        locations.push_back(service.location.empty() ? ContactsFolder() : service.location);
    }
    return std::make_shared<Session>(locations, messages);
}
