// Profiles: made, opened, kept in their file, and administered by questions and answers.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>
#include <thread>
#include <vector>
#ifndef _WIN32
#include <unistd.h>
#endif

#include "card_text.h"
#include "profiles/administration.h"
#include "profiles/profile_name.h"
#include "provider_client.h"

namespace {

class ProfilesTest : public testing::Test {
  protected:
    Held<ProfileAdministration> Administration() {
        ProfileAdministration* administration = nullptr;
        EXPECT_EQ(library_.AdminProfiles(VOK_ADMIN_CREATE, 0, nullptr, 0, &administration), S_OK);
        return Held<ProfileAdministration>(administration);
    }
    HRESULT Create(const char* name) { return Administration()->CreateProfile(name, nullptr, 0); }
    HRESULT AddService(const char* profile, const char* service, ULONG flags = 0) {
        ServiceAdministration* services = nullptr;
        const HRESULT result = Administration()->AdministerServices(profile, nullptr, &services);
        if (FAILED(result)) return result;
        const Held<ServiceAdministration> held(services);
        return services->CreateService(service, "", flags, 0, 0);
    }
    HRESULT Open(const char* name) {
        IAddrBook* book = nullptr;
        SessionSupport* support = nullptr;
        const HRESULT result = library_.Open(nullptr, name, 0, nullptr, 0, nullptr, nullptr, nullptr, &book, &support);
        EXPECT_EQ(book != nullptr, SUCCEEDED(result));
        if (book != nullptr) book->Release();
        if (support != nullptr) support->Release();
        return result;
    }
    void WriteProfiles(const std::string& text) { std::ofstream(contacts_.Profiles(), std::ios::binary) << text; }
    std::string ProfilesText() const { return ReadText(contacts_.Profiles()); }

    ContactsFolderForTest contacts_;
    ProviderLibrary library_;
};

TEST_F(ProfilesTest, AreCreatedWithServicesAndOpened) {
    contacts_.Write("a.vcf", CardOf({"FN:Ann"}));
    EXPECT_EQ(Open("Office"), MAPI_E_NOT_FOUND);
    ASSERT_EQ(Create("Office"), S_OK);
    EXPECT_EQ(Create("Office"), MAPI_E_COLLISION);
    ASSERT_EQ(AddService("Office", "VCARD", 0x130000), S_OK);
    ASSERT_EQ(AddService("Office", "vcard", 0x100000), S_OK);
    ASSERT_EQ(Create("Second [1]"), S_OK);
    EXPECT_EQ(AddService("Office", "LDAP"), MAPI_E_NOT_FOUND);
    EXPECT_EQ(AddService("Nowhere", "VCARD"), MAPI_E_NOT_FOUND);
    for (const char* name : {"", " x", "a\nb"}) EXPECT_EQ(Create(name), MAPI_E_INVALID_PARAMETER) << name;
    EXPECT_EQ(Administration()->CreateProfile("x", "secret", 0), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(ProfilesText(),
              "# Profiles of the fax address books. Text is UTF-8.\n\n"
              "[profile Office]\nservice = VCARD\nflags = 0x00130000\nservice = VCARD\nflags = 0x00100000\n\n"
              "[profile Second [1]]\n");
    EXPECT_EQ(Open("Second [1]"), S_OK);
    Caller caller("Office");
    const std::vector<Values> books = caller.ListBooks();
    ASSERT_EQ(books.size(), 2U);
    EXPECT_EQ(books[0].at(PR_VOK_PROVIDER_VALUE), "0");
    EXPECT_EQ(books[1].at(PR_VOK_PROVIDER_VALUE), "1");
    EXPECT_NE(books[0].at(PR_ENTRYID), books[1].at(PR_ENTRYID));
}

TEST_F(ProfilesTest, ANewNameIsOneThatEveryProgramCanShow) {
    const std::string longest(64, 'n');
    ASSERT_EQ(Create(longest.c_str()), S_OK);
    ASSERT_EQ(Create("[] = ; #"), S_OK);
    for (const std::string& name : {longest + "n", std::string(300, 'n'), std::string("a\tb"), std::string("a\x1B[31m"),
                                    std::string("a\x7F"), std::string("a\rb"), std::string("a ")})
        EXPECT_EQ(Create(name.c_str()), MAPI_E_INVALID_PARAMETER) << name;
    EXPECT_NE(contacts_.Diagnostics().find("65 bytes in UTF-8, and 64 are the most"), std::string::npos);
    EXPECT_EQ(ProfileStore(contacts_.Profiles()).List().size(), 2U);

    std::string twoBytes, threeBytes;
    for (int i = 0; i < 32; ++i) twoBytes += "\u00E9";
    for (int i = 0; i < 21; ++i) threeBytes += "\u6771";
    for (const std::string& name : {twoBytes, threeBytes, std::string("\u200Fa\u2027\u202F\u2065\u206A\u00A0")})
        EXPECT_EQ(FaultOfNewName(name), "") << name;
    // C1, the separators of lines, what turns the direction of text, and what is no UTF-8.
    for (const std::string name : {"a\u0080", "\u0085a", "a\u009F", "a\u2028", "a\u2029", "\u202Ea", "\u202A", "\u2066",
                                   "\u2069a", "a\uFFFD", "\xE9", "a\xC2", "\xED\xA0\x80"})
        EXPECT_NE(FaultOfNewName(name), "") << name;
    EXPECT_NE(FaultOfNewName(twoBytes + "n"), "");
    EXPECT_NE(FaultOfNewName(threeBytes + "nn"), "");
}

// Older versions and editors made them.
TEST_F(ProfilesTest, ProfilesOfOtherNamesAreKeptAndCanBeRemoved) {
    const std::string longName(300, 'n'), control = "red \x1B[31m", next = "x\u0085y";
    const auto text = [](const std::string& name) { return "[profile " + name + "]\nservice = VCARD\n\n"; };
    const std::string old = text(longName) + text(control) + text(next);
    WriteProfiles(old);
    for (const std::string& name : {longName, control}) EXPECT_EQ(Open(name.c_str()), S_OK) << name;
    ASSERT_EQ(Create("New"), S_OK);
    EXPECT_EQ(ProfilesText(), old + "[profile New]\n");

    ProfileStore store(contacts_.Profiles());
    store.SetDisplayProfile(control);
    EXPECT_EQ(store.DisplayProfile(), control);
    store.Copy(longName, "Short");
    EXPECT_THROW(store.Copy("Short", control + "x"), ProfileError);
    store.Remove(longName);
    // At a terminal they have blanks in their place, and are meant by what is shown.
    std::istringstream input("list\nremove\nred [31m\nremove\nx y\nclose\n");
    std::ostringstream output;
    EXPECT_EQ(AskAboutProfiles(input, output, store), S_OK);
    EXPECT_EQ(output.str().find('\x1B'), std::string::npos);
    EXPECT_EQ(output.str().find('\x85'), std::string::npos);
    const std::vector<Profile> left = store.List();
    ASSERT_EQ(left.size(), 2U);
    EXPECT_EQ(left[0].name + left[1].name, "NewShort");
}

TEST_F(ProfilesTest, AFileEditedByHandKeepsItsLines) {
    contacts_.Write("x/a.vcf", CardOf({"FN:Ann"}));
    const std::string location = (contacts_.Contacts() / "x/a.vcf").string();
    const std::string text =
        "; mine\r\ndisplay = B\n# more\n[Profile A]\n\n# first\nservice=vcard\n location = " + location +
        " \n\n[profile B]";
    WriteProfiles(text);
    Caller caller("A");
    EXPECT_EQ(caller.ListBook("a").at(0).at(PR_DISPLAY_NAME), "Ann");
    ASSERT_EQ(AddService("A", "VCARD", 1), S_OK);
    ASSERT_EQ(AddService("B", "VCARD", 2), S_OK);
    std::string expected = text;
    expected.insert(expected.find(" \n\n[profile B]"), "\nservice = VCARD\nflags = 0x00000001");
    EXPECT_EQ(ProfilesText(), expected + "\nservice = VCARD\nflags = 0x00000002\n");
}

TEST_F(ProfilesTest, ADamagedFileIsLeftAlone) {
    for (const std::string damaged :
         {"[profile A]\nwhat is this\n", "[profile A]\n[profile A]\n", "[other]\n", "[profile A]\nlocation = x\n",
          "[profile A]\nservice=VCARD\nflags = many\n", "\xFF\xFE[profile A]\n", "colour = red\n"}) {
        WriteProfiles(damaged);
        EXPECT_EQ(Create("New"), MAPI_E_CORRUPT_DATA) << damaged;
        EXPECT_EQ(Open("A"), MAPI_E_CORRUPT_DATA) << damaged;
        EXPECT_EQ(ProfilesText(), damaged);
        EXPECT_EQ(Open(nullptr), S_OK) << "the default profile needs no file";
    }
    EXPECT_NE(contacts_.Diagnostics().find("profiles.ini:2: neither a setting nor a section"), std::string::npos);
}

TEST_F(ProfilesTest, AFileThatCannotBeWrittenIsSaid) {
    SetVariable("FAXBOOK_PROFILES", (contacts_.Contacts() / "file" / "profiles.ini").string());
    contacts_.Write("file", "not a folder");
    EXPECT_EQ(Create("A"), MAPI_E_NO_ACCESS);
    EXPECT_NE(contacts_.Diagnostics().find("cannot be written"), std::string::npos);
}

// Profiles are written beside the file first: what lies there under that name stays.
TEST_F(ProfilesTest, WhatIsWrittenBesideTheFileTakesNobodysPlace) {
#ifdef _WIN32
    const auto process = GetCurrentProcessId();
#else
    const auto process = getpid();
#endif
    const std::filesystem::path beside = contacts_.Profiles().string() + "." + std::to_string(process) + "-0.new";
    std::filesystem::create_directories(beside.parent_path());
    std::ofstream(beside) << "mine";
    ASSERT_EQ(Create("A"), S_OK);
    EXPECT_EQ(ReadText(beside), "mine");
    EXPECT_EQ(Open("A"), S_OK);
    unsigned files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(beside.parent_path()))
        if (entry.path().extension() == ".new") ++files;
    EXPECT_EQ(files, 1U);
}

// A change gives up when others have been at the file for some seconds, as they may be on a busy machine.
void ChangePatiently(const std::function<void()>& change) {
    for (;;) {
        try {
            return change();
        } catch (const ProfileError& error) {
            if (error.GetReason() != ProfileError::Reason::NoAccess) throw;
        }
    }
}

TEST_F(ProfilesTest, SeveralWhoChangeTheFileAtOnceLoseNothing) {
    constexpr int programs = 4;
    constexpr int profilesOfEach = 10;
    std::vector<std::thread> threads;
    for (int program = 0; program < programs; ++program)
        threads.emplace_back([&, program] {
            for (int i = 0; i < profilesOfEach; ++i)
                ChangePatiently([&] {
                    ProfileStore(contacts_.Profiles()).Create({std::to_string(program) + "-" + std::to_string(i), {}});
                });
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(ProfileStore(contacts_.Profiles()).List().size(), static_cast<size_t>(programs * profilesOfEach));
}

TEST_F(ProfilesTest, TheDisplayProfileOpensWithoutAName) {
    WriteProfiles("display = Gone\n\n[profile Office]\n");
    EXPECT_EQ(Open(nullptr), S_OK) << "the folder that the environment names comes first";
    SetVariable("FAXBOOK_CONTACTS", "");
    EXPECT_EQ(Open(""), MAPI_E_NOT_FOUND);
    ProfileStore(contacts_.Profiles()).SetDisplayProfile("Office");
    EXPECT_EQ(Open(nullptr), S_OK);
}

TEST_F(ProfilesTest, AServiceGetsAnotherLocation) {
    const std::string before = "[profile A]\n# first\nservice = VCARD\nflags = 1\nlocation = /old\nservice = VCARD\n\n";
    const std::string other = "[profile B]\nservice = VCARD\nlocation = /old\n";
    WriteProfiles(before + other);
    ProfileStore store(contacts_.Profiles());
    store.SetLocation("A", 0, "/new");
    store.SetLocation("A", 1, "/second");
    EXPECT_EQ(
        ProfilesText(),
        "[profile A]\n# first\nservice = VCARD\nlocation = /new\nflags = 1\nservice = VCARD\nlocation = /second\n\n" +
            other);
    EXPECT_THROW(store.SetLocation("A", 2, "/third"), ProfileError);
}

TEST_F(ProfilesTest, QuestionsAndAnswers) {
    struct Interview {
        const char* answers;
        HRESULT result;
        const char* said;
        const char* profiles;  // names, with "*" behind the one for display
    };
    const Interview interviews[] = {
        {"close\n", S_OK, "No profiles are defined.", ""},
        {"add\nA\n\nclose\n", S_OK, "Name of the new profile", "A "},
        {"add\nA\nclose\n", S_OK, "already", "A "},
        {"add\nB\x1B\nadd\nB\n", MAPI_E_USER_CANCEL, "this name: it has a control character.", "A "},
        {"copy\nA\nB\ndisplay\nB\nlist\ncancel\n", MAPI_E_USER_CANCEL, "B (for display)", "A B* "},
        {"remove\nB\nremove\nB\nquit\n", MAPI_E_USER_CANCEL, "no such profile", "A "},
        {"properties\nA\nwhat\nclose\n", S_OK, "VCARD: the contacts folder", "A "},
        {"add\n", MAPI_E_USER_CANCEL, "Name of the new profile", "A "},
        {"", MAPI_E_USER_CANCEL, "A\n", "A "},
    };
    ProfileStore store(contacts_.Profiles());
    for (const Interview& interview : interviews) {
        std::istringstream input(interview.answers);
        std::ostringstream output;
        EXPECT_EQ(AskAboutProfiles(input, output, store), interview.result) << interview.answers;
        EXPECT_NE(output.str().find(interview.said), std::string::npos) << output.str();
        std::string profiles;
        for (const Profile& profile : store.List())
            profiles += profile.name + (profile.name == store.DisplayProfile() ? "* " : " ");
        EXPECT_EQ(profiles, interview.profiles);
    }
}

}  // namespace
