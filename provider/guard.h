// The one place where an exception becomes a result code: none leaves a method or an exported function.
#pragma once

#include <new>
#include <utility>

#include "failure.h"
#include "unread.h"

// Calls a function that answers a result code.
template <typename Function>
HRESULT Guarded(Function&& function) noexcept {
    try {
        return std::forward<Function>(function)();
    } catch (const Failure& failure) {
        return failure.Result();
    } catch (const std::bad_alloc&) {
        NoteLackOfMemory();
        return MAPI_E_NOT_ENOUGH_MEMORY;
    } catch (const std::exception& fault) {
        NoteFailedAnswer(fault.what());
        return MAPI_E_CALL_FAILED;
    } catch (...) {
        NoteFailedAnswer("a fault without a text");
        return MAPI_E_CALL_FAILED;
    }
}
