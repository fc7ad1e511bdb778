// CommandFailure: the reason why a command cannot do what it was asked for, in one line for the user: what was asked,
// what came back, what to do. UTF-8.
#pragma once

#include <stdexcept>

class CommandFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};
