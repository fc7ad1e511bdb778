// The second object of a session: memory, and the expansion of groups.
#pragma once

#include <memory>

#include "mapi/entry_points.h"
#include "mapi_objects/owned.h"
#include "session/session.h"

Owned<SessionSupport> MakeSessionSupport(std::shared_ptr<Session> session);
