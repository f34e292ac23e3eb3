#include "store/services/BackupFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace
{

constexpr std::string_view kPrefix = "corvana-";
constexpr std::string_view kTimeFormat = "%Y-%m-%d-%H%M%S";
constexpr std::string_view kTimeLike = "0000-00-00-000000";
constexpr int kMostInASecond = 9;
constexpr std::string_view kPart = ".part";
constexpr std::string_view kLock = ".lock";

std::string Hidden(std::string const& folder, std::string const& name, std::string_view extension)
{
    return folder + "/." + name + std::string(extension);
}

int Digits(std::string_view text, std::size_t first, std::size_t count)
{
    int number = 0;
    for (auto const digit : text.substr(first, count)) {
        number = number * 10 + (digit - '0');
    }
    return number;
}

/// The names in a folder; none when it cannot be read.
std::vector<std::string> NamesIn(std::string const& folder)
{
    std::vector<std::string> names;
    std::error_code failed;
    std::filesystem::directory_iterator entry(folder, failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
        names.push_back(entry->path().filename().string());
    }
    return names;
}

/// The lock of a set, open and held; not open when another program holds it.
CFileHandle LockSet(std::string const& folder, std::string const& name, int& error)
{
    auto const path = Hidden(folder, name, kLock);
    CFileHandle lock(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    struct stat open = {};
    struct stat named = {};
    if (!lock.IsOpen() || ::flock(lock.Get(), LOCK_EX | LOCK_NB) != 0
        || ::fstat(lock.Get(), &open) != 0) {
        error = errno;
        return {};
    }
    // Who held it before may just have removed the file.
    if (::lstat(path.c_str(), &named) != 0 || open.st_ino != named.st_ino) {
        error = EWOULDBLOCK;
        return {};
    }
    return lock;
}

void Unlock(std::string const& folder, std::string const& name, CFileHandle& lock)
{
    ::unlink(Hidden(folder, name, kLock).c_str());
    lock.Close();
}

/// Removes a part with the files in it. A folder inside is none of ours, and keeps the part there.
void RemovePart(std::string const& path)
{
    struct stat info = {};
    if (::lstat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) {
        return;
    }
    for (auto const& name : NamesIn(path)) {
        ::unlink(PathIn(path, name).c_str());
    }
    ::rmdir(path.c_str());
}

/// Gives a folder another name that must not exist.
CDbStatus RenameFolder(std::string const& from, std::string const& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    // A file system without that flag: of all that can be there only an empty folder is replaced.
    if (errno != EINVAL || ::rename(from.c_str(), to.c_str()) != 0) {
        return FileFailure("Cannot create", to, errno == ENOTEMPTY ? EEXIST : errno);
    }
    return {};
}

} // namespace

// ---- names

CEFOleDateTime BackupSetTime(std::string_view name)
{
    if (!name.starts_with(kPrefix)) {
        return CEFOleDateTime::Invalid();
    }
    name.remove_prefix(kPrefix.size());
    auto const time = name.substr(0, kTimeLike.size());
    auto const more = name.substr(time.size());
    auto const isLike
        = [](char c, char like) { return like == '0' ? c >= '0' && c <= '9' : c == like; };
    bool const isPlain = more.empty()
        || (more.size() == 2 && more[0] == '-' && more[1] > '1' && more[1] <= '0' + kMostInASecond);
    if (!isPlain || !std::ranges::equal(time, kTimeLike, isLike)) {
        return CEFOleDateTime::Invalid();
    }
    return {Digits(time, 0, 4), Digits(time, 5, 2), Digits(time, 8, 2), Digits(time, 11, 2),
        Digits(time, 13, 2), Digits(time, 15, 2)};
}

std::vector<std::string> BackupSetsIn(std::string const& folder)
{
    auto names = NamesIn(folder);
    std::erase_if(names, [&](std::string const& name) {
        struct stat info = {};
        return !BackupSetTime(name).ChkStatus() || ::lstat(PathIn(folder, name).c_str(), &info) != 0
            || !S_ISDIR(info.st_mode);
    });
    std::ranges::sort(names, std::greater());
    return names;
}

// ---- removing

void RemoveBackupLeftovers(std::string const& folder)
{
    std::set<std::string> sets;
    for (auto const& name : NamesIn(folder)) {
        for (auto const extension : {kPart, kLock}) {
            if (name.starts_with('.') && name.ends_with(extension)) {
                sets.insert(name.substr(1, name.size() - 1 - extension.size()));
            }
        }
    }
    for (auto const& name : sets) {
        int error = 0;
        if (!BackupSetTime(name).ChkStatus()) {
            continue;
        }
        if (auto lock = LockSet(folder, name, error); lock.IsOpen()) {
            RemovePart(Hidden(folder, name, kPart));
            Unlock(folder, name, lock);
        }
    }
}

bool RemoveBackupSet(std::string const& folder, std::string const& name)
{
    int error = 0;
    auto lock = LockSet(folder, name, error);
    if (!lock.IsOpen()) {
        return false;
    }
    auto const part = Hidden(folder, name, kPart);
    bool const renamed = RenameFolder(PathIn(folder, name), part).IsOK();
    if (renamed) {
        RemovePart(part);
    }
    Unlock(folder, name, lock);
    return renamed;
}

// ---- the place of a new set

CBackupPlace::~CBackupPlace()
{
    if (m_lock.IsOpen()) {
        RemovePart(Path());
        Unlock(m_strFolder, m_strName, m_lock);
    }
}

std::string CBackupPlace::Path() const
{
    return Hidden(m_strFolder, m_strName, kPart);
}

CDbStatus CBackupPlace::Make(std::string const& folder)
{
    m_strFolder = folder;
    struct stat info = {};
    if (::stat(folder.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) {
        return {DbError::missing, "The folder \"" + folder + "\" for backups is not there."};
    }
    auto const first = std::string(kPrefix) + CEFOleDateTime::GetCurrentTime().Format(kTimeFormat);
    auto status = MakeNamed(first);
    for (int n = 2; n <= kMostInASecond && status.Error() == DbError::exists; ++n) {
        status = MakeNamed(first + "-" + std::to_string(n));
    }
    return status;
}

/// "exists" when another set has the name, or gets it.
CDbStatus CBackupPlace::MakeNamed(std::string const& name)
{
    auto const path = PathIn(m_strFolder, name);
    int error = 0;
    auto lock = LockSet(m_strFolder, name, error);
    if (!lock.IsOpen()) {
        return FileFailure("Cannot create", path, error == EWOULDBLOCK ? EEXIST : error);
    }
    auto const part = Hidden(m_strFolder, name, kPart);
    RemovePart(part);
    struct stat info = {};
    error = ::lstat(path.c_str(), &info) == 0 ? EEXIST
        : ::mkdir(part.c_str(), S_IRWXU) != 0 ? errno
                                              : 0;
    if (error != 0) {
        Unlock(m_strFolder, name, lock);
        return FileFailure("Cannot create", path, error);
    }
    m_strName = name;
    m_lock = std::move(lock);
    return {};
}

CDbStatus CBackupPlace::Publish()
{
    auto const path = PathIn(m_strFolder, m_strName);
    auto status = SyncFolderOf(Path() + "/");
    if (status) {
        status = RenameFolder(Path(), path);
    }
    if (!status) {
        return status;
    }
    Unlock(m_strFolder, m_strName, m_lock);
    return SyncFolderOf(path);
}
