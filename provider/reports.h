// Making the reports of qdxl7ra.h, and taking the structures of programs.
#pragma once

#include <algorithm>
#include <cstring>

#include "failure.h"
#include "qdxl7ra.h"

// Of a report on a place in a file. The path must outlive the report.
template <typename Report>
VOKReportHead MakeReportHead(const char* path, size_t line = 0, ULONG status = VOK_READ_COMPLETE) {
    return {static_cast<ULONG>(sizeof(Report)), status, "", path, static_cast<ULONG>(line)};
}

// A receiver as far as both sides know it: the program may be older than this provider, or newer. What it does not have
// is null. Throws Failure for a size that cannot be.
template <typename Receiver>
Receiver CopyKnownFields(const Receiver& receiver) {
    Require(receiver.size >= offsetof(Receiver, context) + sizeof receiver.context);
    Receiver known = {};
    std::memcpy(&known, &receiver, std::min<size_t>(receiver.size, sizeof known));
    return known;
}
