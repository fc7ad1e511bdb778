// ProfileAdministration and ServiceAdministration over the profile store. Names come in the active code page.
//
// A caller creates a profile and then its services by one call each; in the file it is one change as far as that goes.
#include "profiles/administration_objects.h"

#include <memory>

#include "diagnostics.h"
#include "mapi_objects/counted_object.h"
#include "platform/system/environment.h"
#include "profiles/administration.h"
#include "profiles/profile_name.h"
#include "profiles/vcard_service.h"
#include "text/code_pages.h"

namespace {

std::string RequireName(const char* name) {
    Require(name != nullptr && *name != '\0');
    return ProfileNameOfCaller(name, MAPI_E_INVALID_PARAMETER);
}

// Profiles have no passwords; one that is given would protect nothing.
void RequireNoPassword(const char* password) {
    Require(password == nullptr || *password == '\0', MAPI_E_NO_SUPPORT);
}

// A profile that a caller creates. It is written together with its first service, so that no program finds it without,
// whatever becomes of this one; without any service it is written when the caller gives the objects back, who has been
// told by then whether it can be.
class NewProfile {
  public:
    // Throws what creating it would.
    explicit NewProfile(std::string name) : profile_{std::move(name), {}} {
        ProfileStore(ProfilesFile()).RehearseCreating(profile_);
    }
    ~NewProfile() {
        if (isOutstanding_) Guarded([&] { return WriteWithoutServices(); });
    }
    NewProfile(const NewProfile&) = delete;
    NewProfile& operator=(const NewProfile&) = delete;

    const std::string& Name() const { return profile_.name; }
    void Add(const ProfileService& service) {
        ProfileStore store(ProfilesFile());
        if (isWritten_) return store.AddService(profile_.name, service);
        // Where this fails, the caller is told, and no profile without its service is to follow.
        isOutstanding_ = false;
        store.Create({profile_.name, {service}});
        isWritten_ = true;
    }

  private:
    // Nobody is left who could be told by a result. One of that name from another program is what this one was to be.
    HRESULT WriteWithoutServices() const {
        const HRESULT result = Guarded([&] {
            ProfileStore(ProfilesFile()).Create(profile_);
            return S_OK;
        });
        if (FAILED(result) && result != MAPI_E_COLLISION)
            Diagnostics().Report(ProfilesFile(), 0, "the profile \"" + profile_.name + "\" was not created after all",
                                 "create it again");
        return result;
    }

    Profile profile_;
    bool isOutstanding_ = true;  // to be written without services
    bool isWritten_ = false;
};

class Services final : public CountedObject<ServiceAdministration> {
  public:
    // Of a new profile, or else of the one that is named.
    Services(std::string profile, std::shared_ptr<NewProfile> created)
        : profile_(std::move(profile)), created_(std::move(created)) {}

    HRESULT STDMETHODCALLTYPE Reserved3() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Reserved4() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE CreateService(const char* serviceName, const char*, ULONG flags, ULONG_PTR,
                                            ULONG_PTR) override {
        return Guarded([&] {
            Require(serviceName != nullptr && *serviceName != '\0');
            Require(IsServiceName(FromActiveCodePage(serviceName)), MAPI_E_NOT_FOUND);
            const ProfileService service = {std::string(vcardServiceName), {}, flags};
            if (created_)
                created_->Add(service);
            else
                ProfileStore(ProfilesFile()).AddService(profile_, service);
            return S_OK;
        });
    }

  private:
    std::string profile_;
    std::shared_ptr<NewProfile> created_;
};

class Profiles final : public CountedObject<ProfileAdministration> {
  public:
    HRESULT STDMETHODCALLTYPE Reserved3() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Reserved4() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE CreateProfile(const char* profileName, const char* password, ULONG) override {
        return Guarded([&] {
            const std::string name = RequireName(profileName);
            RequireNoPassword(password);
            created_.reset();
            if (const std::string fault = FaultOfNewName(name); !fault.empty()) {
                Diagnostics().Report(ProfilesFile(), 0, "no profile can be named \"" + name + "\": " + fault,
                                     "choose another name");
                throw ProfileError(ProfileError::Reason::BadName);
            }
            created_ = std::make_shared<NewProfile>(name);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Reserved6() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE ShowAdministration(const char* profileName, ULONG_PTR window, ULONG) override {
        return Guarded([&] {
            created_.reset();
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
            if (!created_ || created_->Name() != name) {
                created_.reset();
                if (!ProfileStore(ProfilesFile()).Find(name)) throw ProfileError(ProfileError::Reason::NotFound);
            }
            *services = new Services(std::move(name), created_);
            return S_OK;
        });
    }

  private:
    // The one that was created last, until another call is about something else.
    std::shared_ptr<NewProfile> created_;
};

}  // namespace

Owned<ProfileAdministration> MakeProfileAdministration() {
    return Owned<ProfileAdministration>(new Profiles);
}
