// CDLLEntry: the library's module object.
#pragma once

#include "class_library/cwinapp.h"

class CDLLEntry final : public CWinApp {
  public:
    constexpr CDLLEntry() = default;
    // Loads the line separator of the details text, which is the only work at loading.
    BOOL InitInstance() override;
    // Closes nothing: handles still open are abandoned, and the provider stays loaded.
    int ExitInstance() override;
};
