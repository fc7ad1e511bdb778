// The objects that entry identifiers open: containers, persons and fax entries, groups; and the address book itself.
#pragma once

#include <memory>

#include "mapi/mapi_interfaces.h"
#include "mapi_objects/owned.h"
#include "session/session.h"

Owned<IAddrBook> MakeAddressBook(std::shared_ptr<Session> session);

Owned<IABContainer> MakeRootContainer(std::shared_ptr<Session> session);
Owned<IABContainer> MakeContainer(std::shared_ptr<Session> session, std::uint32_t node);
Owned<IMAPIProp> MakeMailUser(std::shared_ptr<Session> session, FoundEntry entry);
Owned<IABContainer> MakeDistributionList(std::shared_ptr<Session> session, FoundEntry entry);

// IAddrBook::OpenEntry, and OpenEntry of every container: any identifier of the session can be opened from anywhere.
// An identifier of 0 bytes and null opens the root container. The type may be null.
HRESULT OpenEntry(const std::shared_ptr<Session>& session, ULONG size, const BYTE* bytes, const IID* interfaceId,
                  ULONG* objectType, IUnknown** object);
