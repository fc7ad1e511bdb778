// Reading and writing the registry's file.
#include "registry_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <string_view>

namespace {

constexpr std::string_view header = "REGEDIT4";
constexpr std::string_view root = "HKEY_CURRENT_USER";
constexpr const char* hexDigits = "0123456789abcdef";

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Takes the prefix off the text; false when it is not there.
bool Take(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

template <class Number>
bool TakeHex(std::string_view& text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return error == std::errc();
}

// "text", where a backslash stands before a quotation mark or a backslash.
bool TakeQuoted(std::string_view& text, std::string& content) {
    if (!Take(text, "\"")) return false;
    for (content.clear(); !text.empty(); text.remove_prefix(1)) {
        if (Take(text, "\"")) return true;
        if (text[0] == '\\') text.remove_prefix(1);
        if (!text.empty()) content += text[0];
    }
    return false;
}

// dword:0000002a  "text"  hex:01,02  hex(7):01,02 (the type in hexadecimal)
std::optional<RegistryValue> ParseValue(std::string_view text) {
    RegistryValue value{REG_BINARY, {}};
    if (text.starts_with('"')) {
        std::string content;
        if (!TakeQuoted(text, content)) return std::nullopt;
        value.type = REG_SZ;
        value.data.assign(content.c_str(), content.c_str() + content.size() + 1);
    } else if (Take(text, "dword:")) {
        DWORD number;
        if (!TakeHex(text, number)) return std::nullopt;
        value.type = REG_DWORD;
        for (int shift = 0; shift < 32; shift += 8) value.data.push_back(static_cast<BYTE>(number >> shift));
    } else {
        if (!Take(text, "hex")) return std::nullopt;
        if (Take(text, "(") && !(TakeHex(text, value.type) && Take(text, ")"))) return std::nullopt;
        if (!Take(text, ":")) return std::nullopt;
        while (!text.empty()) {
            if (!TakeHex(text, value.data.emplace_back())) return std::nullopt;
            if (!Take(text, ",")) break;
        }
    }
    if (!text.empty()) return std::nullopt;
    return value;
}

// A line that is not empty. `current` is the key that the values belong to.
bool ParseLine(std::string_view line, RegistryKeys& keys, RegistryValues*& current) {
    if (Take(line, "[")) {
        if (!line.ends_with(']')) return false;
        line.remove_suffix(1);
        if (!Take(line, root) || !Take(line, "\\") || line.empty()) return false;
        current = &keys[std::string(line)];
        return true;
    }
    std::string name;
    if (current == nullptr || !(Take(line, "@") || TakeQuoted(line, name)) || !Take(line, "=")) return false;
    std::optional<RegistryValue> value = ParseValue(line);
    if (!value) return false;
    (*current)[name] = std::move(*value);
    return true;
}

std::string Quote(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') quoted += '\\';
        quoted += character;
    }
    return quoted + '"';
}

std::string FormatHex(DWORD number, int digits) {
    std::string text;
    while (digits-- > 0) text += hexDigits[number >> (4 * digits) & 0xF];
    return text;
}

// Text that one line can hold.
bool IsPlainText(const RegistryValue& value) {
    return value.type == REG_SZ && !value.data.empty() && value.data.back() == 0 &&
           std::none_of(value.data.begin(), value.data.end() - 1, [](BYTE byte) { return std::iscntrl(byte); });
}

std::string FormatValue(const RegistryValue& value) {
    const std::vector<BYTE>& data = value.data;
    if (IsPlainText(value)) return Quote({reinterpret_cast<const char*>(data.data()), data.size() - 1});
    if (value.type == REG_DWORD && data.size() == 4) {
        DWORD number = 0;
        for (int i = 0; i < 4; ++i) number |= static_cast<DWORD>(data[static_cast<size_t>(i)]) << (8 * i);
        return "dword:" + FormatHex(number, 8);
    }
    std::string text = "hex";
    if (value.type != REG_BINARY) text.append("(").append(FormatHex(value.type, value.type > 0xF ? 8 : 1)).append(")");
    text += ':';
    for (const BYTE byte : data) text.append(FormatHex(byte, 2)).append(",");
    if (!data.empty()) text.pop_back();
    return text;
}

std::string Format(const RegistryKeys& keys) {
    std::string text(header);
    text += '\n';
    for (const auto& [path, values] : keys) {
        text.append("\n[").append(root).append("\\").append(path).append("]\n");
        for (const auto& [name, value] : values) {
            text += name.empty() ? "@" : Quote(name);
            text.append("=").append(FormatValue(value)).append("\n");
        }
    }
    return text;
}

bool WriteWholeFile(const std::filesystem::path& path, const std::string& text) {
    std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "wbe"));
    return file != nullptr && std::fwrite(text.data(), 1, text.size(), file.get()) == text.size() &&
           std::fflush(file.get()) == 0 && fsync(fileno(file.get())) == 0 && std::fclose(file.release()) == 0;
}

}  // namespace

std::filesystem::path GetRegistryPath() {
    const auto get = [](const char* name) {
        const char* value = std::getenv(name);
        return std::filesystem::path(value != nullptr ? value : "");
    };
    // An absolute path, so that it has a directory in any case.
    if (const auto path = get("HOST_REGISTRY"); !path.empty()) return std::filesystem::absolute(path);
    const auto configuration = get("XDG_CONFIG_HOME");
    return (configuration.is_absolute() ? configuration : get("HOME") / ".config") / "faxbook" / "registry";
}

LSTATUS ReadRegistry(RegistryKeys& keys) {
    const std::filesystem::path path = GetRegistryPath();
    std::error_code error;
    if (!std::filesystem::exists(path, error)) return error ? ERROR_READ_FAULT : ERROR_SUCCESS;
    std::ifstream file(path, std::ios::binary);
    RegistryValues* current = nullptr;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        const bool understood = number == 1 ? line == header : line.empty() || ParseLine(line, keys, current);
        if (understood) continue;
        std::fprintf(stderr,
                     "%s:%d: this line is not understood; the registry is neither read nor changed until the line is "
                     "mended or the file is removed\n",
                     path.c_str(), number);
        return ERROR_BADDB;
    }
    return file.eof() ? ERROR_SUCCESS : ERROR_READ_FAULT;
}

RegistryLock::RegistryLock() : directory_(-1) {
    const std::filesystem::path path = GetRegistryPath().parent_path();
    std::error_code error;
    std::filesystem::create_directories(path, error);
    directory_ = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (directory_ >= 0) flock(directory_, LOCK_EX);
}

RegistryLock::~RegistryLock() {
    if (directory_ >= 0) close(directory_);
}

LSTATUS WriteRegistry(const RegistryKeys& keys) {
    const std::filesystem::path path = GetRegistryPath();
    std::filesystem::path newPath = path;
    newPath += ".new";
    std::error_code error;
    if (WriteWholeFile(newPath, Format(keys))) {
        std::filesystem::rename(newPath, path, error);
        if (!error) return ERROR_SUCCESS;
    }
    std::filesystem::remove(newPath, error);
    return ERROR_WRITE_FAULT;
}
