#include "platform/db/Files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

CFileHandle& CFileHandle::operator=(CFileHandle&& other) noexcept
{
    if (this != &other) {
        Close();
        m_nDescriptor = other.Release();
    }
    return *this;
}

int CFileHandle::Release()
{
    return std::exchange(m_nDescriptor, -1);
}

void CFileHandle::Close()
{
    if (m_nDescriptor >= 0) {
        ::close(Release());
    }
}

CDbStatus FileFailure(std::string_view what, std::string const& path, int error)
{
    auto kind = DbError::failed;
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        kind = DbError::missing;
        break;
    case EACCES:
    case EPERM:
    case EROFS:
        kind = DbError::readOnly;
        break;
    case EEXIST:
        kind = DbError::exists;
        break;
    case ENOSPC:
    case EDQUOT:
        kind = DbError::full;
        break;
    default:
        break;
    }
    return {kind,
        std::string(what) + " \"" + path + "\": " + std::generic_category().message(error) + "."};
}

CDbStatus CreateEmptyFile(std::string const& path)
{
    CFileHandle const file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file.IsOpen()) {
        return FileFailure("Cannot create", path, errno);
    }
    return {};
}

CDbStatus RenameNoReplace(std::string const& from, std::string const& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL) {
        return FileFailure("Cannot create", to, errno);
    }
    // A file system without that flag: a hard link never replaces either.
    if (::link(from.c_str(), to.c_str()) != 0) {
        return FileFailure("Cannot create", to, errno);
    }
    ::unlink(from.c_str());
    return {};
}

CDbStatus ReplaceFile(std::string const& path, std::string const& by, std::string const& old)
{
    // The new file waits under the old one's name to be, so that one step gives both theirs.
    auto status = RenameNoReplace(by, old);
    if (!status
        || ::renameat2(AT_FDCWD, old.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) == 0) {
        return status;
    }
    int error = errno;
    ::rename(old.c_str(), by.c_str());
    // A file system without that step: a second name keeps the file that is replaced.
    if (error == EINVAL && ::link(path.c_str(), old.c_str()) == 0) {
        if (::rename(by.c_str(), path.c_str()) == 0) {
            return {};
        }
        error = errno;
        ::unlink(old.c_str());
    }
    return FileFailure("Cannot replace", path, error);
}

CDbStatus CopyAccess(std::string const& from, std::string const& to)
{
    struct stat wanted = {};
    if (::stat(from.c_str(), &wanted) != 0 || ::chown(to.c_str(), wanted.st_uid, wanted.st_gid) != 0
        || ::chmod(to.c_str(), wanted.st_mode & 0777) != 0) {
        return FileFailure("Cannot keep the owner and the permissions of", from, errno);
    }
    return {};
}

CDbStatus SyncFolderOf(std::string const& path)
{
    auto const folder = FolderOf(path);
    CFileHandle const handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!handle.IsOpen() || ::fsync(handle.Get()) != 0) {
        return FileFailure("Cannot write to the folder", folder, errno);
    }
    return {};
}

CDbStatus SyncFile(std::string const& path)
{
    CFileHandle const handle(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!handle.IsOpen() || ::fsync(handle.Get()) != 0) {
        return FileFailure("Cannot write", path, errno);
    }
    return {};
}

std::string WithExtension(std::string const& path, std::string_view extension)
{
    constexpr std::string_view kDatabase = ".mdb";
    auto const stem
        = path.ends_with(kDatabase) ? path.substr(0, path.size() - kDatabase.size()) : path;
    return stem + std::string(extension);
}

std::string FolderOf(std::string const& path)
{
    auto const slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}
