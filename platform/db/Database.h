#pragma once

#include "platform/db/Keyset.h"
#include "platform/db/RowBlock.h"
#include "platform/db/Status.h"
#include "platform/db/Value.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A table (or a view that is only read) as a record set uses it. Every one has a whole-number key
/// in its column "id" that is never given out twice. Kept for the life of the process: the engine
/// recognises prepared statements by its address.
struct CTableInfo
{
    std::string name;
    std::vector<std::string> columns; ///< without the key
};

/// The rows a find selects: everything that follows the table's name, such as
/// "WHERE member_id = ? ORDER BY check_in, id", and the values of its question marks.
struct CSelection
{
    std::string_view clause;
    std::span<DbValue const> values;
};

/// One kind of database file and how it came to its present form.
struct CSchema
{
    std::string_view kind; ///< for messages: "centre", "member"
    std::uint32_t applicationID; ///< stands in the file's header
    /// Step n takes a file of version n to version n + 1. Foreign keys are not acted on meanwhile:
    /// a step that deletes rows deletes those below them itself.
    std::vector<std::string_view> steps;

    int Version() const { return static_cast<int>(steps.size()); }
};

/// How long a call waits for other programs at most.
inline constexpr std::chrono::milliseconds kLongestWait{10'000};

/// Is told many times a second how much of a long call is done, roughly, from 0 to 1; false stops
/// the call, which then reports "stopped".
using CDbWatch = std::function<bool(double done)>;

/// One open database file, the only connection of this process to it. Every call waits at most
/// 10 s for other programs, leaves no read open, and tells its failure in what it returns; none
/// throws. Not for use by several threads.
class CDatabase
{
public:
    virtual ~CDatabase() = default;
    CDatabase(CDatabase const&) = delete;
    CDatabase& operator=(CDatabase const&) = delete;

    virtual std::string const& Path() const = 0;

    // Reading. Waits for no program that writes, copies or empties the log, as long as none is
    // stopped in the very moment of a commit. Reports "moved" within some milliseconds after the
    // file was renamed or deleted; within a transaction its beginning and its commit report that,
    // and these at once.

    /// Reads the keys of a selection in its order: one pass over the index that serves the clause.
    virtual CDbStatus FindKeys(CTableInfo const& table, CSelection const& selection, CKeyset& keys)
        = 0;
    /// Reads keys and rows of a selection at once: for finds by a unique key, and other small ones.
    virtual CDbStatus FindRows(
        CTableInfo const& table, CSelection const& selection, CKeyset& keys, CRowBlock& rows)
        = 0;
    /// Reads the rows of these keys, at most kBlockRows, in the order of the keys.
    virtual CDbStatus ReadRows(
        CTableInfo const& table, std::span<std::int64_t const> keys, CRowBlock& rows)
        = 0;
    /// Runs a SELECT and keeps its whole result: for counts and sums.
    virtual CDbStatus Query(std::string_view sql, std::span<DbValue const> values, CRowBlock& rows)
        = 0;

    /// What was read stays what is stored as long as this stays the same number, which it can only
    /// within a transaction, until something is written. 0 outside of one, when others may write.
    virtual std::uint64_t Moment() const = 0;

    // Writing. Each call is a transaction of its own unless one is begun.

    /// Adds a row; key is the new row's.
    virtual CDbStatus Insert(
        CTableInfo const& table, std::span<DbValue const> values, std::int64_t& key)
        = 0;
    /// Changes those columns of a row that are marked. "gone" when there is no such row.
    virtual CDbStatus Update(CTableInfo const& table, std::int64_t key,
        std::span<DbValue const> values, std::vector<bool> const& changed)
        = 0;
    /// Deletes the rows of these keys in one transaction; removed is how many there still were.
    virtual CDbStatus Remove(CTableInfo const& table, CKeyset const& keys, std::int64_t& removed)
        = 0;
    virtual CDbStatus Remove(CTableInfo const& table, std::int64_t key, std::int64_t& removed) = 0;
    /// Deletes all rows of a table, with what depends on them by the tables' rules, if there are
    /// just so many; done tells whether there were. Where all rows below them go along, the tables
    /// are emptied at once, for a small part of what single rows cost.
    virtual CDbStatus RemoveAll(CTableInfo const& table, std::int64_t rows, bool& done) = 0;
    /// Runs one statement that writes; changed is the number of rows it touched itself.
    virtual CDbStatus Execute(
        std::string_view sql, std::span<DbValue const> values, std::int64_t& changed)
        = 0;

    // The file as a whole.

    /// Writes a compacted copy under a name that must not exist yet, readable by its owner alone.
    /// The name appears when the copy is whole and on the disk. Not within a transaction.
    virtual CDbStatus CopyTo(std::string const& path, CDbWatch const& watch = {}) = 0;
    /// Reads the whole file and adds a sentence for everything that is not as it should be.
    virtual CDbStatus Check(std::vector<std::string>& findings, CDbWatch const& watch = {}) = 0;
    /// Moves committed changes from the log into the file, if no commit is under way anywhere;
    /// empties the log, so that deleted records are gone from it too. "busy" when somebody reads
    /// for longer than the wait. Not within a transaction.
    virtual CDbStatus Checkpoint() = 0;
    /// Makes this program the only one that may use the file. "inUse" when another has it open,
    /// even idle; the others are refused as long as this lasts.
    virtual CDbStatus UseExclusively() = 0;
    virtual void ShareAgain() = 0;

    static constexpr std::size_t kBlockRows = 256;

protected:
    CDatabase() = default;

private:
    friend class CTransaction;
    virtual CDbStatus Begin() = 0;
    virtual CDbStatus Commit() = 0;
    virtual void Rollback() = 0;
};

/// What belongs together: all that is written while it lives is committed as one, or rolled back
/// when it is destroyed uncommitted. May be nested; the outermost one commits, and none if one of
/// the inner ones was not.
class CTransaction
{
public:
    /// Waits for the right to write; Status() tells whether that was granted.
    explicit CTransaction(CDatabase& database);
    ~CTransaction();
    CTransaction(CTransaction const&) = delete;
    CTransaction& operator=(CTransaction const&) = delete;

    CDbStatus const& Status() const { return m_status; }
    CDbStatus Commit();

private:
    CDatabase& m_database;
    CDbStatus m_status;
    bool m_bOpen = false;
};

/// Opens an existing file of that kind. Never creates one; a file that is missing, empty, cut,
/// foreign, newer, read-only, damaged or in maintenance is left alone and refused with its own
/// message. A file of an older version is taken to the present one, all steps in one transaction,
/// after a copy "NAME.v1.bak" (by the old version's number) was made beside it. Waits that long for
/// a program that uses the file alone, but no longer than 2 s for its maintenance; a wait that was
/// cut short has no effect on later calls.
CDbStatus OpenDatabase(std::string const& path, CSchema const& schema,
    std::unique_ptr<CDatabase>& database, std::chrono::milliseconds wait = kLongestWait);

/// Puts a compacted copy in the place of a file that nobody uses, this process included, in one
/// atomic step: at every moment there is a whole file of that name. The file before it becomes
/// "NAME.old". The copy has all rows, and indexes that lacked some are rebuilt in it. "inUse" or
/// "busy" when another program still uses the file after 2 s. Whatever fails leaves the file as it
/// is, and an older ".old" too.
CDbStatus CompactDatabaseFile(std::string const& path, CSchema const& schema);

/// Makes an empty database of that kind under a name that must not exist, readable and writable by
/// its owner alone, and leaves it closed. Nothing is left behind when it fails.
CDbStatus CreateDatabase(std::string const& path, CSchema const& schema);
