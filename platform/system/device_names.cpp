// CON and its kind, COM1 and LPT1 and theirs.
#include "platform/system/device_names.h"

#include <windows.h>

#include <algorithm>

namespace {

bool IsSame(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()), TRUE) ==
           CSTR_EQUAL;
}

}  // namespace

bool IsDeviceName(std::wstring_view name) {
    constexpr std::wstring_view whole[] = {L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$"};
    constexpr std::wstring_view numbered[] = {L"COM", L"LPT"};
    constexpr std::wstring_view digits = L"0123456789\u00B9\u00B2\u00B3";
    name = name.substr(0, name.find_first_of(L".:"));
    while (name.ends_with(L' ')) name.remove_suffix(1);
    const auto isName = [&](std::wstring_view known) { return IsSame(name, known); };
    if (std::ranges::any_of(whole, isName)) return true;
    if (name.size() != 4 || digits.find(name.back()) == std::wstring_view::npos) return false;
    name.remove_suffix(1);
    return std::ranges::any_of(numbered, isName);
}
