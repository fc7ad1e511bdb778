// The host build's <windows.h>: the types, values and functions of Windows that this system uses, declared as Windows
// declares them, and nothing else. The functions are in the shared library host_windows, in the files of this folder.
#pragma once

#include <cstddef>
#include <cstdint>

// Calling conventions: 64-bit Windows has one, and so has the host.
#define WINAPI
#define CALLBACK
#define STDMETHODCALLTYPE
#define STDAPICALLTYPE
#define STDAPI_(type) extern "C" __attribute__((visibility("default"))) type STDAPICALLTYPE
#define STDAPI STDAPI_(HRESULT)

// 64-bit Windows keeps `long` at 32 bits, and a WCHAR is one UTF-16 unit.
using BYTE = unsigned char;
using WORD = std::uint16_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using INT = int;
using UINT = unsigned int;
using BOOL = int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using HRESULT = std::int32_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using CHAR = char;
using WCHAR = char16_t;

using LPVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using LPBOOL = BOOL*;
using LPDWORD = DWORD*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;

// Distinct handle types, as Windows has them with STRICT; a module and an instance are the same.
using HWND = struct HWND__*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
using HKEY = struct HKEY__*;
using PHKEY = HKEY*;

using FARPROC = INT_PTR(WINAPI*)();

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    friend bool operator==(const GUID&, const GUID&) = default;
};
using IID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
inline bool IsEqualGUID(REFGUID first, REFGUID second) {
    return first == second;
}
inline bool IsEqualIID(REFIID first, REFIID second) {
    return first == second;
}

#define TRUE 1
#define FALSE 0
#define MAX_PATH 260

// Results: negative is failure.
#define SUCCEEDED(result) (static_cast<HRESULT>(result) >= 0)
#define FAILED(result) (static_cast<HRESULT>(result) < 0)
inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFF);
inline constexpr HRESULT E_ACCESSDENIED = static_cast<HRESULT>(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);

// Error codes: of the thread (GetLastError) and, as LSTATUS, of the registry.
using LSTATUS = LONG;
inline constexpr LONG ERROR_SUCCESS = 0;
inline constexpr LONG ERROR_FILE_NOT_FOUND = 2;
inline constexpr LONG ERROR_ACCESS_DENIED = 5;
inline constexpr LONG ERROR_INVALID_HANDLE = 6;
inline constexpr LONG ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr LONG ERROR_WRITE_FAULT = 29;
inline constexpr LONG ERROR_READ_FAULT = 30;
inline constexpr LONG ERROR_INVALID_PARAMETER = 87;
inline constexpr LONG ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr LONG ERROR_MOD_NOT_FOUND = 126;
inline constexpr LONG ERROR_PROC_NOT_FOUND = 127;
inline constexpr LONG ERROR_ENVVAR_NOT_FOUND = 203;
inline constexpr LONG ERROR_MORE_DATA = 234;
inline constexpr LONG ERROR_INVALID_FLAGS = 1004;
inline constexpr LONG ERROR_BADDB = 1009;
inline constexpr LONG ERROR_KEY_DELETED = 1018;
inline constexpr LONG ERROR_NO_UNICODE_TRANSLATION = 1113;
inline constexpr LONG ERROR_DLL_INIT_FAILED = 1114;
inline constexpr LONG ERROR_INVALID_WINDOW_HANDLE = 1400;
inline constexpr LONG ERROR_INVALID_INDEX = 1413;
inline constexpr LONG ERROR_RESOURCE_NAME_NOT_FOUND = 1814;

inline constexpr DWORD DLL_PROCESS_DETACH = 0;
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;

inline constexpr int GWL_STYLE = -16;
inline constexpr DWORD WS_OVERLAPPED = 0x00000000;
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_POPUP = 0x80000000;

using REGSAM = DWORD;
#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<INT_PTR>(static_cast<LONG>(0x80000001))))
inline constexpr REGSAM KEY_QUERY_VALUE = 0x0001;
inline constexpr REGSAM KEY_SET_VALUE = 0x0002;
inline constexpr REGSAM KEY_READ = 0x20019;
inline constexpr REGSAM KEY_WRITE = 0x20006;
inline constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;
inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1;
inline constexpr DWORD REG_OPENED_EXISTING_KEY = 2;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;
struct SECURITY_ATTRIBUTES;

inline constexpr DWORD LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR = 0x100;
inline constexpr DWORD LOAD_LIBRARY_SEARCH_SYSTEM32 = 0x800;

inline constexpr UINT CP_ACP = 0;
inline constexpr UINT CP_UTF8 = 65001;
inline constexpr DWORD MB_ERR_INVALID_CHARS = 0x08;
inline constexpr DWORD WC_NO_BEST_FIT_CHARS = 0x400;
#define MAX_DEFAULTCHAR 2
#define MAX_LEADBYTES 12
struct CPINFO {
    UINT MaxCharSize;
    BYTE DefaultChar[MAX_DEFAULTCHAR];
    BYTE LeadByte[MAX_LEADBYTES];  // pairs of a first and a last lead byte, ended by a pair of zeros
};
using LPCPINFO = CPINFO*;

#pragma GCC visibility push(default)
extern "C" {
// process.cpp
DWORD WINAPI GetLastError();
void WINAPI SetLastError(DWORD dwErrCode);
DWORD WINAPI GetEnvironmentVariableA(LPCSTR lpName, LPSTR lpBuffer, DWORD nSize);
BOOL WINAPI IsBadWritePtr(LPVOID lp, UINT_PTR ucb);

// modules.cpp
HMODULE WINAPI LoadLibraryA(LPCSTR lpLibFileName);
// Here the flags have no meaning: this system looks for what a library needs where the library says.
HMODULE WINAPI LoadLibraryExA(LPCSTR lpLibFileName, void* hFile, DWORD dwFlags);
FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR lpProcName);
BOOL WINAPI FreeLibrary(HMODULE hLibModule);
DWORD WINAPI GetModuleFileNameA(HMODULE hModule, LPSTR lpFilename, DWORD nSize);
DWORD WINAPI GetModuleFileNameW(HMODULE hModule, LPWSTR lpFilename, DWORD nSize);
HMODULE WINAPI GetModuleHandleA(LPCSTR lpModuleName);

// resources.cpp
int WINAPI LoadStringA(HINSTANCE hInstance, UINT uID, LPSTR lpBuffer, int cchBufferMax);

// strings.cpp
int WINAPI lstrlenA(LPCSTR lpString);
LPSTR WINAPI lstrcpynA(LPSTR lpString1, LPCSTR lpString2, int iMaxLength);
LPSTR WINAPI lstrcatA(LPSTR lpString1, LPCSTR lpString2);
int WINAPI lstrcmpiA(LPCSTR lpString1, LPCSTR lpString2);

// code_pages.cpp
UINT WINAPI GetACP();
BOOL WINAPI GetCPInfo(UINT CodePage, LPCPINFO lpCPInfo);
BOOL WINAPI IsDBCSLeadByte(BYTE TestChar);
int WINAPI MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr, int cbMultiByte,
                               LPWSTR lpWideCharStr, int cchWideChar);
int WINAPI WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr, int cchWideChar,
                               LPSTR lpMultiByteStr, int cbMultiByte, LPCSTR lpDefaultChar, LPBOOL lpUsedDefaultChar);

// windows.cpp
BOOL WINAPI IsWindow(HWND hWnd);
HWND WINAPI GetParent(HWND hWnd);
LONG_PTR WINAPI GetWindowLongPtrA(HWND hWnd, int nIndex);
BOOL WINAPI IsWindowEnabled(HWND hWnd);
BOOL WINAPI EnableWindow(HWND hWnd, BOOL bEnable);

// registry.cpp
LSTATUS WINAPI RegCreateKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD Reserved, LPSTR lpClass, DWORD dwOptions,
                               REGSAM samDesired, const SECURITY_ATTRIBUTES* lpSecurityAttributes, PHKEY phkResult,
                               LPDWORD lpdwDisposition);
LSTATUS WINAPI RegOpenKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD ulOptions, REGSAM samDesired, PHKEY phkResult);
LSTATUS WINAPI RegQueryValueExA(HKEY hKey, LPCSTR lpValueName, LPDWORD lpReserved, LPDWORD lpType, LPBYTE lpData,
                                LPDWORD lpcbData);
LSTATUS WINAPI RegSetValueExA(HKEY hKey, LPCSTR lpValueName, DWORD Reserved, DWORD dwType, const BYTE* lpData,
                              DWORD cbData);
LSTATUS WINAPI RegDeleteKeyA(HKEY hKey, LPCSTR lpSubKey);
LSTATUS WINAPI RegCloseKey(HKEY hKey);
}
#pragma GCC visibility pop

// A module's entry point, which the module defines and module_glue.cpp announces.
extern "C" BOOL WINAPI DllMain(HINSTANCE hinstDLL, DWORD fdwReason, LPVOID lpvReserved);
