// Loading from the string table of this library's own module, whatever module the caller names for its resources.
#include "resources/string_table.h"

#include "class_library/cwinapp.h"

namespace {

// A cut text leaves less than one character of the buffer unused; no code page has longer characters.
constexpr size_t longestCharacter = 4;

}  // namespace

std::string LoadLibraryString(UINT id) {
    std::string text(160, '\0');
    for (;;) {
        const auto length =
            static_cast<size_t>(LoadStringA(GetModuleInstance(), id, text.data(), static_cast<int>(text.size())));
        const bool isWhole = length + longestCharacter < text.size();
        if (isWhole) {
            text.resize(length);
            return text;
        }
        text.resize(text.size() * 2);
    }
}
