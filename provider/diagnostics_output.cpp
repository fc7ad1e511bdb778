// Asks the environment each time: a program may change it while it runs.
#include "diagnostics_output.h"

#include <cstdio>
#include <exception>
#include <mutex>
#include <string>

#include "platform/system/append_file.h"
#include "platform/system/environment.h"
#include "platform/system/files.h"
#include "text/code_pages.h"

namespace {

void WriteToStandardError(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void Append(const std::filesystem::path& file, std::string_view line) {
    static std::mutex mutex;
    static std::filesystem::path complainedOf;
    const std::lock_guard lock(mutex);
    const std::error_code error = AppendToFile(file, line);
    if (!error) return;
    if (complainedOf != file)
        WriteToStandardError(Utf8Of(file) + ": diagnostics cannot be written: " + FromActiveCodePage(error.message()) +
                             "; they follow here; name another file in " + diagnosticsVariable + "\n");
    complainedOf = file;
    WriteToStandardError(line);
}

}  // namespace

void WriteDiagnostics(std::string_view line) noexcept {
    try {
        const std::optional<std::filesystem::path> destination = EnvironmentPath(diagnosticsVariable);
        if (!destination)
            WriteToStandardError(line);
        else if (*destination != "off")
            Append(*destination, line);
    } catch (const std::exception&) {
        WriteToStandardError(line);
    }
}
