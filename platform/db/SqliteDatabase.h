#pragma once

#include "platform/db/Database.h"
#include "platform/db/FileUse.h"
#include "platform/db/SqliteStatement.h"

#include <chrono>
#include <map>
#include <sqlite3.h>
#include <unordered_map>
#include <utility>

struct CConnectionDeleter
{
    void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
};
using CConnectionPtr = std::unique_ptr<sqlite3, CConnectionDeleter>;

/// A database file over SQLite in WAL mode with full synchronisation: what was committed is there
/// after a crash and after a power cut, and readers and writers never wait for each other.
class CSqliteDatabase final : public CDatabase
{
public:
    CSqliteDatabase(std::string path, CSchema schema, CFileUse use, CConnectionPtr connection);
    ~CSqliteDatabase() override;

    std::string const& Path() const override { return m_strPath; }

    CDbStatus FindKeys(
        CTableInfo const& table, CSelection const& selection, CKeyset& keys) override;
    CDbStatus FindRows(CTableInfo const& table, CSelection const& selection, CKeyset& keys,
        CRowBlock& rows) override;
    CDbStatus ReadRows(
        CTableInfo const& table, std::span<std::int64_t const> keys, CRowBlock& rows) override;
    std::uint64_t Moment() const override;
    CDbStatus Query(
        std::string_view sql, std::span<DbValue const> values, CRowBlock& rows) override;

    CDbStatus Insert(
        CTableInfo const& table, std::span<DbValue const> values, std::int64_t& key) override;
    CDbStatus Update(CTableInfo const& table, std::int64_t key, std::span<DbValue const> values,
        std::vector<bool> const& changed) override;
    CDbStatus Remove(CTableInfo const& table, CKeyset const& keys, std::int64_t& removed) override;
    CDbStatus Remove(CTableInfo const& table, std::int64_t key, std::int64_t& removed) override;
    CDbStatus RemoveAll(CTableInfo const& table, std::int64_t rows, bool& done) override;
    CDbStatus Execute(
        std::string_view sql, std::span<DbValue const> values, std::int64_t& changed) override;

    CDbStatus CopyTo(std::string const& path, CDbWatch const& watch) override;
    CDbStatus Check(std::vector<std::string>& findings, CDbWatch const& watch) override;
    CDbStatus Checkpoint() override;
    CDbStatus UseExclusively() override;
    void ShareAgain() override;

    /// See CompactDatabaseFile. Whatever the outcome, the database can only be closed afterwards.
    CDbStatus Compact();
    /// Runs the steps that the file's version lacks, in one transaction, after a copy.
    CDbStatus Migrate(int version);

private:
    static constexpr std::chrono::milliseconds kReadersWait{200}; ///< while nobody can write
    static constexpr int kLogPages = 1000; ///< about 4 MB: where a checkpoint pays

    /// Fills an empty file with a copy.
    CDbStatus VacuumInto(std::string const& path, CDbWatch const& watch = {});
    /// Waits for programs that are about to end.
    CDbStatus WaitForExclusiveUse();
    CDbStatus LeaveLogMode();
    CDbStatus MakeCompacted(std::string const& path);
    CDbStatus CheckCopy(std::string const& path);
    CDbStatus CompareRows(sqlite3* copy, std::string const& path);
    /// Gives a copy that was made at that version of the data the name of the file.
    CDbStatus TakePlace(std::string const& copy, long dataVersion);
    CDbStatus RunSteps(int version);
    /// Counts the rows whose parent row is missing.
    CDbStatus CountOrphans(std::int64_t& orphans);

    /// The statements over one table, prepared when they are first needed.
    struct TableStatements
    {
        std::string select; ///< "SELECT id, columns FROM table "
        std::string take; ///< "SELECT take_row(id, columns) FROM table "
        CStatementPtr few;
        CStatementPtr block;
        CStatementPtr range;
        CStatementPtr insert;
        CStatementPtr remove;
        std::map<std::vector<bool>, CStatementPtr> updates;
        CStatementCache finds;
        CStatementCache keyFinds;
    };

    class WriteScope;

    CDbStatus Begin() override;
    CDbStatus Commit() override;
    void Rollback() override;

    CDbStatus Failure(int code);
    CDbStatus MovedStatus();
    CDbStatus ReadableStatus();
    void Doom(CDbStatus const& status);
    CDbStatus DoomedStatus();
    CDbStatus WriteFailure(CDbStatus status);
    CDbStatus Prepare(std::string const& sql, CStatementPtr& statement);
    /// Makes sure that a statement kept in the cache under its clause is there.
    CDbStatus Prepared(CStatementCache& cache, std::string_view clause, std::string_view head,
        sqlite3_stmt*& statement);
    CDbStatus RunControl(CStatementPtr& statement, char const* sql);
    TableStatements& StatementsOf(CTableInfo const& table);
    template <typename Take>
    CDbStatus RunSelect(CStatementCache& cache, std::string_view clause, std::string_view head,
        std::span<DbValue const> values, Take const& take);
    CDbStatus BindKeys(TableStatements& statements, std::span<std::int64_t const> keys,
        bool ascending, sqlite3_stmt*& statement);
    void TakeRow(std::span<sqlite3_value*> values);
    CDbStatus RemoveOne(CTableInfo const& table, std::int64_t key, std::int64_t& removed);
    CDbStatus ListEmptied(std::string const& table, std::vector<std::string>& tables);
    CDbStatus Empty(std::vector<std::string> const& tables);
    double StepsOfCheck();
    CDbStatus AddFindings(char const* sql, char const* what, std::vector<std::string>& findings);
    CDbStatus CompareSchema(std::vector<std::string>& findings);
    void NoteLogPages(int pages);
    void CheckpointWhenLong();
    /// Moves the log with the lock for it held, and lets go of that. Returns SQLite's code.
    int MoveLog(int mode, std::chrono::milliseconds wait);

    std::string m_strPath;
    CSchema m_schema;
    CFileUse m_use;
    CConnectionPtr m_connection;
    std::unordered_map<CTableInfo const*, TableStatements> m_tables;
    CStatementCache m_queries;
    CStatementPtr m_begin;
    CStatementPtr m_commit;
    CStatementPtr m_rollback;
    CRowBlock* m_pTakenRows = nullptr; ///< where the rows of the statement that runs go
    std::vector<std::pair<std::int64_t, std::size_t>> m_order; ///< keys of a block, sorted
    std::size_t m_nNextInOrder = 0;
    std::chrono::steady_clock::time_point m_askedTime; ///< when the file still had its name
    std::uint32_t m_nTransactions = 0; ///< begun so far
    int m_nDepth = 0; ///< of nested transactions
    CDbStatus m_doom; ///< what failed in the open transaction, which can only roll back then
    int m_nLogPages = 0; ///< in the write-ahead log after the last commit
    int m_nNextCheckpoint = 0;
};

/// The status for what SQLite reports about the file at this path. Call it before a rollback, which
/// forgets the reason.
CDbStatus SqliteFailure(sqlite3* connection, int code, std::string const& path);
