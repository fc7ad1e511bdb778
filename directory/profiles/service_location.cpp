// The profiles file line by line, with one line exchanged or added.
#include "profiles/service_location.h"

#include "diagnostics.h"
#include "objects/guard.h"
#include "platform/files.h"
#include "text/ascii.h"
#include "text/code_pages.h"
#include "text/ini_lines.h"

namespace {

bool IsProfileSection(std::string_view section, std::string_view profile) {
    constexpr std::string_view start = "profile ";
    return StartsWithIgnoringCase(section, start) && Trimmed(section.substr(start.size())) == profile;
}

}  // namespace

void SetServiceLocation(const ProfileStore& store, std::string_view profile, size_t service,
                        const std::filesystem::path& location) {
    // The store also refuses a file that is damaged.
    const std::optional<Profile> found = store.Find(profile);
    Require(found && service < found->services.size(), MAPI_E_NOT_FOUND);
    const std::optional<std::string> read = ReadWholeFile(store.File());
    Require(read.has_value(), MAPI_E_NO_ACCESS);

    std::string text;
    bool inProfile = false;
    size_t servicesSeen = 0;
    for (const IniLine& line : ReadIniLines(WithoutUtf8Mark(*read))) {
        if (line.kind == IniLine::Kind::Section) inProfile = IsProfileSection(line.name, profile);
        const bool isSetting = inProfile && line.kind == IniLine::Kind::Setting;
        const bool isService = isSetting && EqualsIgnoringCase(line.name, "service");
        if (isService) ++servicesSeen;
        const bool isOfService = isSetting && servicesSeen == service + 1;
        // The new location stands right below the service.
        if (isOfService && EqualsIgnoringCase(line.name, "location")) continue;
        text.append(line.raw);
        if (!isOfService || !isService) continue;
        if (!text.ends_with('\n')) text.push_back('\n');
        text.append("location = ").append(Utf8Of(location)).append("\n");
    }
    if (ReplaceFile(store.File(), text)) return;
    Diagnostics().Report(store.File(), 0, "profiles cannot be written",
                         "check that you may write there; the file is as it was");
    throw Failure{MAPI_E_NO_ACCESS};
}
