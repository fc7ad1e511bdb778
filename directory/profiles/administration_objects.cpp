// ProfileAdministration and ServiceAdministration over the profile store. Names come in the active code page.
#include "profiles/administration_objects.h"

#include "objects/counted_object.h"
#include "platform/environment.h"
#include "profiles/administration.h"
#include "profiles/vcard_service.h"
#include "text/code_pages.h"

namespace {

std::string RequireName(const char* name) {
    Require(name != nullptr && *name != '\0');
    return FromActiveCodePage(name);
}

// Profiles have no passwords; one that is given would protect nothing.
void RequireNoPassword(const char* password) {
    Require(password == nullptr || *password == '\0', MAPI_E_NO_SUPPORT);
}

class Services final : public CountedObject<ServiceAdministration> {
  public:
    explicit Services(std::string profile) : profile_(std::move(profile)) {}

    HRESULT STDMETHODCALLTYPE Reserved3() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Reserved4() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE CreateService(const char* serviceName, const char*, ULONG flags, ULONG_PTR,
                                            ULONG_PTR) override {
        return Guarded([&] {
            const std::string name = RequireName(serviceName);
            Require(IsServiceName(name), MAPI_E_NOT_FOUND);
            ProfileStore(ProfilesFile()).AddService(profile_, {std::string(vcardServiceName), {}, flags});
            return S_OK;
        });
    }

  private:
    std::string profile_;
};

class Profiles final : public CountedObject<ProfileAdministration> {
  public:
    HRESULT STDMETHODCALLTYPE Reserved3() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Reserved4() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE CreateProfile(const char* profileName, const char* password, ULONG) override {
        return Guarded([&] {
            const std::string name = RequireName(profileName);
            RequireNoPassword(password);
            ProfileStore(ProfilesFile()).Create(name);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Reserved6() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE ShowAdministration(const char* profileName, ULONG_PTR window, ULONG) override {
        return Guarded([&] {
            ProfileStore store(ProfilesFile());
            return ShowProfileAdministration(reinterpret_cast<HWND>(window), profileName, store);
        });
    }
    HRESULT STDMETHODCALLTYPE Reserved8() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Reserved9() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Reserved10() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE AdministerServices(const char* profileName, const char* password,
                                                 ServiceAdministration** services) override {
        return Guarded([&] {
            Require(services != nullptr);
            *services = nullptr;
            std::string name = RequireName(profileName);
            RequireNoPassword(password);
            Require(ProfileStore(ProfilesFile()).Find(name).has_value(), MAPI_E_NOT_FOUND);
            *services = new Services(std::move(name));
            return S_OK;
        });
    }
};

}  // namespace

ProfileAdministration* MakeProfileAdministration() {
    return new Profiles;
}
