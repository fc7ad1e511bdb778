// The second object of a session: memory, and the expansion of groups.
#pragma once

#include <memory>

#include "mapi/entry_points.h"
#include "session/session.h"

SessionSupport* MakeSessionSupport(std::shared_ptr<Session> session);
