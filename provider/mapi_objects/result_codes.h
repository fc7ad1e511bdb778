// The MAPI result codes that this provider answers, beside those that are shared with callers.
#pragma once

#include "provider/mapi_types.h"

inline constexpr HRESULT MAPI_E_CALL_FAILED = MakeMapiResult(0x80004005);
inline constexpr HRESULT MAPI_E_NO_ACCESS = MakeMapiResult(0x80070005);
inline constexpr HRESULT MAPI_E_NOT_ENOUGH_MEMORY = MakeMapiResult(0x8007000E);
inline constexpr HRESULT MAPI_E_INVALID_PARAMETER = MakeMapiResult(0x80070057);
inline constexpr HRESULT MAPI_E_INTERFACE_NOT_SUPPORTED = MakeMapiResult(0x80004002);
inline constexpr HRESULT MAPI_E_BAD_CHARWIDTH = MakeMapiResult(0x80040103);
inline constexpr HRESULT MAPI_E_INVALID_ENTRYID = MakeMapiResult(0x80040107);
inline constexpr HRESULT MAPI_E_CORRUPT_DATA = MakeMapiResult(0x8004011B);
inline constexpr HRESULT MAPI_E_UNABLE_TO_COMPLETE = MakeMapiResult(0x80040400);
inline constexpr HRESULT MAPI_E_COLLISION = MakeMapiResult(0x80040604);
// Some of the values asked for are missing; the others are there.
inline constexpr HRESULT MAPI_W_ERRORS_RETURNED = MakeMapiResult(0x00040380);

// Flags that callers may pass. This provider's strings are 8-bit.
inline constexpr ULONG MAPI_UNICODE = 0x80000000;
inline constexpr ULONG CONVENIENT_DEPTH = 0x00000001;

// Values of PR_DISPLAY_TYPE.
inline constexpr LONG DT_MAILUSER = 0x00000000;
inline constexpr LONG DT_DISTLIST = 0x00000001;
inline constexpr LONG DT_LOCAL = 0x00030000;

inline constexpr ULONG PT_UNSPECIFIED = 0x0000;
