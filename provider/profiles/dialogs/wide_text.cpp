// Both conversions by the system.
#include "profiles/dialogs/wide_text.h"

#include <windows.h>

#include <climits>
#include <stdexcept>

namespace {

int ConversionLength(size_t length) {
    if (length > INT_MAX / 4) throw std::length_error("text too long to convert");
    return static_cast<int>(length);
}

}  // namespace

std::wstring WideFromUtf8(std::string_view utf8) {
    const int length = ConversionLength(utf8.size());
    std::wstring wide(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), ConversionLength(wide.size()));
    return wide;
}

std::string Utf8FromWide(std::wstring_view wide) {
    const int length = ConversionLength(wide.size());
    const int needed = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), needed, nullptr, nullptr);
    return utf8;
}
