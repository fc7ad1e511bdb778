// The exported functions: argument checks, the last result code, and one guard around the work.
#include "qdxl7rc.h"

#include <new>

#include "frame/export_guard.h"
#include "frame/last_result.h"
#include "frame/profiles.h"
#include "frame/session_life.h"
#include "frame/window_disabler.h"
#include "queries/address_book_list.h"
#include "queries/destination_details.h"
#include "queries/destination_list.h"
#include "queries/group_expansion.h"

namespace {

// A session needs both objects: a success that gives only one has failed.
HRESULT OpenProviderSession(SessionHandle& handle, HWND window, const char* profileName, ULONG openValue,
                            void* openData, ULONG flags) {
    if (providerTable.VOKOpen == nullptr) return E_FAIL;
    const WindowDisabler disabled(window);
    const HRESULT result =
        providerTable.VOKOpen(window, profileName, openValue, openData, flags | VOK_OPEN_FLAG, nullptr, nullptr,
                              nullptr, handle.addressBook.Receive(), handle.support.Receive());
    return SUCCEEDED(result) && (!handle.addressBook || !handle.support) ? E_FAIL : result;
}

SessionHandle* FailOpening(HRESULT result) {
    libraryLastResult = result;
    return nullptr;
}

// Runs one query on the session. A session that is in the middle of one refuses the next.
template <class Query>
int32_t RunQuery(SessionHandle* handle, Query query) {
    if (handle == nullptr || handle->context == nullptr) return 0;
    const SessionUse use(*handle);
    if (!use) return 0;
    return GuardAgainstExceptions(false, [&] { return query(*handle->context); }) ? 1 : 0;
}

// The same for a query on a destination, which may be one of another session: that one stays, too. The entry is looked
// at only when the session is not in the middle of a call: it may be reading anew what the entry belonged to.
template <class Query>
int32_t RunDestinationQuery(SessionHandle* handle, DestinationEntry entry, Query query) {
    return RunQuery(handle, [&](QueryContext& context) {
        SessionHandle* owner = FindOwningSession(entry);
        if (owner == nullptr || owner == handle) return query(context);
        const SessionUse use(*owner);
        return use && query(context);
    });
}

}  // namespace

SessionHandle* OpenAddressBook(void* window, const char* profileName, uint32_t openValue, void* openData,
                               uint32_t flags, void* resourceModule) {
    OwnedHandle handle = CreateHandle(profileName, static_cast<HMODULE>(resourceModule));
    if (handle == nullptr) return FailOpening(E_FAIL);
    const HRESULT result = GuardAgainstExceptions(E_FAIL, [&] {
        return OpenProviderSession(*handle, static_cast<HWND>(window), profileName, openValue, openData, flags);
    });
    if (FAILED(result)) {
        handle.reset();
        return FailOpening(result);
    }
    // Without memory for the context the session is open all the same and lists nothing.
    handle->context.reset(new (std::nothrow) QueryContext(handle.get()));
    libraryLastResult = result;
    return handle.release();
}

int32_t CloseAddressBook(SessionHandle* handle) {
    if (IsValidHandle(handle)) DestroyHandle(handle);
    return 1;
}

int32_t GetLastVOKError(SessionHandle* handle) {
    return IsValidHandle(handle) ? handle->lastResult : libraryLastResult;
}

intptr_t DisplayRecipSelect() {
    return -1;
}

extern "C" intptr_t DisplayRecipSelectEx() __attribute__((alias("DisplayRecipSelect")));

int32_t GetAddressBookList(SessionHandle* handle, uint32_t reserved, AddressBookEntry parentEntry, uint32_t* count,
                           const RecordListDescriptor* records) {
    if (count == nullptr) return 0;
    return RunQuery(handle, [&](QueryContext& context) {
        return ListAddressBooks(context, reserved, parentEntry, *count, records);
    });
}

int32_t GetDestinationList(SessionHandle* handle, uint32_t /*reserved*/, AddressBookEntry addressBookEntry,
                           uint32_t* count, const RecordListDescriptor* records) {
    if (addressBookEntry == nullptr || count == nullptr) return 0;
    return RunQuery(handle, [&](QueryContext& context) {
        return records == nullptr ? CountDestinations(context, addressBookEntry, *count)
                                  : FillDestinations(context, *count, *records);
    });
}

int32_t GetDestinationDetails(SessionHandle* handle, DestinationEntry entry, uint32_t* size, char* buffer) {
    if (entry == nullptr || size == nullptr) return 0;
    return RunDestinationQuery(
        handle, entry, [&](QueryContext& context) { return WriteDestinationDetails(context, entry, *size, buffer); });
}

int32_t GetDestinationsInGroup(SessionHandle* handle, uint32_t reserved, DestinationEntry group, uint32_t* count,
                               const RecordListDescriptor* records) {
    if (group == nullptr || count == nullptr) return 0;
    return RunDestinationQuery(
        handle, group, [&](QueryContext& context) { return ExpandGroup(context, reserved, group, *count, records); });
}

int32_t CreateProfile(uintptr_t uiParam, uint32_t flags, const char* profileName, uint32_t serviceCount,
                      const ServiceRecord* services, void* resourceModule) {
    if (lstrlenA(profileName) == 0 || (services == nullptr && serviceCount != 0)) {
        libraryLastResult = E_INVALIDARG;
        return 0;
    }
    return CreateProviderProfile(uiParam, flags, profileName, serviceCount, services,
                                 static_cast<HMODULE>(resourceModule))
               ? 1
               : 0;
}

int32_t DisplayAdminProfiles(uintptr_t adminParam, const char* profileName, uintptr_t uiParam, uint32_t flags,
                             void* resourceModule) {
    return ShowProviderAdministration(adminParam, profileName, uiParam, flags, static_cast<HMODULE>(resourceModule))
               ? 1
               : 0;
}
