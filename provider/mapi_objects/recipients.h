// Address lists: the recipients of a message, groups among them.
#pragma once

#include <memory>

#include "mapi/mapi_types.h"
#include "session/session.h"

// Uninitialised, as its receiver expects it.
ADRLIST* AllocateAddressList(size_t byteCount);
// Frees the list and the values of its entries; throws for what is no list of this provider.
void FreeAddressList(ADRLIST* list);

// Replaces the groups in a list by the persons in them, each person once, in the order of first mention. Other entries
// stay as they are. On failure the list is as it was: MAPI_E_NOT_FOUND when an entry of this session means nobody
// now, MAPI_E_UNABLE_TO_COMPLETE when a group may have members in a file that cannot be read.
void ExpandRecipients(Session& session, ADRLIST** list);

// Gives every entry the values of the tags, in their order. What this provider does not know of an entry is taken from
// the values that it had, or is missing. On failure no entry has new values, as above.
void PrepareRecipients(Session& session, const SPropTagArray* tags, ADRLIST* list);
