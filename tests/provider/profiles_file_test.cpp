// The file of the profiles while others use it: who changes it at the same time, who reads it, who keeps it open; and a
// profile that becomes visible with its services only.
#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <thread>
#include <vector>

#include "card_text.h"
#include "guard.h"
#include "platform/system/settings_file.h"
#include "profiles/profile_store.h"
#include "provider_client.h"

namespace fs = std::filesystem;

namespace {

class ProfilesFileTest : public testing::Test {
  protected:
    Held<ProfileAdministration> Administration() {
        ProfileAdministration* administration = nullptr;
        EXPECT_EQ(library_.AdminProfiles(VOK_ADMIN_CREATE, 0, nullptr, 0, &administration), S_OK);
        return Held<ProfileAdministration>(administration);
    }
    static Held<ServiceAdministration> ServicesOf(ProfileAdministration& administration, const char* profile) {
        ServiceAdministration* services = nullptr;
        EXPECT_EQ(administration.AdministerServices(profile, nullptr, &services), S_OK);
        return Held<ServiceAdministration>(services);
    }
    HRESULT CreateWithService(const std::string& name) {
        const auto administration = Administration();
        const HRESULT result = administration->CreateProfile(name.c_str(), nullptr, 0);
        if (FAILED(result)) return result;
        return ServicesOf(*administration, name.c_str())->CreateService("VCARD", "", 0, 0, 0);
    }
    void WriteProfiles(const std::string& text) { std::ofstream(contacts_.Profiles(), std::ios::binary) << text; }
    // The profiles, each with the number of its services.
    std::string Profiles() const {
        std::string text;
        for (const Profile& profile : ProfileStore(contacts_.Profiles()).List())
            text += profile.name + " " + std::to_string(profile.services.size()) + " ";
        return text;
    }
    // What lies in the file's folder beside it, but for the contacts and the diagnostics.
    std::vector<fs::path> Beside() const {
        std::vector<fs::path> beside;
        for (const auto& entry : fs::directory_iterator(contacts_.Profiles().parent_path()))
            if (entry.path().filename().string().starts_with("profiles.ini.")) beside.push_back(entry.path());
        return beside;
    }

    ContactsFolderForTest contacts_;
    ProviderLibrary library_;
};

TEST_F(ProfilesFileTest, WhatOthersDoMeanwhileIsNotWrittenOver) {
    using Outcome = SettingsFileReplacement::Outcome;
    const fs::path file = contacts_.Profiles();
    const fs::path away = file.parent_path().string() + "-away";
    const auto write = [&] { WriteProfiles("other"); };
    const auto replace = [&] {
        std::ofstream(file.string() + ".other") << "other";
        fs::rename(file.string() + ".other", file);
    };
    struct Meanwhile {
        const char* what;
        bool isThere;
        std::function<void()> action;
        Outcome outcome;
        const char* text;  // afterwards; of what is no file: none
    };
    const Meanwhile cases[] = {
        {"nothing", true, [] {}, Outcome::Done, "new"},
        {"nothing, and there is no file", false, [] {}, Outcome::Done, "new"},
        {"written", true, write, Outcome::Changed, "other"},
        {"replaced", true, replace, Outcome::Changed, "other"},
        {"made", false, write, Outcome::Changed, "other"},
        {"gone", true, [&] { fs::remove(file); }, Outcome::Failed, ""},
        {"a folder", false, [&] { fs::create_directory(file); }, Outcome::Failed, ""},
        // The new file is gone with it, and comes back with it.
        {"gone with its folder", true, [&] { fs::rename(file.parent_path(), away); }, Outcome::Failed, ""},
    };
    for (const Meanwhile& meanwhile : cases) {
        SCOPED_TRACE(meanwhile.what);
        fs::remove_all(file);
        if (meanwhile.isThere) WriteProfiles("old");
        {
            const SettingsFile old = ReadSettingsFile(file);
            ASSERT_EQ(old.state, meanwhile.isThere ? SettingsFile::State::Read : SettingsFile::State::Missing);
            SettingsFileReplacement replacement(PlaceOfSettingsFile(file, old), old, "new");
            ASSERT_EQ(replacement.Problem().what, "");
            meanwhile.action();
            EXPECT_EQ(replacement.PutInPlace(), meanwhile.outcome);
        }
        EXPECT_EQ(ReadText(file), meanwhile.text);
        if (!fs::exists(away)) {
            EXPECT_EQ(Beside(), std::vector<fs::path>());
        }
    }
    fs::rename(away, file.parent_path());
    EXPECT_EQ(ReadText(file), "old");
}

TEST_F(ProfilesFileTest, ReadersHinderNobodyAndSeeNoProfileWithoutItsService) {
    constexpr int writers = 2;
    constexpr int profilesOfEach = 10;
    WriteProfiles("[profile Old]\nservice = VCARD\n");
    std::atomic<bool> isOver = false;
    std::atomic<unsigned> failures = 0, halves = 0, readings = 0;
    std::vector<std::thread> readers, threads;
    // A program that shares the file no more than the C library does, and one that knows profiles.
    readers.emplace_back([&] {
        while (!isOver) ReadText(contacts_.Profiles());
    });
    readers.emplace_back([&] {
        for (; !isOver; ++readings)
            for (const Profile& profile : ProfileStore(contacts_.Profiles()).List()) halves += profile.services.empty();
    });
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&, writer] {
            for (int i = 0; i < profilesOfEach; ++i)
                failures += FAILED(CreateWithService(std::to_string(writer) + "-" + std::to_string(i)));
        });
    for (std::thread& thread : threads) thread.join();
    isOver = true;
    for (std::thread& thread : readers) thread.join();
    EXPECT_EQ(failures, 0U);
    EXPECT_EQ(halves, 0U);
    EXPECT_GT(readings, 0U);
    EXPECT_EQ(ProfileStore(contacts_.Profiles()).List().size(), static_cast<size_t>(1 + writers * profilesOfEach));
    EXPECT_EQ(Beside(), std::vector<fs::path>());
}

#ifdef _WIN32
TEST_F(ProfilesFileTest, WhoKeepsItOpenIsWaitedFor) {
    const std::string old = "[profile Old]\n";
    WriteProfiles(old);
    for (const bool isClosed : {false, true}) {
        const HANDLE kept = CreateFileW(contacts_.Profiles().c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(kept, INVALID_HANDLE_VALUE);
        std::atomic<HRESULT> result = MAPI_E_CALL_FAILED;
        std::thread writer([&] {
            result = Guarded([&] {
                ProfileStore(contacts_.Profiles()).Create({"New", {}});
                return S_OK;
            });
        });
        if (isClosed) {
            // The writer is ready and waits.
            while (Beside().empty() && result == MAPI_E_CALL_FAILED) std::this_thread::yield();
            CloseHandle(kept);
        }
        writer.join();
        if (!isClosed) CloseHandle(kept);
        EXPECT_EQ(result, isClosed ? S_OK : MAPI_E_NO_ACCESS);
        EXPECT_EQ(Profiles(), isClosed ? "Old 0 New 0 " : "Old 0 ");
        EXPECT_EQ(Beside(), std::vector<fs::path>());
    }
    EXPECT_NE(contacts_.Diagnostics().find("another program keeps it open"), std::string::npos);
}
#endif

TEST_F(ProfilesFileTest, AProfileIsThereWithItsFirstService) {
    const auto administration = Administration();
    ASSERT_EQ(administration->CreateProfile("A", nullptr, 0), S_OK);
    const auto services = ServicesOf(*administration, "A");
    EXPECT_EQ(services->CreateService("LDAP", "", 0, 0, 0), MAPI_E_NOT_FOUND);
    EXPECT_EQ(Profiles(), "");
    EXPECT_EQ(services->CreateService("VCARD", "", 0, 0, 0), S_OK);
    EXPECT_EQ(Profiles(), "A 1 ");
    EXPECT_EQ(services->CreateService("VCARD", "", 0, 0, 0), S_OK);
    EXPECT_EQ(administration->CreateProfile("A", nullptr, 0), MAPI_E_COLLISION);
    EXPECT_EQ(Profiles(), "A 2 ");
}

TEST_F(ProfilesFileTest, AProfileWithoutServicesIsThereWhenItsObjectsAreReleased) {
    auto administration = Administration();
    ASSERT_EQ(administration->CreateProfile("A", nullptr, 0), S_OK);
    ASSERT_EQ(administration->CreateProfile("B", nullptr, 0), S_OK);
    EXPECT_EQ(Profiles(), "A 0 ");
    EXPECT_EQ(ServicesOf(*administration, "B")->CreateService("LDAP", "", 0, 0, 0), MAPI_E_NOT_FOUND);
    administration.reset();
    EXPECT_EQ(Profiles(), "A 0 B 0 ");
    EXPECT_EQ(contacts_.Diagnostics(), "");
}

// The file's disk fails between the calls.
TEST_F(ProfilesFileTest, WhatCannotBeWrittenLeavesNoHalfProfile) {
    for (const bool hasService : {true, false}) {
        auto administration = Administration();
        ASSERT_EQ(administration->CreateProfile("A", nullptr, 0), S_OK);
        auto services = ServicesOf(*administration, "A");
        fs::create_directory(contacts_.Profiles());
        EXPECT_EQ(Administration()->CreateProfile("B", nullptr, 0), MAPI_E_NO_ACCESS);
        if (hasService) {
            EXPECT_EQ(services->CreateService("VCARD", "", 0, 0, 0), MAPI_E_NO_ACCESS);
            fs::remove(contacts_.Profiles());
        }
        services.reset();
        administration.reset();
        EXPECT_EQ(contacts_.Diagnostics().find("\"A\" was not created") != std::string::npos, !hasService);
        fs::remove(contacts_.Profiles());
        EXPECT_EQ(Profiles(), "");
    }
}

}  // namespace
