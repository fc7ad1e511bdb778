// The administration objects that VOKAdminProfiles and AdministerServices hand out.
#pragma once

#include "mapi/entry_points.h"
#include "mapi_objects/owned.h"

Owned<ProfileAdministration> MakeProfileAdministration();
