// Replacing keeps what says who may do what with the file: it is given to the new file before that has its name.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>

#include <cerrno>
#include <optional>
#include <vector>

#include "platform/system/handles.h"
#include "platform/system/settings_file_system.h"

namespace fs = std::filesystem;

namespace settings_file {

namespace {

Attempt Refuse(SettingsFile& file, const FileProblem& problem) {
    file.problem = problem;
    return Attempt::Failed;
}

// A server has another file of that name now; asked again it gives that one.
bool IsPassing(int error) {
    return error == ESTALE || error == EINTR;
}

Attempt RefuseByError(SettingsFile& file, int error) {
    if (error == ENOENT)
        file.state = SettingsFile::State::Missing;
    else
        file.problem = error == ELOOP ? leadsNowhere : notReadable;
    return IsPassing(error) ? Attempt::InTheWay : Attempt::Failed;
}

bool WriteAll(const Descriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file.Get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

// Lists of access are such attributes, and what users note on a file. Those that the system or its guards keep for
// themselves belong to the one file.
bool IsKeptAttribute(std::string_view name) {
    return name.starts_with("system.") || name.starts_with("user.");
}

std::optional<std::vector<std::string>> ListKeptAttributes(const Descriptor& file) {
    std::vector<std::string> kept;
    const ssize_t size = flistxattr(file.Get(), nullptr, 0);
    if (size < 0 && errno == ENOTSUP) return kept;
    std::string names(static_cast<size_t>(std::max<ssize_t>(size, 0)), '\0');
    if (size < 0 || flistxattr(file.Get(), names.data(), names.size()) != size) return std::nullopt;
    for (size_t begin = 0; begin < names.size(); begin = names.find('\0', begin) + 1)
        if (IsKeptAttribute(names.data() + begin)) kept.emplace_back(names.data() + begin);
    return kept;
}

std::optional<std::string> ReadAttribute(const Descriptor& file, const std::string& name) {
    const ssize_t size = fgetxattr(file.Get(), name.c_str(), nullptr, 0);
    if (size < 0) return std::nullopt;
    std::string value(static_cast<size_t>(size), '\0');
    if (fgetxattr(file.Get(), name.c_str(), value.data(), value.size()) != size) return std::nullopt;
    return value;
}

bool CopyAttributes(const Descriptor& from, const Descriptor& to) {
    const auto wanted = ListKeptAttributes(from), given = ListKeptAttributes(to);
    if (!wanted || !given) return false;
    // A new file has those that its folder gives to each.
    for (const std::string& name : *given)
        if (std::ranges::find(*wanted, name) == wanted->end() && fremovexattr(to.Get(), name.c_str()) != 0)
            return false;
    for (const std::string& name : *wanted) {
        const std::optional<std::string> value = ReadAttribute(from, name);
        if (!value) return false;
        if (ReadAttribute(to, name) != value && fsetxattr(to.Get(), name.c_str(), value->data(), value->size(), 0) != 0)
            return false;
    }
    return true;
}

// Sets what differs, for there are file systems on which nothing can be set and everything is as it should be.
bool CopyRights(const Descriptor& from, const Descriptor& to) {
    constexpr mode_t modeBits = 07777;
    struct stat wanted = {}, is = {};
    if (fstat(from.Get(), &wanted) != 0 || fstat(to.Get(), &is) != 0) return false;
    if ((is.st_uid != wanted.st_uid || is.st_gid != wanted.st_gid) &&
        fchown(to.Get(), is.st_uid == wanted.st_uid ? static_cast<uid_t>(-1) : wanted.st_uid, wanted.st_gid) != 0)
        return false;
    if (!CopyAttributes(from, to) || fstat(to.Get(), &is) != 0) return false;
    return (is.st_mode & modeBits) == (wanted.st_mode & modeBits) || fchmod(to.Get(), wanted.st_mode & modeBits) == 0;
}

}  // namespace

bool IsNameFree(const fs::path& path) {
    struct stat information = {};
    return lstat(path.c_str(), &information) != 0 && errno == ENOENT;
}

bool IsFolder(const fs::path& path) {
    struct stat information = {};
    return stat(path.c_str(), &information) == 0 && S_ISDIR(information.st_mode);
}

// Opening a pipe or a device can wait or set something going, so it is asked first what it is.
Attempt Read(const fs::path& path, SettingsFile& file) {
    file = {SettingsFile::State::Unreadable, {}, {}};
    struct stat information = {};
    if (stat(path.c_str(), &information) != 0) return RefuseByError(file, errno);
    if (!S_ISREG(information.st_mode)) return Refuse(file, noFile);
    const Descriptor opened(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (opened.Get() < 0) return RefuseByError(file, errno);
    if (fstat(opened.Get(), &information) != 0 || !S_ISREG(information.st_mode)) return Refuse(file, noFile);
    std::string part(bytesAtOnce, '\0');
    for (;;) {
        const ssize_t size = read(opened.Get(), part.data(), part.size());
        if (size == 0) break;
        if (size < 0 && errno == EINTR) continue;
        if (size < 0) {
            file.problem = endsEarly;
            return IsPassing(errno) ? Attempt::InTheWay : Attempt::Failed;
        }
        if (file.bytes.size() + static_cast<size_t>(size) > mostBytes) return Refuse(file, tooLarge);
        file.bytes.append(part.data(), static_cast<size_t>(size));
    }
    file.state = SettingsFile::State::Read;
    return Attempt::Succeeded;
}

fs::path FollowLinks(const fs::path& path) {
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    return error ? fs::path() : real;
}

FileProblem WriteNewFile(const fs::path& path, const fs::path* replaced, std::string_view bytes, bool& isMade) {
    // A new name needs the folder's permission only; a file that must not be written is not to be changed that way.
    if (replaced != nullptr && faccessat(AT_FDCWD, replaced->c_str(), W_OK, AT_EACCESS) != 0) return notWritable;
    constexpr mode_t ownersOnly = 0600;
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, ownersOnly));
    isMade = file.Get() >= 0;
    if (!isMade) return nothingBeside;
    if (replaced != nullptr) {
        const Descriptor old(open(replaced->c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        if (old.Get() < 0 || !CopyRights(old, file)) return rightsNotKept;
    }
    return WriteAll(file, bytes) && fsync(file.Get()) == 0 ? FileProblem() : nothingBeside;
}

Attempt Rename(const fs::path& from, const fs::path& to, bool replaces, bool& isTaken) {
    int failed = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), replaces ? 0 : RENAME_NOREPLACE);
    isTaken = failed != 0 && errno == EEXIST;
    // Some file systems cannot keep a name that is taken: then looking before must do.
    if (failed != 0 && !replaces && !isTaken && errno == EINVAL) {
        isTaken = !IsNameFree(to);
        if (!isTaken) failed = rename(from.c_str(), to.c_str());
    }
    if (failed != 0) return Attempt::Failed;
    // The new name is on the disk only when its folder is.
    const Descriptor folder(open(to.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Get() >= 0) fsync(folder.Get());
    return Attempt::Succeeded;
}

unsigned long ProcessNumber() {
    return static_cast<unsigned long>(getpid());
}

}  // namespace settings_file
