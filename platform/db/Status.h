#pragma once

#include <string>
#include <utility>

/// What kept a database operation from doing what it was asked.
enum class DbError
{
    none,
    missing, ///< no file of that name
    empty, ///< a file of no bytes
    cut, ///< the file ends before its last page
    foreign, ///< not one of our files, or one of another kind
    newer, ///< written by a later version of the program
    readOnly, ///< file or folder cannot be written
    network, ///< on a network file system, where locks cannot be trusted
    damaged,
    inUse, ///< another program uses it, or maintains it
    busy, ///< another program held the lock for longer than the wait
    full, ///< no room left on the disk
    constraint, ///< the row would break a rule of its table
    moved, ///< the file was renamed or deleted while it was open
    gone, ///< the row was deleted by another program
    exists, ///< a file of that name is there already
    stopped, ///< by the user
    failed, ///< any other failure
};

/// The result of a database operation: a kind for the program, and a sentence for the user that
/// names the file and never a value of a record.
class [[nodiscard]] CDbStatus
{
public:
    CDbStatus() = default;
    CDbStatus(DbError error, std::string text)
        : m_error(error)
        , m_strText(std::move(text))
    {
    }

    bool IsOK() const { return m_error == DbError::none; }
    explicit operator bool() const { return IsOK(); }
    DbError Error() const { return m_error; }
    std::string const& Text() const { return m_strText; }

private:
    DbError m_error = DbError::none;
    std::string m_strText;
};
