// The guard at the library's boundary: no exception leaves it.
#pragma once

// The result of the call, or the failure value when it throws (memory has ended, or a provider let an exception out).
template <class Result, class Call>
Result GuardAgainstExceptions(Result failure, Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return failure;
    }
}
