// What a program asks of its own process: the last error, the environment, and whether memory can be written.
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

thread_local DWORD lastError = 0;

// Has the kernel add 0 to the word at the address: an atomic write that changes nothing and that reports instead of
// raising a signal. (A thread that waits on that very word could be woken, which every waiter has to expect.)
bool IsWritable(UINT_PTR word) {
    constexpr int addNothing = FUTEX_OP(FUTEX_OP_ADD, 0, FUTEX_OP_CMP_EQ, 0);
    return syscall(SYS_futex, word, FUTEX_WAKE_OP | FUTEX_PRIVATE_FLAG, 0, nullptr, word, addNothing) >= 0 ||
           errno != EFAULT;
}

}  // namespace

extern "C" {

DWORD WINAPI GetLastError() {
    return lastError;
}

void WINAPI SetLastError(DWORD dwErrCode) {
    lastError = dwErrCode;
}

DWORD WINAPI GetEnvironmentVariableA(LPCSTR lpName, LPSTR lpBuffer, DWORD nSize) {
    const char* value = lpName != nullptr ? std::getenv(lpName) : nullptr;
    if (value == nullptr) {
        SetLastError(ERROR_ENVVAR_NOT_FOUND);
        return 0;
    }
    const auto length = static_cast<DWORD>(std::strlen(value));
    if (length >= nSize) return length + 1;
    std::memcpy(lpBuffer, value, length + 1);
    return length;
}

BOOL WINAPI IsBadWritePtr(LPVOID lp, UINT_PTR ucb) {
    if (ucb == 0) return FALSE;
    const auto first = reinterpret_cast<UINT_PTR>(lp);
    const UINT_PTR last = first + (ucb - 1);
    if (last < first) return TRUE;
    static const auto pageSize = static_cast<UINT_PTR>(sysconf(_SC_PAGESIZE));
    const UINT_PTR lastPage = last & ~(pageSize - 1);
    for (UINT_PTR page = first & ~(pageSize - 1);; page += pageSize) {
        if (!IsWritable(page)) return TRUE;
        if (page == lastPage) return FALSE;
    }
}

}  // extern "C"
