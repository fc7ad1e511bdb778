// Results inside the provider: a method that cannot go on throws its result code; no exception leaves a method.
#pragma once

#include <new>
#include <utility>

#include "objects/result_codes.h"
#include "unread.h"

struct Failure {
    HRESULT result;
};

// For arguments: a caller who passes what cannot be is told so.
inline void Require(bool condition, HRESULT otherwise = MAPI_E_INVALID_PARAMETER) {
    if (!condition) throw Failure{otherwise};
}

template <typename Function>
HRESULT Guarded(Function&& function) noexcept {
    try {
        return std::forward<Function>(function)();
    } catch (const Failure& failure) {
        return failure.result;
    } catch (const std::bad_alloc&) {
        NoteLackOfMemory();
        return MAPI_E_NOT_ENOUGH_MEMORY;
    } catch (...) {
        NoteFailedAnswer();
        return MAPI_E_CALL_FAILED;
    }
}
