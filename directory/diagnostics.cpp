// Writes the lines where the environment says.
#include "diagnostics.h"

#include <cstdio>
#include <fstream>

#include "platform/environment.h"
#include "platform/files.h"

namespace {

void Write(const std::string& line) {
    const std::optional<std::filesystem::path> destination = EnvironmentPath(diagnosticsVariable);
    if (!destination) {
        std::fwrite(line.data(), 1, line.size(), stderr);
    } else if (*destination != "off") {
        std::ofstream file(*destination, std::ios::binary | std::ios::app);
        file.write(line.data(), static_cast<std::streamsize>(line.size()));
    }
}

}  // namespace

void Diagnostics::Report(const std::filesystem::path& file, size_t line, std::string_view what,
                         std::string_view advice) {
    std::string text = Utf8Of(file);
    if (line != 0) text.append(":").append(std::to_string(line));
    text.append(": ").append(what);
    if (!advice.empty()) text.append("; ").append(advice);
    // A value from a file must not begin a line of its own.
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    text.push_back('\n');
    const auto [position, isNew] = said_.insert(std::move(text));
    if (!isNew) return;
    if (sink_ != nullptr)
        sink_->Take(file, line, what, advice);
    else
        Write(*position);
}
