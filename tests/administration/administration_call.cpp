// The call, and ProfileLock before and after it.
#include "administration_call.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace {

constexpr std::chrono::seconds longestWait{120};
constexpr char settingsKey[] = "Software\\Quorvane\\Tessivar Address Book\\Settings\\";
constexpr char lockValue[] = "ProfileLock";

template <class Function>
Function Find(HMODULE library, const char* name) {
    const auto function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    if (function == nullptr) throw std::runtime_error(std::string("no export ") + name);
    return function;
}

DWORD ReadLock(const std::string& profile) {
    DWORD lock = 0, size = sizeof lock;
    if (RegGetValueA(HKEY_CURRENT_USER, (settingsKey + profile).c_str(), lockValue, RRF_RT_REG_DWORD, nullptr, &lock,
                     &size) != ERROR_SUCCESS)
        throw std::runtime_error("ProfileLock cannot be read");
    return lock;
}

void WriteLock(const std::string& profile, DWORD lock) {
    if (RegSetKeyValueA(HKEY_CURRENT_USER, (settingsKey + profile).c_str(), lockValue, REG_DWORD, &lock, sizeof lock) !=
        ERROR_SUCCESS)
        throw std::runtime_error("ProfileLock cannot be written");
}

struct WindowCloser {
    using pointer = HWND;
    void operator()(HWND window) const { DestroyWindow(window); }
};

}  // namespace

AdministrationCall::AdministrationCall(HMODULE library, HMODULE resources, std::string profile)
    : profile_(std::move(profile)), result_(returned_.get_future()) {
    const auto display = Find<decltype(&DisplayAdminProfiles)>(library, "DisplayAdminProfiles");
    const auto getLast = Find<decltype(&GetLastVOKError)>(library, "GetLastVOKError");
    WriteLock(profile_, 1);
    thread_ = std::thread([=, this] { Run(display, getLast, resources); });
    threadId_ = started_.get_future().get();
}

void AdministrationCall::Run(decltype(&DisplayAdminProfiles) display, decltype(&GetLastVOKError) getLast,
                             HMODULE resources) {
    const std::unique_ptr<HWND, WindowCloser> parent(CreateWindowExW(0, L"STATIC", L"Fax program",
                                                                     WS_OVERLAPPEDWINDOW | WS_VISIBLE, 120, 60, 760,
                                                                     600, nullptr, nullptr, nullptr, nullptr));
    started_.set_value(GetCurrentThreadId());
    const int32_t result = display(reinterpret_cast<uintptr_t>(parent.get()), profile_.c_str(), 0, 0, resources);
    char last[16];
    std::snprintf(last, sizeof last, "0x%08X", static_cast<unsigned>(getLast(nullptr)));
    returned_.set_value(std::to_string(result) + " " + last);
}

std::string AdministrationCall::Finish() {
    if (result_.wait_for(longestWait) != std::future_status::ready) throw std::runtime_error("still open");
    thread_.join();
    return result_.get() + " " + std::to_string(ReadLock(profile_));
}
