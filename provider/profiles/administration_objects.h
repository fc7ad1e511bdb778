// The administration objects that VOKAdminProfiles and AdministerServices hand out.
#pragma once

#include "mapi/entry_points.h"

ProfileAdministration* MakeProfileAdministration();
