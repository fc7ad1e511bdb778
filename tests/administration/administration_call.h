// One call of DisplayAdminProfiles on a thread of its own, with the registry value that it clears.
#pragma once

#include <windows.h>

#include <future>
#include <string>
#include <thread>

#include "qdxl7rc.h"

class AdministrationCall {
  public:
    // Sets the profile's ProfileLock to 1 and makes the call, with a visible parent window.
    AdministrationCall(HMODULE library, HMODULE resources, std::string profile);

    DWORD ThreadId() const { return threadId_; }
    // "RESULT LAST_RESULT PROFILE_LOCK" once the call has returned; throws std::runtime_error after a wait in vain.
    std::string Finish();

  private:
    void Run(decltype(&DisplayAdminProfiles) display, decltype(&GetLastVOKError) getLast, HMODULE resources);

    std::string profile_;
    DWORD threadId_ = 0;
    std::promise<DWORD> started_;
    std::promise<std::string> returned_;
    std::future<std::string> result_;
    std::thread thread_;
};
