// faxbook: reads fax destinations through QDXL7RC.DLL at the command line.
#include <exception>
#include <iostream>
#include <new>

#include "command_failure.h"
#include "command_line.h"
#include "program.h"

int main(int argc, char** argv) {
    const Utf8Streams streams;
    std::ios::sync_with_stdio(false);
    int exitCode = exitFailure;
    try {
        exitCode = RunCommandLine(ProgramArguments(argc, argv), std::cout, std::cerr);
        std::cout.flush();
        if (!std::cout) throw CommandFailure("cannot write the output; see that its disk has room");
    } catch (const std::bad_alloc&) {
        std::cerr << "faxbook: there is not enough memory; close other programs or read a smaller address book\n";
        exitCode = exitFailure;
    } catch (const std::exception& error) {
        std::cerr << "faxbook: " << error.what() << '\n';
        exitCode = exitFailure;
    }
    return exitCode;
}
