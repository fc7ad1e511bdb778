// The administration objects that VOKAdminProfiles and AdministerServices hand out.
#pragma once

#include "provider/entry_points.h"

ProfileAdministration* MakeProfileAdministration();
