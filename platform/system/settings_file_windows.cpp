// ReplaceFileW would keep more of a file, but there is a moment in which the file has no name: a crash then loses it.
#include <windows.h>

#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

#include "platform/system/handles.h"
#include "platform/system/settings_file_system.h"

namespace fs = std::filesystem;

namespace settings_file {

namespace {

constexpr std::wstring_view longPathPrefix = L"\\\\?\\";
constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

bool IsNotThere(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

Attempt Refuse(SettingsFile& file, const FileProblem& problem) {
    file.problem = problem;
    return Attempt::Failed;
}

// A file or folder that is there.
Handle Open(const fs::path& path, DWORD access) {
    return OwnedHandle(
        CreateFileW(path.c_str(), access, sharedByAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// The file's list of access, with what says how it was inherited.
std::vector<unsigned char> ReadRights(const fs::path& path) {
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<unsigned char> rights(size);
    if (size != 0 && !GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size))
        rights.clear();
    return rights;
}

// Entry by entry, for what is inherited anew would be the rights of who changes the file.
bool CopyRights(const fs::path& from, const fs::path& to) {
    std::vector<unsigned char> rights = ReadRights(from);
    if (rights.empty()) return false;
    if (rights == ReadRights(to)) return true;
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (!GetSecurityDescriptorControl(rights.data(), &control, &revision)) return false;
    if ((control & SE_DACL_AUTO_INHERITED) != 0)
        SetSecurityDescriptorControl(rights.data(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
    return SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data()) != 0;
}

// Renames also while others have the file open, if they share its deletion. Windows 10 can do so on its own file
// systems.
bool RenameOverOpenFile(const fs::path& from, const fs::path& to) {
    constexpr auto fileRenameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
    constexpr DWORD replaceIfExists = 1, posixSemantics = 2;
    struct Information {
        DWORD flags;
        HANDLE folder;
        DWORD nameBytes;
        WCHAR name[1];
    };
    const std::wstring& name = to.native();
    std::vector<unsigned char> bytes(sizeof(Information) + name.size() * sizeof(WCHAR));
    const Information fixed = {
        replaceIfExists | posixSemantics, nullptr, static_cast<DWORD>(name.size() * sizeof(WCHAR)), {}};
    std::memcpy(bytes.data(), &fixed, sizeof fixed);
    std::memcpy(bytes.data() + offsetof(Information, name), name.data(), name.size() * sizeof(WCHAR));
    const Handle file = Open(from, GENERIC_WRITE | DELETE);
    if (!file ||
        !SetFileInformationByHandle(file.get(), fileRenameInfoEx, bytes.data(), static_cast<DWORD>(bytes.size())))
        return false;
    FlushFileBuffers(file.get());
    return true;
}

}  // namespace

// Of a folder's listing, which has links as such. Of a name that is too long for it the system says that it is not
// there.
bool IsNameFree(const fs::path& path) {
    constexpr size_t longestName = 255;
    const std::wstring& whole = path.native();
    if (path.filename().native().size() > longestName) return false;
    if (whole.size() >= MAX_PATH && !whole.starts_with(longPathPrefix)) return false;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return IsNotThere(GetLastError());
    FindClose(search);
    return false;
}

bool IsFolder(const fs::path& path) {
    const Handle folder = Open(path, FILE_READ_ATTRIBUTES);
    BY_HANDLE_FILE_INFORMATION information;
    return folder && GetFileInformationByHandle(folder.get(), &information) &&
           (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

Attempt Read(const fs::path& path, SettingsFile& file) {
    file = {SettingsFile::State::Unreadable, {}, {}};
    const Handle opened = Open(path, GENERIC_READ);
    if (!opened) {
        const DWORD error = GetLastError();
        const bool isPassing = IsHeldByOthers(path, error);
        if (IsNotThere(error))
            file.state = SettingsFile::State::Missing;
        else
            file.problem = isPassing ? isInUse : error == ERROR_CANT_RESOLVE_FILENAME ? leadsNowhere : notReadable;
        return isPassing ? Attempt::InTheWay : Attempt::Failed;
    }
    BY_HANDLE_FILE_INFORMATION information;
    if (GetFileType(opened.get()) != FILE_TYPE_DISK || !GetFileInformationByHandle(opened.get(), &information) ||
        (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return Refuse(file, noFile);
    std::string part(bytesAtOnce, '\0');
    for (DWORD size = 0;;) {
        if (!ReadFile(opened.get(), part.data(), static_cast<DWORD>(part.size()), &size, nullptr)) {
            const bool isPassing = IsHeldByOthers(path, GetLastError());
            file.problem = isPassing ? isInUse : endsEarly;
            return isPassing ? Attempt::InTheWay : Attempt::Failed;
        }
        if (size == 0) break;
        if (file.bytes.size() + size > mostBytes) return Refuse(file, tooLarge);
        file.bytes.append(part.data(), size);
    }
    file.state = SettingsFile::State::Read;
    return Attempt::Succeeded;
}

// The prefix for long paths goes where it is not needed, for some functions of the C library do not know it.
fs::path FollowLinks(const fs::path& path) {
    const Handle file = Open(path, FILE_READ_ATTRIBUTES);
    std::wstring real(GetFinalPathNameByHandleW(file.get(), nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
    const size_t length =
        GetFinalPathNameByHandleW(file.get(), real.data(), static_cast<DWORD>(real.size()), FILE_NAME_NORMALIZED);
    real.resize(length < real.size() ? length : 0);
    // There are volumes of which the system tells no path; what is no link there is what it was called.
    if (real.empty()) return (GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_REPARSE_POINT) == 0 ? path : fs::path();
    constexpr std::wstring_view serverPrefix = L"\\\\?\\UNC\\";
    if (real.size() >= MAX_PATH || !real.starts_with(longPathPrefix)) return real;
    if (real.starts_with(serverPrefix)) return L"\\\\" + real.substr(serverPrefix.size());
    return real.substr(longPathPrefix.size());
}

FileProblem WriteNewFile(const fs::path& path, const fs::path* replaced, std::string_view bytes, bool& isMade) {
    constexpr DWORD keptAttributes =
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ENCRYPTED | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    DWORD attributes = FILE_ATTRIBUTE_NORMAL;
    if (replaced != nullptr) {
        const DWORD old = GetFileAttributesW(replaced->c_str());
        if (old == INVALID_FILE_ATTRIBUTES) return rightsNotKept;
        // A new name may need the folder's permission only; a file that must not be written is not to be changed so.
        if (!Open(*replaced, GENERIC_WRITE) && !IsHeldByOthers(*replaced, GetLastError())) return notWritable;
        if ((old & keptAttributes) != 0) attributes = old & keptAttributes;
    }
    const Handle file =
        OwnedHandle(CreateFileW(path.c_str(), GENERIC_WRITE, sharedByAll, nullptr, CREATE_NEW, attributes, nullptr));
    isMade = file != nullptr;
    if (!isMade) return nothingBeside;
    if (replaced != nullptr && !CopyRights(*replaced, path)) return rightsNotKept;
    DWORD written = 0;
    const bool isWritten = WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
                           written == bytes.size() && FlushFileBuffers(file.get());
    return isWritten ? FileProblem() : nothingBeside;
}

// Who reads a file again and again leaves short moments only in which nobody has it open.
Attempt Rename(const fs::path& from, const fs::path& to, bool replaces, bool& isTaken) {
    constexpr int triesAtOnce = 20;
    if (replaces && RenameOverOpenFile(from, to)) return Attempt::Succeeded;
    for (int i = 0; i < triesAtOnce; ++i) {
        if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH | (replaces ? MOVEFILE_REPLACE_EXISTING : 0)))
            return Attempt::Succeeded;
        const DWORD error = GetLastError();
        isTaken = !replaces && (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS);
        // Where others have the file open, it looks forbidden.
        if (isTaken || (error != ERROR_ACCESS_DENIED && !IsHeldByOthers(to, error))) return Attempt::Failed;
        std::this_thread::yield();
    }
    return Attempt::InTheWay;
}

unsigned long ProcessNumber() {
    return GetCurrentProcessId();
}

}  // namespace settings_file
