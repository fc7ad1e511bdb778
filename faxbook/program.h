// What the system gives a program and takes from it: arguments and standard streams, as UTF-8.
#pragma once

#include <string>
#include <vector>

// The arguments, the program's own name first.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// While it lives, bytes written to the standard streams reach their files unchanged, and a console shows them as UTF-8.
class Utf8Streams {
  public:
    Utf8Streams();
    ~Utf8Streams();
    Utf8Streams(const Utf8Streams&) = delete;
    Utf8Streams& operator=(const Utf8Streams&) = delete;

  private:
    unsigned int consoleCodePage = 0;  // to be restored; 0: there is no console
};
