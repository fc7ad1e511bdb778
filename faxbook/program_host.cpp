// The host passes arguments and output through as bytes, which are UTF-8.
#include "program.h"

std::vector<std::string> ProgramArguments(int argc, char** argv) {
    return {argv, argv + argc};
}

Utf8Streams::Utf8Streams() = default;

Utf8Streams::~Utf8Streams() = default;
