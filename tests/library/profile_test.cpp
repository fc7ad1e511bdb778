// CreateProfile and DisplayAdminProfiles, and the registry value that the latter clears.
#include <optional>

#include "support/library_test.h"

namespace {

const std::string settingsKey = "Software\\Quorvane\\Tessivar Address Book\\Settings";

// The ProfileLock of a key below the settings key, or of that itself.
class ProfileLock {
  public:
    explicit ProfileLock(const std::string& name) : path_(settingsKey + (name.empty() ? "" : '\\' + name)) {}

    void Set(DWORD value) const {
        HKEY key = nullptr;
        ASSERT_EQ(
            RegCreateKeyExA(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
            0);
        RegSetValueExA(key, "ProfileLock", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
        RegCloseKey(key);
    }
    std::optional<DWORD> Get() const {
        HKEY key = nullptr;
        if (RegOpenKeyExA(HKEY_CURRENT_USER, path_.c_str(), 0, KEY_READ, &key) != 0) return std::nullopt;
        DWORD value = 0, type = 0, size = sizeof value;
        const LONG result =
            RegQueryValueExA(key, "ProfileLock", nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
        RegCloseKey(key);
        if (result != 0 || type != REG_DWORD || size != sizeof value) return std::nullopt;
        return value;
    }
    void Remove() const { RegDeleteKeyA(HKEY_CURRENT_USER, path_.c_str()); }

  private:
    std::string path_;
};

class ProfileTest : public LibraryTest {
  protected:
    std::string Calls() const {
        std::string text;
        for (const std::string& call : script_.calls) text += call + '\n';
        return text;
    }
};

ServiceRecord MakeService(const char* name, uint32_t flags) {
    auto record = Untouched<ServiceRecord>();
    Put(record.serviceName, name);
    record.serviceFlags = flags;
    return record;
}

TEST_F(ProfileTest, CreatesAProfileWithItsServices) {
    const ServiceRecord services[] = {MakeService("none", 0xFFFFFFFC), MakeService("first", 1),
                                      MakeService("second", 2), MakeService("1234567890123456789012345678901", 3)};
    char module[1];
    EXPECT_EQ(library_.CreateProfile(77, 0x12, "New", 4, services, module), 1);
    EXPECT_EQ(Calls(),
              "SetResourceDllHandle()\n"
              "VOKAdminProfiles(0, 77, \"New\", 0x12)\n"
              "administration.CreateProfile(\"New\", null, 0)\n"
              "administration.AdministerServices(\"New\", null)\n"
              "services.CreateService(\"none\", \"\", 0x100000, 0, 0)\n"
              "services.CreateService(\"first\", \"\", 0x110000, 0, 0)\n"
              "services.CreateService(\"second\", \"\", 0x120000, 0, 0)\n"
              "services.CreateService(\"1234567890123456789012345678901\", \"\", 0x130000, 0, 0)\n"
              "services.Release()\n"
              "administration.Release()\n");
    EXPECT_EQ(static_cast<void*>(script_.resourceModule), module);
    EXPECT_EQ(library_.GetLastVOKError(nullptr), S_OK);
    // With a session open the provider is not loaded again; without services none is added.
    Open();
    script_.Forget();
    EXPECT_EQ(library_.CreateProfile(0, 0, "New", 0, services, nullptr), 1);
    EXPECT_EQ(script_.CountOf("SetResourceDllHandle"), 0u);
    EXPECT_EQ(script_.CountOf("AdministerServices"), 1u);
    EXPECT_EQ(script_.CountOf("CreateService"), 0u);
    // Nor is an object needed that nothing is added through.
    script_.Forget();
    script_.faults = {{"AdministerServices", 1, 6, false}};
    EXPECT_EQ(library_.CreateProfile(0, 0, "New", 0, nullptr, nullptr), 1);
    EXPECT_EQ(library_.GetLastVOKError(nullptr), 6);
}

TEST_F(ProfileTest, StopsAtTheFirstFailure) {
    const ServiceRecord services[] = {MakeService("a", 0), MakeService("b", 0), MakeService("c", 0)};
    struct {
        Fault fault;
        HRESULT lastResult;
        unsigned services;
    } const cases[] = {
        {{"VOKAdminProfiles", 1, MAPI_E_NOT_FOUND, false}, MAPI_E_NOT_FOUND, 0},
        {{"VOKAdminProfiles", 1, MAPI_E_NOT_FOUND, true}, MAPI_E_NOT_FOUND, 0},
        {{"VOKAdminProfiles", 1, S_OK, false}, E_FAIL, 0},
        {{"CreateProfile", 1, E_ACCESSDENIED, false}, E_ACCESSDENIED, 0},
        {{"AdministerServices", 1, E_FAIL, true}, E_FAIL, 0},
        {{"AdministerServices", 1, 6, false}, E_FAIL, 0},
        {{"CreateService", 2, MAPI_E_USER_CANCEL, false}, MAPI_E_USER_CANCEL, 2},
        {{"CreateService", 3, 9, true}, 9, 3},
        {{"CreateService", 2, 9, true}, 0, 3},
    };
    for (const auto& [fault, lastResult, added] : cases) {
        SCOPED_TRACE(fault.function + " " + std::to_string(fault.result));
        script_.Forget();
        script_.faults = {fault};
        EXPECT_EQ(library_.CreateProfile(0, 0, "New", 3, services, nullptr), lastResult >= 0 ? 1 : 0);
        EXPECT_EQ(library_.GetLastVOKError(nullptr), lastResult);
        EXPECT_EQ(script_.CountOf("CreateService"), added);
        EXPECT_EQ(script_.Imbalance(), "");
    }
}

TEST_F(ProfileTest, RejectsMissingArguments) {
    const ServiceRecord service = MakeService("a", 0);
    EXPECT_EQ(library_.CreateProfile(0, 0, nullptr, 1, &service, nullptr), 0);
    EXPECT_EQ(library_.GetLastVOKError(nullptr), E_INVALIDARG);
    Close(Open());
    script_.Forget();
    EXPECT_EQ(library_.CreateProfile(0, 0, "", 1, &service, nullptr), 0);
    EXPECT_EQ(library_.GetLastVOKError(nullptr), E_INVALIDARG);
    Close(Open());
    script_.Forget();
    EXPECT_EQ(library_.CreateProfile(0, 0, "New", 1, nullptr, nullptr), 0);
    EXPECT_EQ(library_.GetLastVOKError(nullptr), E_INVALIDARG);
    EXPECT_EQ(script_.callCount, 0u);
}

// A provider that cannot be had leaves the result of the last call.
TEST_F(ProfileTest, ARefusedResourceModuleKeepsTheLastResult) {
    script_.openResult = 4;
    Close(Open());
    for (const bool create : {true, false}) {
        script_.resourceResult = E_FAIL;
        EXPECT_EQ(create ? library_.CreateProfile(0, 0, "New", 0, nullptr, nullptr)
                         : library_.DisplayAdminProfiles(0, "New", 0, 0, nullptr),
                  0);
        EXPECT_EQ(library_.GetLastVOKError(nullptr), 4);
        EXPECT_EQ(script_.CountOf("VOKAdminProfiles"), 0u);
        script_.resourceResult = S_OK;
        Close(Open());
    }
}

TEST_F(ProfileTest, ShowsTheAdministrationAndClearsTheLock) {
    struct {
        HRESULT shown;
        std::vector<Fault> faults;
        int32_t result;
        HRESULT lastResult;
    } const cases[] = {
        {S_OK, {}, 1, S_OK},
        {3, {}, 1, 3},
        {MAPI_E_USER_CANCEL, {}, 1, MAPI_E_USER_CANCEL},
        {E_ACCESSDENIED, {}, 0, E_ACCESSDENIED},
        {S_OK, {{"VOKAdminProfiles", 1, MAPI_E_NOT_FOUND, false}}, 0, MAPI_E_NOT_FOUND},
        {S_OK, {{"VOKAdminProfiles", 1, MAPI_E_USER_CANCEL, true}}, 1, MAPI_E_USER_CANCEL},
        {S_OK, {{"VOKAdminProfiles", 1, S_OK, false}}, 0, E_FAIL},
    };
    const ProfileLock lock("Mine");
    for (const auto& each : cases) {
        lock.Set(1);
        script_.Forget();
        script_.showResult = each.shown;
        script_.faults = each.faults;
        bool lockedWhileShown = true;
        script_.during = [&](const std::string& function) {
            if (function == "ShowAdministration") lockedWhileShown = lock.Get() == 1u;
        };
        EXPECT_EQ(library_.DisplayAdminProfiles(5, "Mine", 6, 0x80, nullptr), each.result);
        EXPECT_EQ(library_.GetLastVOKError(nullptr), each.lastResult);
        EXPECT_TRUE(lockedWhileShown);
        EXPECT_EQ(lock.Get(), 0u);
        EXPECT_EQ(script_.Imbalance(), "");
        const bool obtained = each.faults.empty();
        EXPECT_EQ(script_.CallsOf({"VOKAdminProfiles", "ShowAdministration"}),
                  std::string("VOKAdminProfiles(1, 6, \"Mine\", 0x90)\n") +
                      (obtained ? "administration.ShowAdministration(\"Mine\", 5, 0)\n" : ""));
    }
    lock.Remove();
}

// The lock's key has the profile's whole name; without one it is the settings key itself.
TEST_F(ProfileTest, WritesTheLockUnderTheWholeName) {
    const std::string longName(70, 'n'), veryLongName(200, 'v');
    for (const char* name :
         {"Not there yet", longName.c_str(), veryLongName.c_str(), "", static_cast<const char*>(nullptr)}) {
        const ProfileLock lock(name == nullptr ? "" : name);
        lock.Remove();
        if (name == nullptr || *name == '\0') lock.Set(1);
        EXPECT_NE(lock.Get(), 0u);
        EXPECT_EQ(library_.DisplayAdminProfiles(0, name, 0, 0x10, nullptr), 1);
        EXPECT_EQ(lock.Get(), 0u);
        EXPECT_NE(script_.CallsOf({"VOKAdminProfiles"}).find(", 0x10)"), std::string::npos);
        lock.Remove();
    }
}

}  // namespace
