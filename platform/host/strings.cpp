// The string functions of the kernel. Case is that of ASCII letters; Windows compares by the user's language.
#include <windows.h>

#include <cstring>

namespace {

int FoldCase(char character) {
    return character >= 'A' && character <= 'Z' ? character - 'A' + 'a' : static_cast<unsigned char>(character);
}

}  // namespace

extern "C" {

int WINAPI lstrlenA(LPCSTR lpString) {
    return lpString != nullptr ? static_cast<int>(std::strlen(lpString)) : 0;
}

LPSTR WINAPI lstrcpynA(LPSTR lpString1, LPCSTR lpString2, int iMaxLength) {
    if (lpString1 == nullptr || lpString2 == nullptr) return nullptr;
    if (iMaxLength <= 0) return lpString1;
    const std::size_t length = strnlen(lpString2, static_cast<std::size_t>(iMaxLength) - 1);
    std::memcpy(lpString1, lpString2, length);
    lpString1[length] = '\0';
    return lpString1;
}

LPSTR WINAPI lstrcatA(LPSTR lpString1, LPCSTR lpString2) {
    if (lpString1 == nullptr || lpString2 == nullptr) return nullptr;
    std::memcpy(lpString1 + std::strlen(lpString1), lpString2, std::strlen(lpString2) + 1);
    return lpString1;
}

int WINAPI lstrcmpiA(LPCSTR lpString1, LPCSTR lpString2) {
    if (lpString1 == nullptr || lpString2 == nullptr) return (lpString1 != nullptr) - (lpString2 != nullptr);
    for (; FoldCase(*lpString1) == FoldCase(*lpString2); ++lpString1, ++lpString2) {
        if (*lpString1 == '\0') return 0;
    }
    return FoldCase(*lpString1) < FoldCase(*lpString2) ? -1 : 1;
}

}  // extern "C"
