#pragma once

#include "platform/db/Status.h"

#include <string>
#include <string_view>

/// A file descriptor that closes itself.
class CFileHandle
{
public:
    CFileHandle() = default;
    explicit CFileHandle(int descriptor)
        : m_nDescriptor(descriptor)
    {
    }
    ~CFileHandle() { Close(); }
    CFileHandle(CFileHandle&& other) noexcept
        : m_nDescriptor(other.Release())
    {
    }
    CFileHandle& operator=(CFileHandle&& other) noexcept;

    bool IsOpen() const { return m_nDescriptor >= 0; }
    int Get() const { return m_nDescriptor; }
    int Release();
    void Close();

private:
    int m_nDescriptor = -1;
};

/// Turns errno into the matching status; the sentence names the file and the system's reason.
CDbStatus FileFailure(std::string_view what, std::string const& path, int error);

/// Makes an empty file, 0600, under a name that must not exist.
CDbStatus CreateEmptyFile(std::string const& path);

/// Renames a file; fails with "exists" rather than replace another.
CDbStatus RenameNoReplace(std::string const& from, std::string const& to);

/// Gives a file the name of another, which itself gets the name old, which
/// must not exist. At every moment there is a file under path; if it fails both keep their names.
CDbStatus ReplaceFile(std::string const& path, std::string const& by, std::string const& old);

/// Gives a file the owner and the permissions of another.
CDbStatus CopyAccess(std::string const& from, std::string const& to);

/// Waits until the names in the folder of this file are on the disk.
CDbStatus SyncFolderOf(std::string const& path);

/// Waits until the file's bytes are on the disk. Not for a database that is open.
CDbStatus SyncFile(std::string const& path);

/// The same path with the extension ".mdb" replaced, or the extension appended where there is none.
std::string WithExtension(std::string const& path, std::string_view extension);

/// The folder part, "." when there is none.
std::string FolderOf(std::string const& path);
