#pragma once

#include "platform/db/Files.h"
#include "platform/db/Status.h"

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

/// A program that uses a database file at this moment, for messages only.
struct CFileUser
{
    pid_t pid;
    std::string program;
};

/// The ".ldb" file beside a database tells who uses it, by kernel locks that die with their
/// process; a leftover file means nothing. Every program holds byte 0 shared from before it opens
/// the database until after it closed it; maintenance holds it exclusively. Byte 1 is held shared
/// around every write transaction and exclusively around a checkpoint, so that no commit ever runs
/// while the log is moved into the file. Writers that wait for each other never leave byte 1 free,
/// so they pass byte 2 on their way in, and a checkpoint that must come about shuts that door.
///
/// The locks belong to the open file, not to the process: closing another descriptor of the same
/// file does not drop them.
class CFileUse
{
public:
    CFileUse() = default;
    ~CFileUse() { Release(); }
    CFileUse(CFileUse&&) = default;
    CFileUse& operator=(CFileUse&&) = delete;

    /// Becomes a user of the database. "inUse" while another program maintains it for longer than
    /// the wait; "readOnly" where no lock file can be made.
    CDbStatus Acquire(std::string const& databasePath, std::chrono::milliseconds wait);
    /// Stops being one; the last user removes the lock file.
    void Release();

    bool TryExclusive();
    void BackToShared();

    /// Marks a write transaction. False when a checkpoint lasts longer than the wait.
    bool LockCommit(std::chrono::milliseconds wait);
    void UnlockCommit();
    /// False while any program writes.
    bool TryLockCheckpoint();
    /// Lets no new write transaction begin until the present ones are through. False when they take
    /// longer than the wait.
    bool LockCheckpoint(std::chrono::milliseconds wait);
    void UnlockCheckpoint();

private:
    std::string m_strPath;
    CFileHandle m_file;
};

/// The processes that have the database or its lock file open, as far as this user may see them.
std::vector<CFileUser> FileUsers(std::string const& databasePath);
