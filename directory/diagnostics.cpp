// Writes the lines where the environment says.
#include "diagnostics.h"

#include <cstdio>
#include <fstream>

#include "platform/environment.h"
#include "platform/files.h"
#include "text/ascii.h"

namespace {

// A value from a file must not begin a line of its own, and a terminal must not obey it: it does so for the control
// characters of ASCII, and for U+0080 to U+009F.
void MakeHarmless(std::string& utf8) {
    for (size_t i = 0; i < utf8.size(); ++i) {
        const bool endsSecondSet = i > 0 && utf8[i - 1] == '\xC2' && static_cast<unsigned char>(utf8[i]) < 0xA0;
        if (endsSecondSet) utf8[i - 1] = ' ';
        if (endsSecondSet || IsControl(utf8[i])) utf8[i] = ' ';
    }
}

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
    MakeHarmless(text);
    text.push_back('\n');
    const auto [position, isNew] = said_.insert(std::move(text));
    if (!isNew) return;
    if (sink_ != nullptr)
        sink_->Take(file, line, what, advice);
    else
        Write(*position);
}
