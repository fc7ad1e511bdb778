// What a function throws that cannot go on: the result code that the caller of the method gets, and what happened, in
// words.
#pragma once

#include <exception>

#include "mapi/result_codes.h"

class Failure : public std::exception {
  public:
    // The text lives as long as the process. It is for whoever looks for a fault: what a user should know is reported
    // where it happens.
    explicit Failure(HRESULT result, const char* text = "the caller is told by a result code")
        : result_(result), text_(text) {}

    HRESULT Result() const { return result_; }
    const char* what() const noexcept override { return text_; }

  private:
    HRESULT result_;
    const char* text_;
};

// For arguments: a caller who passes what cannot be is told so.
inline void Require(bool condition, HRESULT otherwise = MAPI_E_INVALID_PARAMETER) {
    if (!condition) throw Failure(otherwise);
}
