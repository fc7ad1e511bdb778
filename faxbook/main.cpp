// faxbook: reads fax destinations through QDXL7RC.DLL at the command line.
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

#include "command_line.h"
#include "terminal/program.h"
#include "text/characters.h"

int main(int argc, char** argv) {
    UseSystemLibrariesOnly();
    // First, as it gives the streams other buffers.
    std::ios::sync_with_stdio(false);
    const StandardStreams streams;
    Terminal output = streams.Output();
    // As programs of the command line agreed: https://no-color.org
    const char* noColour = std::getenv(noColourVariable);
    if (noColour && *noColour != '\0') output.takesCodes = false;
    Console console(std::cout, std::cerr, output);
    int exitCode = exitFailure;
    try {
        if (streams.HasPlaceForProgress()) {
            console.ShowProgress(
                [&streams](std::string_view line) { streams.DrawProgress(TakeLine(line, streams.Notes().width - 1)); });
        }
        exitCode = RunCommandLine(ProgramArguments(argc, argv), console);
    } catch (const std::bad_alloc&) {
        std::cerr << "faxbook: there is not enough memory; close other programs or read a smaller address book\n";
        exitCode = exitFailure;
    } catch (const std::exception& error) {
        console.Note(error.what());
        exitCode = exitFailure;
    }
    std::cout.flush();
    if (!streams.OutputFailure().empty()) {
        console.Note("cannot write the output: " + streams.OutputFailure());
        exitCode = exitFailure;
    }
    return exitCode;
}
