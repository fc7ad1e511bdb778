// Reads the resources of the loaded library in the formats that Windows documents for them.
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "commands/command_failure.h"
#include "developer/dialog_template.h"
#include "developer/other_resources.h"
#include "developer/version_block.h"

namespace {

struct Resource {
    UINT id;
    std::string_view bytes;  // in the module
};

// The resources of a type that have numbers for names, in the order of the module.
std::vector<Resource> ReadResources(HMODULE module, LPCSTR type) {
    std::vector<Resource> resources;
    const auto add = [](HMODULE owner, LPCSTR resourceType, LPSTR name, LONG_PTR parameter) -> BOOL {
        if (!IS_INTRESOURCE(name)) return TRUE;
        const HRSRC found = FindResourceA(owner, name, resourceType);
        const HGLOBAL loaded = found ? LoadResource(owner, found) : nullptr;
        const void* data = loaded ? LockResource(loaded) : nullptr;
        if (!data) return TRUE;
        reinterpret_cast<std::vector<Resource>*>(parameter)->push_back(
            {static_cast<UINT>(reinterpret_cast<ULONG_PTR>(name)),
             {static_cast<const char*>(data), SizeofResource(owner, found)}});
        return TRUE;
    };
    EnumResourceNamesA(module, type, add, reinterpret_cast<LONG_PTR>(&resources));
    return resources;
}

template <typename Value>
std::optional<Value> ReadAt(std::string_view bytes, size_t offset) {
    static_assert(std::is_trivially_copyable_v<Value>);
    if (offset > bytes.size() || bytes.size() - offset < sizeof(Value)) return std::nullopt;
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof(value));
    return value;
}

void AddDialogs(HMODULE module, Table& table, Console& console) {
    for (const Resource& resource : ReadResources(module, RT_DIALOG)) {
        const std::optional<DialogTemplate> dialog = ReadDialogTemplate(resource.bytes);
        if (!dialog) {
            console.Note("dialog " + std::to_string(resource.id) + " is no complete extended dialog template");
            continue;
        }
        const std::string id = std::to_string(resource.id);
        table.AddRow({"dialog", id, "", dialog->caption});
        for (const DialogControl& control : dialog->controls) {
            table.AddRow({"control", id, std::to_string(control.id), control.text});
        }
    }
}

// Icon group: a header of three 16-bit values, the last one the number of images, then 14 bytes for each image.
void AddIconGroups(HMODULE module, Table& table) {
    constexpr size_t headerSize = 6;
    constexpr size_t imageSize = 14;
    constexpr size_t bitCountOffset = 6;
    for (const Resource& resource : ReadResources(module, RT_GROUP_ICON)) {
        std::string images;
        const size_t count = ReadAt<uint16_t>(resource.bytes, 4).value_or(0);
        for (size_t i = 0; i < count; ++i) {
            const size_t image = headerSize + i * imageSize;
            const auto width = ReadAt<uint8_t>(resource.bytes, image);
            const auto height = ReadAt<uint8_t>(resource.bytes, image + 1);
            const auto bitCount = ReadAt<uint16_t>(resource.bytes, image + bitCountOffset);
            if (!width || !height || !bitCount) break;
            images += (images.empty() ? "" : ", ") + std::to_string(*width) + "x" + std::to_string(*height) + " " +
                      std::to_string(*bitCount) + "-bit";
        }
        table.AddRow({"icon group", std::to_string(resource.id), "", images});
    }
}

void AddVersions(HMODULE module, Table& table, Console& console) {
    for (const Resource& resource : ReadResources(module, RT_VERSION)) {
        const std::optional<VersionBlock> version = ReadVersionBlock(resource.bytes);
        const std::string id = std::to_string(resource.id);
        if (!version) {
            console.Note("version " + id + " is no complete version block");
            continue;
        }
        table.AddRow({"version", id, "",
                      "file version " + version->fileVersion + ", product version " + version->productVersion});
        for (const auto& [name, text] : version->texts) table.AddRow({"version", id, "", name + ": " + text});
    }
}

void AddManifests(HMODULE module, Table& table) {
    for (const Resource& resource : ReadResources(module, RT_MANIFEST)) {
        table.AddRow({"manifest", std::to_string(resource.id), "", resource.bytes});
    }
}

}  // namespace

void AddOtherResources(HMODULE module, Table& table, Console& console) {
    AddDialogs(module, table, console);
    AddIconGroups(module, table);
    AddVersions(module, table, console);
    AddManifests(module, table);
}
