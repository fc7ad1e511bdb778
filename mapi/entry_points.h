// The provider library's own functions and the objects that are not MAPI's: what QDXL7RA.DLL exports by name, the
// session support object and the two administration objects.
#pragma once

#include <windows.h>

#include <cstddef>

#include "mapi/mapi_interfaces.h"

// The second object of a session: the provider's memory and the expansion of groups.
struct SessionSupport : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Reserved3() = 0;
    // 4: memory for an address list, uninitialised; freed with FreeAddressList.
    virtual HRESULT STDMETHODCALLTYPE AllocateAddressList(ULONG byteCount, ADRLIST** addressList) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved5() = 0;
    // 6: frees the value array of a GetProps call.
    virtual HRESULT STDMETHODCALLTYPE FreeProperties(SPropValue* values) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved7() = 0;
    // 8: frees an address list and the property values in it.
    virtual HRESULT STDMETHODCALLTYPE FreeAddressList(ADRLIST* addressList) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved9() = 0;
    // 10: replaces the groups in the list by their members; may put another list in its place. Flags are 0.
    virtual HRESULT STDMETHODCALLTYPE ExpandRecipients(ULONG flags, ADRLIST** addressList) = 0;
};

// In bytes: as much of a profile's name as a session keeps.
inline constexpr size_t longestProfileName = 64;

// The message services of one profile.
struct ServiceAdministration : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Reserved3() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved4() = 0;
    // 5: adds a service to the profile.
    virtual HRESULT STDMETHODCALLTYPE CreateService(const char* serviceName, const char* displayName, ULONG flags,
                                                    ULONG_PTR reserved1, ULONG_PTR reserved2) = 0;
};

// The profiles of the user.
struct ProfileAdministration : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Reserved3() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved4() = 0;
    // 5: creates a profile without services. Its services are those that are created before the objects are released.
    virtual HRESULT STDMETHODCALLTYPE CreateProfile(const char* profileName, const char* password, ULONG flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved6() = 0;
    // 7: shows the administration to the user; window is an HWND.
    virtual HRESULT STDMETHODCALLTYPE ShowAdministration(const char* profileName, ULONG_PTR window, ULONG flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved8() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved9() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved10() = 0;
    // 11: the services of one profile.
    virtual HRESULT STDMETHODCALLTYPE AdministerServices(const char* profileName, const char* password,
                                                         ServiceAdministration** services) = 0;
};

// VOKOpen: added to the caller's flags.
inline constexpr ULONG VOK_OPEN_FLAG = 8;

// VOKAdminProfiles: what the administration object is wanted for.
inline constexpr ULONG VOK_ADMIN_CREATE = 0;
inline constexpr ULONG VOK_ADMIN_DISPLAY = 1;

extern "C" {

// Opens a session on a profile. Whatever was stored in addressBook and support, also by a call that fails, is released
// by the caller.
using VOKOpenFunction = HRESULT STDAPICALLTYPE(HWND window, const char* profileName, ULONG openValue, void* openData,
                                               ULONG flags, void* reserved1, void* reserved2, void* reserved3,
                                               IAddrBook** addressBook, SessionSupport** support);
using VOKAdminProfilesFunction = HRESULT STDAPICALLTYPE(ULONG mode, ULONG_PTR uiParam, const char* profileName,
                                                        ULONG flags, ProfileAdministration** administration);
using VOKAllocateBufferFunction = HRESULT STDAPICALLTYPE(ULONG byteCount, void** buffer);
using VOKAllocateMoreFunction = HRESULT STDAPICALLTYPE(ULONG byteCount, void* parent, void** buffer);
using VOKFreeBufferFunction = ULONG STDAPICALLTYPE(void* buffer);
using VOKFreeProwsFunction = void STDAPICALLTYPE(SRowSet* rows);
// Takes the module that holds the resources to show; a negative result refuses it.
using SetResourceDllHandleFunction = HRESULT STDAPICALLTYPE(HMODULE resourceModule);

}  // extern "C"
