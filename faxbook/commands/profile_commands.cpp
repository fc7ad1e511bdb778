// faxbook profiles, faxbook profile create, faxbook profile admin. The library has no export that lists the profiles;
// the shipped provider's file of them is read with the provider's own code.
#include <algorithm>

#include "client/library_session.h"
#include "client/record_text.h"
#include "client/results.h"
#include "commands/command_failure.h"
#include "commands/commands.h"
#include "mapi/result_codes.h"
#include "platform/system/environment.h"
#include "platform/system/files.h"
#include "profiles/profile_name.h"
#include "profiles/profile_store.h"

namespace {

ServiceRecord MakeServiceRecord(const Service& service) {
    ServiceRecord record = {};
    const std::string name = InCodePage(service.name, "the service name");
    if (name.size() >= sizeof(record.serviceName)) {
        throw CommandFailure("the service name \"" + service.name + "\" is longer than " +
                             std::to_string(sizeof(record.serviceName) - 1) + " bytes; no service has such a name");
    }
    std::ranges::copy(name, record.serviceName);
    record.serviceFlags = service.flags;
    return record;
}

std::string JoinServices(const std::vector<Service>& services) {
    std::string text;
    for (const Service& service : services) text += (text.empty() ? "" : ", ") + service.name;
    return text;
}

// What the library answered, for a message. It stores no code when it could not load the provider.
std::string Answer(int32_t result) {
    return result < 0 ? "the library answered " + ResultText(result)
                      : "the library could not load its provider QDXL7RA.DLL; see that it lies beside QDXL7RC.DLL";
}

std::string AdviceForCreating(const std::string& name, int32_t result) {
    switch (result) {
        case MAPI_E_INVALID_PARAMETER: {
            const std::string fault = FaultOfNewName(name);
            return fault.empty() ? "" : "; no profile can have this name: " + fault;
        }
        case MAPI_E_COLLISION:
            return "; a profile of that name exists already: choose another name, or remove it with \"faxbook profile "
                   "admin\"";
        case MAPI_E_NOT_FOUND:
            return "; check the names of the services (the provider that ships with the library has VCARD); the "
                   "profile itself may have been created";
        case MAPI_E_NO_ACCESS:
            return "; nothing was changed: see what is said above of the file of the profiles";
        default:
            return "";
    }
}

}  // namespace

namespace commands {

void ListProfiles(const CommandContext& context) {
    const ProfileStore store(ProfilesFile());
    const std::string file = Utf8Of(store.File());
    Table table = context.MakeTable({{"profile"},
                                     {"service"},
                                     {"location", Column::Kind::Text, Column::WhenEmpty::Hide},
                                     {"flags"},
                                     {"for_display", Column::Kind::Text, Column::WhenEmpty::Hide}});
    try {
        const std::string displayProfile = store.DisplayProfile();
        for (const Profile& profile : store.List()) {
            const char* forDisplay = profile.name == displayProfile ? "yes" : "";
            if (profile.services.empty()) table.AddRow({profile.name, "", "", "", forDisplay});
            for (const ProfileService& service : profile.services) {
                table.AddRow(
                    {profile.name, service.name, Utf8Of(service.location), HexText(service.flags), forDisplay});
            }
        }
    } catch (const ProfileError& error) {
        throw CommandFailure("cannot read the profiles in " + file + ": " + ResultText(error.Result()) +
                             "; see what is said of it above");
    }
    table.Finish();
    if (table.RowCount() == 0) {
        context.console.Note("there are no profiles in " + file + "; the default profile needs none");
    }
}

void CreateProfile(const CommandContext& context, const std::string& name, const std::vector<Service>& services) {
    const Library library;
    std::vector<ServiceRecord> records;
    std::ranges::transform(services, std::back_inserter(records), MakeServiceRecord);
    if (!library.CreateProfile(0, 0, InCodePage(name, "the profile name").c_str(),
                               static_cast<uint32_t>(records.size()), records.data(), library.Module())) {
        const int32_t result = library.LastResult();
        throw CommandFailure("cannot create the profile \"" + name + "\"" +
                             (services.empty() ? "" : " with " + JoinServices(services)) + ": " + Answer(result) +
                             AdviceForCreating(name, result));
    }
    // A profile with services is there when the last of them is. Of one without, opening it tells.
    if (services.empty()) {
        const LibrarySession opened(library, name);
    }
    context.console.Note(
        "profile \"" + name + "\" created, " +
        (services.empty() ? "without services: it has no address books yet" : "with " + JoinServices(services)));
}

void AdministerProfiles(const CommandContext& context) {
    const Library library;
    const std::string name = InCodePage(context.profile, "the profile name");
    const bool shown =
        library.DisplayAdminProfiles(0, name.empty() ? nullptr : name.c_str(), 0, 0, library.Module()) != 0;
    const int32_t result = library.LastResult();
    if (!shown) {
        throw CommandFailure(
            "cannot show the profile administration: " + Answer(result) +
            (result == MAPI_E_NO_SUPPORT ? "; it needs a window or, where there are none, a terminal to ask on" : ""));
    }
    if (result == MAPI_E_USER_CANCEL) context.console.Note("cancelled");
}

}  // namespace commands
