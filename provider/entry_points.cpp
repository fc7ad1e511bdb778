// The functions that QDXL7RA.DLL exports.
#include "mapi/entry_points.h"

#include "diagnosis/diagnosis.h"
#include "diagnostics_output.h"
#include "guard.h"
#include "mapi_objects/entries.h"
#include "mapi_objects/memory.h"
#include "mapi_objects/session_support.h"
#include "platform/system/environment.h"
#include "profiles/administration_objects.h"
#include "profiles/profile_name.h"
#include "profiles/profile_report.h"
#include "profiles/resource_module.h"
#include "profiles/vcard_service.h"
#include "qdxl7ra.h"
#include "reading_stop.h"
#include "reports.h"
#include "unread.h"

// The window, the values and the flags say nothing to this provider: opening a session shows nothing.
STDAPI VOKOpen(HWND, const char* profileName, ULONG, void*, ULONG, void*, void*, void*, IAddrBook** addressBook,
               SessionSupport** support) {
    return Guarded([&] {
        Require(addressBook != nullptr && support != nullptr);
        *addressBook = nullptr;
        *support = nullptr;
        const std::string name =
            profileName == nullptr ? std::string() : ProfileNameOfCaller(profileName, MAPI_E_NOT_FOUND);
        const std::shared_ptr<Session> session = OpenSession(name, ProfileStore(ProfilesFile()));
        *addressBook = MakeAddressBook(session).release();
        *support = MakeSessionSupport(session).release();
        return S_OK;
    });
}

STDAPI VOKAdminProfiles(ULONG mode, ULONG_PTR, const char*, ULONG, ProfileAdministration** administration) {
    return Guarded([&] {
        Require(administration != nullptr);
        *administration = nullptr;
        Require(mode == VOK_ADMIN_CREATE || mode == VOK_ADMIN_DISPLAY);
        *administration = MakeProfileAdministration().release();
        return S_OK;
    });
}

STDAPI_(void) VOKFreeProws(SRowSet* rows) {
    FreeBuffer(rows);
}

STDAPI VOKAllocateBuffer(ULONG byteCount, void** buffer) {
    return Guarded([&] {
        Require(buffer != nullptr);
        *buffer = nullptr;
        *buffer = AllocateBuffer(byteCount);
        return S_OK;
    });
}

STDAPI VOKAllocateMore(ULONG byteCount, void* parent, void** buffer) {
    return Guarded([&] {
        Require(buffer != nullptr);
        *buffer = AllocateMore(byteCount, parent);
        Require(*buffer != nullptr);
        return S_OK;
    });
}

STDAPI_(ULONG) VOKFreeBuffer(void* buffer) {
    // Nothing is freed gladly, as MAPI has it.
    if (buffer == nullptr || FreeBuffer(buffer)) return static_cast<ULONG>(S_OK);
    return static_cast<ULONG>(MAPI_E_INVALID_PARAMETER);
}

STDAPI VOKDiagnose(const char* profileName, const char* location, const VOKDiagnosisReceiver* receiver) {
    return Guarded([&] {
        Require(receiver != nullptr);
        const VOKDiagnosisReceiver known = CopyKnownFields(*receiver);
        const VOKMessageReceiver messages = {sizeof messages, known.context, known.OnMessage};
        const std::string_view name = profileName == nullptr ? std::string_view() : profileName;
        const std::shared_ptr<Session> session =
            location == nullptr ? OpenSession(name, ProfileStore(ProfilesFile()), messages)
                                : std::make_shared<Session>(std::vector{PathOfUtf8(location)}, messages);
        Diagnose(*session, known);
        return S_OK;
    });
}

STDAPI VOKListProfiles(const VOKProfileReceiver* receiver) {
    return Guarded([&] {
        Require(receiver != nullptr);
        const VOKProfileReceiver known = CopyKnownFields(*receiver);
        const VOKMessageReceiver messages = {sizeof messages, known.context, known.OnMessage};
        ReportProfiles(ProfileStore(ProfilesFile(), messages), known);
        return S_OK;
    });
}

STDAPI VOKSetMessageReceiver(const VOKMessageReceiver* receiver) {
    return Guarded([&] {
        if (receiver == nullptr) {
            SetMessageReceiver({});
        } else {
            SetMessageReceiver(CopyKnownFields(*receiver));
        }
        return S_OK;
    });
}

STDAPI_(void) VOKStopReading() {
    StopReading();
}

STDAPI_(ULONG) VOKCountUnread() {
    return UnreadCount();
}

STDAPI SetResourceDllHandle(HMODULE resourceModule) {
    SetResourceModule(resourceModule);
    return S_OK;
}
