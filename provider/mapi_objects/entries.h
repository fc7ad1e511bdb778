// The objects that entry identifiers open: containers, persons and fax entries, groups; and the address book itself.
#pragma once

#include <memory>

#include "mapi/mapi_interfaces.h"
#include "session/session.h"

IAddrBook* MakeAddressBook(std::shared_ptr<Session> session);

// Each object holds one reference for the caller.
IABContainer* MakeRootContainer(std::shared_ptr<Session> session);
IABContainer* MakeContainer(std::shared_ptr<Session> session, std::uint32_t node);
IMAPIProp* MakeMailUser(std::shared_ptr<Session> session, FoundEntry entry);
IABContainer* MakeDistributionList(std::shared_ptr<Session> session, FoundEntry entry);

// IAddrBook::OpenEntry, and OpenEntry of every container: any identifier of the session can be opened from anywhere.
// An identifier of 0 bytes and null opens the root container. The type may be null.
HRESULT OpenEntry(const std::shared_ptr<Session>& session, ULONG size, const BYTE* bytes, const IID* interfaceId,
                  ULONG* objectType, IUnknown** object);
