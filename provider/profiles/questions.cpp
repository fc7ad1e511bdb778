// The administration as questions and answers, for a terminal. Text is in the active code page there.
#include <algorithm>
#include <istream>
#include <ostream>

#include "guard.h"
#include "profiles/administration.h"
#include "profiles/profile_name.h"
#include "profiles/vcard_service.h"
#include "text/ascii.h"
#include "text/code_pages.h"
#include "text/control_characters.h"

namespace {

// A terminal must not obey what stands in a file.
std::string Shown(std::string_view utf8) {
    return InActiveCodePage(WithoutControls(utf8));
}

class Interview {
  public:
    Interview(std::istream& input, std::ostream& output, ProfileStore& store)
        : input_(input), output_(output), store_(store) {}

    HRESULT Run() {
        List();
        for (;;) {
            const std::string answer = Ask("\nlist, add, remove, properties, copy, display, close or cancel? ");
            if (answer == "close") return S_OK;
            if (answer == "cancel" || answer == "quit") return MAPI_E_USER_CANCEL;
            HandleAnswer(answer);
        }
    }

  private:
    using Action = void (Interview::*)();
    struct Command {
        std::string_view name;
        Action action;
    };

    // The end of the input ends the interview.
    std::string Ask(std::string_view question) {
        output_ << question << std::flush;
        std::string line;
        if (!std::getline(input_, line)) throw Failure(MAPI_E_USER_CANCEL);
        return std::string(Trimmed(line));
    }
    // Nothing when no profile can have the name; the user has been told why.
    std::optional<std::string> AskForNewName();
    std::string AskForProfile(std::string_view question);
    void Say(std::string_view text) { output_ << text; }

    void HandleAnswer(const std::string& answer);
    void List();
    void Add();
    void Remove() { store_.Remove(AskForProfile("Profile to remove: ")); }
    void Show();
    void Copy();
    void ChooseDisplay() { store_.SetDisplayProfile(AskForProfile("Profile for displaying the address book: ")); }

    std::istream& input_;
    std::ostream& output_;
    ProfileStore& store_;
};

void Interview::HandleAnswer(const std::string& answer) {
    static constexpr Command commands[] = {{"list", &Interview::List},     {"add", &Interview::Add},
                                           {"remove", &Interview::Remove}, {"properties", &Interview::Show},
                                           {"copy", &Interview::Copy},     {"display", &Interview::ChooseDisplay}};
    for (const Command& command : commands) {
        if (answer != command.name) continue;
        try {
            return (this->*command.action)();
        } catch (const ProfileError& error) {
            if (error.GetReason() == ProfileError::Reason::NotFound)
                Say("There is no such profile.\n");
            else if (error.GetReason() == ProfileError::Reason::NameTaken)
                Say("There is a profile of that name already.\n");
            else
                throw;
            return;
        }
    }
    if (!answer.empty()) Say("That is not one of the answers.\n");
}

void Interview::List() {
    const std::vector<Profile> profiles = store_.List();
    const std::string display = store_.DisplayProfile();
    Say(profiles.empty() ? "No profiles are defined.\n" : "Profiles:\n");
    for (const Profile& profile : profiles)
        Say("  " + Shown(profile.name) + (profile.name == display ? " (for display)\n" : "\n"));
}

std::optional<std::string> Interview::AskForNewName() {
    std::string name, fault = "it is no text";
    const std::string answer = Ask("Name of the new profile: ");
    if (AppendAsUtf8(answer, GetACP(), name)) fault = FaultOfNewName(name);
    if (fault.empty()) return name;
    Say("No profile can have this name: " + fault + ".\n");
    return std::nullopt;
}

// A profile whose name nobody can type is meant by what the list shows of it.
std::string Interview::AskForProfile(std::string_view question) {
    const std::string answer = Ask(question);
    std::string name = FromActiveCodePage(answer);
    const std::vector<Profile> profiles = store_.List();
    const auto isShownSo = [&](const Profile& profile) { return Trimmed(Shown(profile.name)) == answer; };
    if (std::ranges::find(profiles, name, &Profile::name) != profiles.end()) return name;
    if (std::ranges::count_if(profiles, isShownSo) == 1) return std::ranges::find_if(profiles, isShownSo)->name;
    return name;
}

void Interview::Add() {
    const std::optional<std::string> name = AskForNewName();
    if (!name) return;
    store_.RehearseCreating({*name, {}});
    const std::string location = FromActiveCodePage(Ask("Folder or file of vCards (empty: the contacts folder): "));
    store_.Create({*name, {{std::string(vcardServiceName), PathOfUtf8(location), 0}}});
}

void Interview::Show() {
    const std::optional<Profile> profile = store_.Find(AskForProfile("Profile: "));
    if (!profile) throw ProfileError(ProfileError::Reason::NotFound);
    for (const ProfileService& service : profile->services)
        Say("  " + Shown(service.name) + ": " +
            (service.location.empty() ? std::string("the contacts folder") : Shown(Utf8Of(service.location))) + "\n");
    if (profile->services.empty()) Say("  no services\n");
}

void Interview::Copy() {
    const std::string from = AskForProfile("Profile to copy: ");
    if (const std::optional<std::string> name = AskForNewName()) store_.Copy(from, *name);
}

}  // namespace

HRESULT AskAboutProfiles(std::istream& input, std::ostream& output, ProfileStore& store) {
    return Guarded([&] { return Interview(input, output, store).Run(); });
}
