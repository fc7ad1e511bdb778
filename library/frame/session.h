// The session's plain data: what a SessionHandle holds and what the reading exports cache in its QueryContext.
#pragma once

#include <memory>
#include <string>

#include "mapi/entry_points.h"
#include "model/details.h"
#include "provider/holders.h"

struct SessionHandle;

// The cache of the reading exports, one per session.
struct QueryContext {
    explicit QueryContext(SessionHandle* owner) : session(owner) {}

    std::unique_ptr<CObjectList> addressBookTree;      // of CAddressBookEntry; null until it has been read
    std::unique_ptr<DestinationList> destinationList;  // of the address book listed last; null until one has been read
    std::string detailsText;                           // of the destination asked for last
    uint32_t contentsStyle = 0;                        // the last non-negative result of GetContentsTable
    SessionHandle* session;                            // the session that owns this context
};

// One open session, opaque to callers.
struct SessionHandle {
    SessionHandle() = default;
    SessionHandle(const SessionHandle&) = delete;
    SessionHandle& operator=(const SessionHandle&) = delete;
    ~SessionHandle() {
        addressBook.Release();
        support.Release();
        context.reset();
    }

    Held<IAddrBook> addressBook;
    Held<SessionSupport> support;
    HRESULT lastResult = S_OK;  // nothing changes it
    char profileName[longestProfileName + 1] = {};
    std::unique_ptr<QueryContext> context;  // null when there was no memory for it
    bool inUse = false;                     // while a reading export works on this session, or on a list of it
    bool closes = false;                    // when that export is done
};
