// A version resource (VS_VERSIONINFO): its numbers and its texts. It is read here because the system's functions for it
// are in a library that would be looked for beside the program first.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct VersionBlock {
    std::string fileVersion;  // "1.2.3.4"
    std::string productVersion;
    std::vector<std::pair<std::string, std::string>> texts;  // names and texts of all languages, in order; UTF-8
};

// Nothing when the bytes are another kind of resource or end too early.
std::optional<VersionBlock> ReadVersionBlock(std::string_view bytes);
