// Telling a program what profiles there are: see qdxl7ra.h.
#pragma once

#include "profiles/profile_store.h"
#include "qdxl7ra.h"

// Throws what the store throws, and Failure with the receiver's result when that is negative.
void ReportProfiles(const ProfileStore& store, const VOKProfileReceiver& receiver);
