// The administration as questions and answers, for a terminal. Text is in the active code page there.
#include <istream>
#include <ostream>

#include "objects/guard.h"
#include "profiles/administration.h"
#include "profiles/vcard_service.h"
#include "text/ascii.h"
#include "text/code_pages.h"

namespace {

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
            Obey(answer);
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
        if (!std::getline(input_, line)) throw Failure{MAPI_E_USER_CANCEL};
        return FromActiveCodePage(Trimmed(line));
    }
    void Say(std::string_view text) { output_ << InActiveCodePage(text); }

    void Obey(const std::string& answer);
    void List();
    void Add();
    void Remove() { store_.Remove(Ask("Profile to remove: ")); }
    void Show();
    void Copy();
    void ChooseDisplay() { store_.SetDisplayProfile(Ask("Profile for displaying the address book: ")); }

    std::istream& input_;
    std::ostream& output_;
    ProfileStore& store_;
};

void Interview::Obey(const std::string& answer) {
    static constexpr Command commands[] = {{"list", &Interview::List},     {"add", &Interview::Add},
                                           {"remove", &Interview::Remove}, {"properties", &Interview::Show},
                                           {"copy", &Interview::Copy},     {"display", &Interview::ChooseDisplay}};
    for (const Command& command : commands) {
        if (answer != command.name) continue;
        try {
            return (this->*command.action)();
        } catch (const Failure& failure) {
            if (failure.result == MAPI_E_NOT_FOUND)
                Say("There is no such profile.\n");
            else if (failure.result == MAPI_E_COLLISION)
                Say("There is a profile of that name already.\n");
            else if (failure.result == MAPI_E_INVALID_PARAMETER)
                Say("A profile needs a name of one line.\n");
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
        Say("  " + profile.name + (profile.name == display ? " (for display)\n" : "\n"));
}

void Interview::Add() {
    const std::string name = Ask("Name of the new profile: ");
    store_.Create(name);
    const std::string location = Ask("Folder or file of vCards (empty: the contacts folder): ");
    store_.AddService(name, {std::string(vcardServiceName), PathOfUtf8(location), 0});
}

void Interview::Show() {
    const std::optional<Profile> profile = store_.Find(Ask("Profile: "));
    Require(profile.has_value(), MAPI_E_NOT_FOUND);
    for (const ProfileService& service : profile->services)
        Say("  " + service.name + ": " +
            (service.location.empty() ? std::string("the contacts folder") : Utf8Of(service.location)) + "\n");
    if (profile->services.empty()) Say("  no services\n");
}

void Interview::Copy() {
    const std::string from = Ask("Profile to copy: ");
    store_.Copy(from, Ask("Name of the new profile: "));
}

}  // namespace

HRESULT AskAboutProfiles(std::istream& input, std::ostream& output, ProfileStore& store) {
    return Guarded([&] { return Interview(input, output, store).Run(); });
}
