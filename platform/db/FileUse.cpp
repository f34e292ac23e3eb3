#include "platform/db/FileUse.h"

#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;
constexpr auto kPause = std::chrono::milliseconds(5);
constexpr off_t kUseByte = 0;
constexpr off_t kCommitByte = 1;
constexpr off_t kDoorByte = 2;

bool SetLock(int descriptor, short type, off_t byte)
{
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    int result = 0;
    do {
        result = ::fcntl(descriptor, F_OFD_SETLK, &lock);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

/// Another program may have removed the file between our open and our lock.
bool IsStillNamed(int descriptor, std::string const& path)
{
    struct stat open = {};
    struct stat named = {};
    return ::fstat(descriptor, &open) == 0 && ::lstat(path.c_str(), &named) == 0
        && open.st_ino == named.st_ino && open.st_dev == named.st_dev;
}

bool IsLockRefusal(int error)
{
    return error == EAGAIN || error == EACCES;
}

} // namespace

CDbStatus CFileUse::Acquire(std::string const& databasePath, std::chrono::milliseconds wait)
{
    auto const path = WithExtension(databasePath, ".ldb");
    auto const end = Clock::now() + wait;
    for (;;) {
        CFileHandle file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!file.IsOpen()) {
            return FileFailure("Cannot use the lock file", path, errno);
        }
        if (SetLock(file.Get(), F_RDLCK, kUseByte)) {
            if (IsStillNamed(file.Get(), path)) {
                m_strPath = path;
                m_file = std::move(file);
                return {};
            }
            continue;
        }
        if (!IsLockRefusal(errno)) {
            return FileFailure("Cannot lock", path, errno);
        }
        if (Clock::now() >= end) {
            return {DbError::inUse,
                "The file \"" + databasePath + "\" is being maintained by another program."};
        }
        std::this_thread::sleep_for(kPause);
    }
}

void CFileUse::Release()
{
    if (!m_file.IsOpen()) {
        return;
    }
    // Two that leave at once may both be refused here: a harmless leftover.
    if (TryExclusive() && IsStillNamed(m_file.Get(), m_strPath)) {
        ::unlink(m_strPath.c_str());
    }
    m_file.Close();
}

bool CFileUse::TryExclusive()
{
    return SetLock(m_file.Get(), F_WRLCK, kUseByte);
}

void CFileUse::BackToShared()
{
    SetLock(m_file.Get(), F_RDLCK, kUseByte);
}

bool CFileUse::LockCommit(std::chrono::milliseconds wait)
{
    auto const end = Clock::now() + wait;
    for (;;) {
        if (SetLock(m_file.Get(), F_RDLCK, kDoorByte)) {
            bool const granted = SetLock(m_file.Get(), F_RDLCK, kCommitByte);
            SetLock(m_file.Get(), F_UNLCK, kDoorByte);
            if (granted) {
                return true;
            }
        }
        if (Clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(kPause);
    }
}

void CFileUse::UnlockCommit()
{
    SetLock(m_file.Get(), F_UNLCK, kCommitByte);
}

bool CFileUse::TryLockCheckpoint()
{
    return SetLock(m_file.Get(), F_WRLCK, kCommitByte);
}

bool CFileUse::LockCheckpoint(std::chrono::milliseconds wait)
{
    auto const end = Clock::now() + wait;
    bool closed = false;
    bool granted = false;
    for (;;) {
        closed = closed || SetLock(m_file.Get(), F_WRLCK, kDoorByte);
        granted = closed && TryLockCheckpoint();
        if (granted || Clock::now() >= end) {
            break;
        }
        std::this_thread::sleep_for(kPause);
    }
    SetLock(m_file.Get(), F_UNLCK, kDoorByte);
    return granted;
}

void CFileUse::UnlockCheckpoint()
{
    SetLock(m_file.Get(), F_UNLCK, kCommitByte);
}

std::vector<CFileUser> FileUsers(std::string const& databasePath)
{
    namespace fs = std::filesystem;
    std::vector<CFileUser> users;
    std::error_code ignored;
    auto const database = fs::weakly_canonical(databasePath, ignored);
    auto const lock = fs::weakly_canonical(WithExtension(databasePath, ".ldb"), ignored);
    for (auto process = fs::directory_iterator("/proc", ignored);
         !ignored && process != fs::directory_iterator(); process.increment(ignored)) {
        auto const name = process->path().filename().string();
        pid_t pid = 0;
        if (std::from_chars(name.data(), name.data() + name.size(), pid).ec != std::errc()) {
            continue;
        }
        std::error_code unreadable;
        for (auto entry = fs::directory_iterator(process->path() / "fd", unreadable);
             !unreadable && entry != fs::directory_iterator(); entry.increment(unreadable)) {
            std::error_code closed;
            auto const target = fs::read_symlink(entry->path(), closed);
            if (target == database || target == lock) {
                std::string program;
                std::getline(std::ifstream(process->path() / "comm"), program);
                users.push_back({pid, program});
                break;
            }
        }
    }
    return users;
}
