// What the library, or what a program asked it for, cannot do, in one line for the user: what was asked, what came
// back, what to do. UTF-8.
#pragma once

#include <stdexcept>

class ClientError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};
