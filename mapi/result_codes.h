// The published MAPI result codes, as constants.
#pragma once

#include <windows.h>

#define RESULT(name, code) inline constexpr HRESULT name = static_cast<HRESULT>(code);
#include "mapi/result_codes.inc"
#undef RESULT
