// Asks the environment each time: a program may change it while it runs.
#include "diagnostics_output.h"

#include <cstdio>
#include <exception>
#include <mutex>
#include <optional>
#include <string>

#include "platform/system/append_file.h"
#include "platform/system/environment.h"
#include "platform/system/files.h"
#include "text/code_pages.h"
#include "text/control_characters.h"

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

namespace {

void WriteLine(std::string_view line, bool isTaken) {
    const std::optional<std::filesystem::path> destination = EnvironmentPath(diagnosticsVariable);
    if (!destination) {
        if (!isTaken) WriteToStandardError(line);
    } else if (*destination != "off") {
        Append(*destination, line);
    }
}

std::mutex receiverMutex;
VOKMessageReceiver registeredReceiver = {};

VOKMessageReceiver GetMessageReceiver() {
    const std::lock_guard lock(receiverMutex);
    return registeredReceiver;
}

}  // namespace

std::string FormatMessage(const VOKMessageReport& message) {
    std::string text = *message.head.path != '\0' ? message.head.path : message.head.where;
    if (message.head.line != 0) text.append(":").append(std::to_string(message.head.line));
    text.append(": ").append(message.what);
    if (*message.advice != '\0') text.append("; ").append(message.advice);
    // A value from a file must not begin a line of its own, and a terminal must not obey it.
    text = WithoutControls(text);
    text.push_back('\n');
    return text;
}

void DeliverMessage(const VOKMessageReport& message) noexcept {
    try {
        // The receiver may call the provider: nothing is locked meanwhile.
        const VOKMessageReceiver receiver = GetMessageReceiver();
        if (receiver.OnMessage != nullptr) receiver.OnMessage(receiver.context, &message);
        WriteLine(FormatMessage(message), receiver.OnMessage != nullptr);
    } catch (const std::exception&) {
        for (const char* const part : {message.head.path, message.head.where, ": ", message.what, "\n"})
            WriteToStandardError(part);
    }
}

void SetMessageReceiver(const VOKMessageReceiver& receiver) {
    const std::lock_guard lock(receiverMutex);
    registeredReceiver = receiver;
}
