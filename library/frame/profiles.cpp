// Profile exports: creating a profile with its services, showing the administration, clearing the profile's lock.
#include "frame/profiles.h"

#include <string>

#include "frame/export_guard.h"
#include "frame/last_result.h"
#include "frame/session_life.h"
#include "provider/holders.h"

namespace {

// Service flags of the caller and of the provider.
constexpr ULONG providerServiceFlags = 0x100000;
constexpr ULONG providerServiceFlag1 = 0x10000;
constexpr ULONG providerServiceFlag2 = 0x20000;

// Added to the caller's flags when the administration is shown.
constexpr ULONG administrationFlag = 0x10;

constexpr char settingsKey[] = "Software\\Quorvane\\Tessivar Address Book\\Settings\\";
constexpr char profileLockValue[] = "ProfileLock";

ULONG GetProviderFlags(uint32_t serviceFlags) {
    return providerServiceFlags | ((serviceFlags & SERVICE_FLAG_1) != 0 ? providerServiceFlag1 : 0) |
           ((serviceFlags & SERVICE_FLAG_2) != 0 ? providerServiceFlag2 : 0);
}

// A call that succeeds without giving an object has failed.
HRESULT OpenAdministration(ULONG mode, ULONG_PTR uiParam, const char* profileName, ULONG flags,
                           Held<ProfileAdministration>& administration) {
    if (providerTable.VOKAdminProfiles == nullptr) return E_FAIL;
    const HRESULT result = providerTable.VOKAdminProfiles(mode, uiParam, profileName, flags, administration.Receive());
    return SUCCEEDED(result) && !administration ? E_FAIL : result;
}

// Without services the result is that of opening their administration, whether or not that gave an object.
HRESULT AddServices(ProfileAdministration& profiles, const char* profileName, uint32_t serviceCount,
                    const ServiceRecord* services, Held<ServiceAdministration>& administration) {
    HRESULT result = profiles.AdministerServices(profileName, nullptr, administration.Receive());
    for (uint32_t i = 0; i < serviceCount && SUCCEEDED(result); ++i) {
        if (!administration) return E_FAIL;
        result = administration->CreateService(services[i].serviceName, "", GetProviderFlags(services[i].serviceFlags),
                                               0, 0);
    }
    return result;
}

bool ClearProfileLock(const char* profileName) {
    const std::string key = std::string(settingsKey) + (profileName != nullptr ? profileName : "");
    HKEY opened = nullptr;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &opened, nullptr) !=
        ERROR_SUCCESS)
        return false;
    const DWORD unlocked = 0;
    const LONG written = RegSetValueExA(opened, profileLockValue, 0, REG_DWORD,
                                        reinterpret_cast<const BYTE*>(&unlocked), sizeof unlocked);
    RegCloseKey(opened);
    return written == ERROR_SUCCESS;
}

}  // namespace

bool CreateProviderProfile(ULONG_PTR uiParam, ULONG flags, const char* profileName, uint32_t serviceCount,
                           const ServiceRecord* services, HMODULE resourceModule) {
    const OwnedHandle temporary = CreateHandle(profileName, resourceModule);
    if (temporary == nullptr) return false;
    Held<ProfileAdministration> profiles;
    Held<ServiceAdministration> profileServices;
    const HRESULT result = GuardAgainstExceptions(E_FAIL, [&] {
        HRESULT last = OpenAdministration(VOK_ADMIN_CREATE, uiParam, profileName, flags, profiles);
        if (SUCCEEDED(last)) last = profiles->CreateProfile(profileName, nullptr, 0);
        if (SUCCEEDED(last)) last = AddServices(*profiles.Get(), profileName, serviceCount, services, profileServices);
        return last;
    });
    libraryLastResult = result;
    return SUCCEEDED(result);
}

bool ShowProviderAdministration(ULONG_PTR adminParam, const char* profileName, ULONG_PTR uiParam, ULONG flags,
                                HMODULE resourceModule) {
    const OwnedHandle temporary = CreateHandle(profileName, resourceModule);
    if (temporary == nullptr) return false;
    Held<ProfileAdministration> profiles;
    const HRESULT result = GuardAgainstExceptions(E_FAIL, [&] {
        const HRESULT opened =
            OpenAdministration(VOK_ADMIN_DISPLAY, uiParam, profileName, flags | administrationFlag, profiles);
        return SUCCEEDED(opened) ? profiles->ShowAdministration(profileName, adminParam, 0) : opened;
    });
    GuardAgainstExceptions(false, [&] { return ClearProfileLock(profileName); });
    libraryLastResult = result;
    return SUCCEEDED(result) || result == MAPI_E_USER_CANCEL;
}
