// The second object of a session: memory, and the expansion of groups.
#pragma once

#include <memory>

#include "books/session.h"
#include "mapi/entry_points.h"

SessionSupport* MakeSessionSupport(std::shared_ptr<Session> session);
