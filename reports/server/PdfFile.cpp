#include "reports/server/PdfFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

/// Goes with the descriptor, however its program ends. False when another program has it; a file
/// system that knows no locks gives it to all.
bool Lock(int file)
{
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return ::fcntl(file, F_OFD_SETLK, &whole) == 0 || (errno != EAGAIN && errno != EACCES);
}

bool IsAt(int file, std::string const& path)
{
    struct stat mine = {};
    struct stat named = {};
    return ::fstat(file, &mine) == 0 && ::lstat(path.c_str(), &named) == 0
        && mine.st_ino == named.st_ino && mine.st_dev == named.st_dev;
}

/// Deletes a file that no program has locked; false when one has.
bool RemoveUnlocked(std::string const& path)
{
    CFileHandle const file(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file.IsOpen()) {
        return errno == ENOENT;
    }
    if (!Lock(file.Get())) {
        return false;
    }
    // Locked and still the one of that name: nobody writes it, and nobody begins to.
    return !IsAt(file.Get(), path) || ::unlink(path.c_str()) == 0;
}

} // namespace

CPdfFile::CPdfFile(std::string path)
    : m_strPath(std::move(path))
    , m_strPart(m_strPath + ".part")
{
}

CPdfFile::~CPdfFile()
{
    if (IsOwnPart()) {
        ::unlink(m_strPart.c_str());
    }
}

bool CPdfFile::IsOwnPart() const
{
    return m_file.IsOpen() && IsAt(m_file.Get(), m_strPart);
}

/// Names the folder alone: the name of the file may hold a member's.
CDbStatus CPdfFile::Failure(int error) const
{
    return FileFailure("Cannot write a file into the folder", FolderOf(m_strPath), error);
}

CDbStatus CPdfFile::Begin()
{
    constexpr int kAttempts = 10; // another program may begin and end in between
    for (int i = 0; i < kAttempts; ++i) {
        m_file = CFileHandle(::open(m_strPart.c_str(),
            O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
        if (m_file.IsOpen() && Lock(m_file.Get()) && IsOwnPart()) {
            setOpenMode(QIODevice::WriteOnly | QIODevice::Unbuffered);
            return {};
        }
        if (!m_file.IsOpen() && errno != EEXIST) {
            return Failure(errno);
        }
        m_file.Close();
        if (!RemoveUnlocked(m_strPart)) {
            break;
        }
    }
    return {DbError::inUse, "Another program writes the same file just now."};
}

qint64 CPdfFile::writeData(char const* data, qint64 size)
{
    qint64 done = 0;
    while (m_nError == 0 && done < size) {
        auto const count
            = ::write(m_file.Get(), data + done, static_cast<std::size_t>(size - done));
        if (count < 0 && errno != EINTR) {
            m_nError = errno;
        }
        done += count > 0 ? count : 0;
    }
    return m_nError == 0 ? done : -1;
}

CDbStatus CPdfFile::Publish(bool replaces)
{
    close();
    if (m_nError != 0) {
        return Failure(m_nError);
    }
    if (::fsync(m_file.Get()) != 0) {
        return Failure(errno);
    }
    if (!IsOwnPart()) {
        return {DbError::moved, "The file was renamed or deleted while it was written."};
    }
    if (replaces) {
        if (::rename(m_strPart.c_str(), m_strPath.c_str()) != 0) {
            return Failure(errno);
        }
    } else if (auto const status = RenameNoReplace(m_strPart, m_strPath); !status) {
        return {status.Error(),
            status.Error() == DbError::exists
                ? "A file of that name is there already."
                : "A file cannot be given its name in the folder \"" + FolderOf(m_strPath) + "\"."};
    }
    return SyncFolderOf(m_strPath);
}

void CPdfFile::RemoveLeftover(std::string const& path)
{
    RemoveUnlocked(path + ".part");
}
