// Reads the address books of a session for a receiver that explains them: see qdxl7ra.h.
#pragma once

#include "qdxl7ra.h"
#include "session/session.h"

// Throws Failure with the receiver's result when that is negative.
void Diagnose(Session& session, const VOKDiagnosisReceiver& receiver);
