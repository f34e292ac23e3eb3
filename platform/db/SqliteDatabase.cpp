#include "platform/db/SqliteDatabase.h"

#include "platform/db/RoughTime.h"

#include <cassert>
#include <cerrno>

namespace
{

DbError KindOf(int code, int systemError)
{
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return DbError::busy;
    case SQLITE_FULL:
        return DbError::full;
    case SQLITE_READONLY:
        return code == SQLITE_READONLY_DBMOVED ? DbError::moved : DbError::readOnly;
    case SQLITE_CORRUPT:
        return DbError::damaged;
    case SQLITE_NOTADB:
        return DbError::foreign;
    case SQLITE_CONSTRAINT:
        return DbError::constraint;
    case SQLITE_INTERRUPT:
        return DbError::stopped;
    case SQLITE_IOERR:
        return systemError == ENOSPC || systemError == EDQUOT ? DbError::full : DbError::failed;
    default:
        return DbError::failed;
    }
}

} // namespace

CDbStatus SqliteFailure(sqlite3* connection, int code, std::string const& path)
{
    auto const kind = KindOf(code, sqlite3_system_errno(connection));
    auto const file = "The file \"" + path + "\" ";
    switch (kind) {
    case DbError::busy:
        return {kind, file + "is kept busy by another program."};
    case DbError::full:
        return {kind, file + "cannot grow: there is no room left on the disk."};
    case DbError::readOnly:
        return {kind, file + "cannot be written."};
    case DbError::moved:
        return {kind, file + "was renamed or deleted while it was open."};
    case DbError::damaged:
        return {kind, file + "is damaged."};
    case DbError::foreign:
        return {kind, file + "is not a database, or its beginning is damaged."};
    case DbError::stopped:
        return {kind, "Stopped."};
    default:
        return {kind,
            file + "could not be used: " + sqlite3_errmsg(connection) + " (" + std::to_string(code)
                + ")."};
    }
}

CSqliteDatabase::CSqliteDatabase(
    std::string path, CSchema schema, CFileUse use, CConnectionPtr connection)
    : m_strPath(std::move(path))
    , m_schema(std::move(schema))
    , m_use(std::move(use))
    , m_connection(std::move(connection))
    , m_nNextCheckpoint(kLogPages)
{
    // Replaces SQLite's own checkpoints: it tells how long the log is and does nothing else.
    sqlite3_wal_hook(
        m_connection.get(),
        [](void* self, sqlite3*, char const*, int pages) {
            static_cast<CSqliteDatabase*>(self)->NoteLogPages(pages);
            return SQLITE_OK;
        },
        this);
    // A function gets all values of a row at once, where asking for each column of a result row
    // costs a look-up per cell: a sixth of the time of reading a row.
    sqlite3_create_function_v2(
        m_connection.get(), "take_row", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, this,
        [](sqlite3_context* context, int count, sqlite3_value** values) {
            static_cast<CSqliteDatabase*>(sqlite3_user_data(context))
                ->TakeRow({values, static_cast<std::size_t>(count)});
        },
        nullptr, nullptr, nullptr);
}

CSqliteDatabase::~CSqliteDatabase()
{
    assert(m_nDepth == 0);
    m_tables.clear();
    m_queries.Clear();
    m_begin.reset();
    m_commit.reset();
    m_rollback.reset();
    // Closing the last connection moves the log into the file. If somebody commits just now we are
    // not the last one, and nothing is moved.
    if (MovedStatus() && m_use.TryLockCheckpoint()) {
        MoveLog(SQLITE_CHECKPOINT_TRUNCATE, kReadersWait);
    }
    m_connection.reset();
}

CDbStatus CSqliteDatabase::Failure(int code)
{
    return SqliteFailure(m_connection.get(), code, m_strPath);
}

std::uint64_t CSqliteDatabase::Moment() const
{
    // Counts what foreign keys do in other tables, too.
    auto const changes = sqlite3_total_changes(m_connection.get());
    return m_nDepth == 0
        ? 0
        : std::uint64_t(m_nTransactions) << 32U | static_cast<std::uint32_t>(changes);
}

CDbStatus CSqliteDatabase::MovedStatus()
{
    int moved = 0;
    sqlite3_file_control(m_connection.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved == 0 ? CDbStatus() : Failure(SQLITE_READONLY_DBMOVED);
}

/// A transaction asks when it begins and before it commits, and needs not ask between. Elsewhere
/// one question serves all reads of the same few milliseconds: it takes as long as a look-up.
CDbStatus CSqliteDatabase::ReadableStatus()
{
    auto const now = RoughTime();
    if (m_nDepth > 0 || now == m_askedTime) {
        return {};
    }
    auto status = MovedStatus();
    if (status) {
        m_askedTime = now;
    }
    return status;
}

CDbStatus CSqliteDatabase::Prepare(std::string const& sql, CStatementPtr& statement)
{
    sqlite3_stmt* prepared = nullptr;
    int const code = sqlite3_prepare_v3(m_connection.get(), sql.c_str(),
        static_cast<int>(sql.size()) + 1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    statement.reset(prepared);
    if (code != SQLITE_OK) {
        return Failure(code);
    }
    assert(prepared != nullptr);
    return {};
}

CDbStatus CSqliteDatabase::Prepared(CStatementCache& cache, std::string_view clause,
    std::string_view head, sqlite3_stmt*& statement)
{
    statement = cache.Find(clause);
    if (statement != nullptr) {
        return {};
    }
    CStatementPtr prepared;
    if (auto status = Prepare(std::string(head).append(clause), prepared); !status) {
        return status;
    }
    statement = cache.Keep(std::string(clause), std::move(prepared));
    return {};
}

CSqliteDatabase::TableStatements& CSqliteDatabase::StatementsOf(CTableInfo const& table)
{
    auto const [found, added] = m_tables.try_emplace(&table);
    if (added) {
        std::string columns = "id";
        for (auto const& column : table.columns) {
            columns += ", " + column;
        }
        found->second.select = "SELECT " + columns + " FROM " + table.name + " ";
        found->second.take = "SELECT take_row(" + columns + ") FROM " + table.name + " ";
    }
    return found->second;
}

// ---- writing

CDbStatus CSqliteDatabase::RunControl(CStatementPtr& statement, char const* sql)
{
    if (statement == nullptr) {
        if (auto status = Prepare(sql, statement); !status) {
            return status;
        }
    }
    CStatementReset const reset(statement.get());
    int const code = sqlite3_step(statement.get());
    return code == SQLITE_DONE ? CDbStatus() : Failure(code);
}

/// One write: a transaction of its own, or a step of the one that is open.
class CSqliteDatabase::WriteScope
{
public:
    explicit WriteScope(CSqliteDatabase& database)
        : m_database(database)
        , m_bOwn(database.m_nDepth == 0)
        , m_status(m_bOwn ? database.Begin() : database.DoomedStatus())
    {
    }
    ~WriteScope()
    {
        if (m_bOwn && m_status && !m_bDone) {
            m_database.Rollback();
        }
    }
    WriteScope(WriteScope const&) = delete;
    WriteScope& operator=(WriteScope const&) = delete;

    CDbStatus const& Status() const { return m_status; }
    CDbStatus Done()
    {
        m_bDone = true;
        return m_bOwn ? m_database.Commit() : CDbStatus();
    }

private:
    CSqliteDatabase& m_database;
    bool m_bOwn;
    bool m_bDone = false;
    CDbStatus m_status;
};

/// The first failure is the one to tell.
void CSqliteDatabase::Doom(CDbStatus const& status)
{
    if (m_doom) {
        m_doom = status;
    }
}

CDbStatus CSqliteDatabase::DoomedStatus()
{
    // SQLite rolls a transaction back by itself when the disk is full; what follows must not be
    // committed alone.
    if (m_doom && sqlite3_get_autocommit(m_connection.get()) != 0) {
        Doom({DbError::failed, "Nothing was stored, because an earlier step failed."});
    }
    return m_doom;
}

CDbStatus CSqliteDatabase::Begin()
{
    if (m_nDepth > 0) {
        auto status = DoomedStatus();
        m_nDepth += status ? 1 : 0;
        return status;
    }
    if (auto status = MovedStatus(); !status) {
        return status;
    }
    if (!m_use.LockCommit(kLongestWait)) {
        return Failure(SQLITE_BUSY);
    }
    if (auto status = RunControl(m_begin, "BEGIN IMMEDIATE"); !status) {
        m_use.UnlockCommit();
        return status;
    }
    m_nDepth = 1;
    ++m_nTransactions;
    m_doom = {};
    return {};
}

CDbStatus CSqliteDatabase::Commit()
{
    assert(m_nDepth > 0);
    if (auto status = DoomedStatus(); !status) {
        Rollback();
        return status;
    }
    if (m_nDepth > 1) {
        --m_nDepth;
        return {};
    }
    auto status = MovedStatus();
    if (status) {
        status = RunControl(m_commit, "COMMIT");
    }
    if (!status) {
        Rollback();
        return status;
    }
    m_nDepth = 0;
    m_use.UnlockCommit();
    CheckpointWhenLong();
    return {};
}

void CSqliteDatabase::Rollback()
{
    assert(m_nDepth > 0);
    if (--m_nDepth > 0) {
        Doom({DbError::failed, "Nothing was stored, because a part of it was taken back."});
        return;
    }
    m_doom = {};
    if (sqlite3_get_autocommit(m_connection.get()) == 0) {
        // Cannot fail in a way that leaves the transaction open.
        static_cast<void>(RunControl(m_rollback, "ROLLBACK"));
    }
    m_use.UnlockCommit();
}

CDbStatus CSqliteDatabase::WriteFailure(CDbStatus status)
{
    // A row that breaks a rule leaves the rest of a transaction as it is; everything else dooms it.
    if (status.Error() != DbError::constraint) {
        Doom(status);
    }
    return status;
}

CDbStatus CSqliteDatabase::Insert(
    CTableInfo const& table, std::span<DbValue const> values, std::int64_t& key)
{
    assert(values.size() == table.columns.size());
    WriteScope scope(*this);
    if (!scope.Status()) {
        return scope.Status();
    }
    auto& insert = StatementsOf(table).insert;
    if (insert == nullptr) {
        std::string sql = "INSERT INTO " + table.name + " (";
        for (auto const& column : table.columns) {
            sql += column + ", ";
        }
        sql.resize(sql.size() - 2);
        sql += ") VALUES " + SqlPlaceholders(table.columns.size());
        if (auto status = Prepare(sql, insert); !status) {
            return WriteFailure(status);
        }
    }
    {
        CStatementReset const reset(insert.get());
        int code = BindValues(insert.get(), values);
        if (code == SQLITE_OK) {
            code = sqlite3_step(insert.get());
        }
        if (code != SQLITE_DONE) {
            return WriteFailure(Failure(code));
        }
    }
    key = sqlite3_last_insert_rowid(m_connection.get());
    return scope.Done();
}

CDbStatus CSqliteDatabase::Update(CTableInfo const& table, std::int64_t key,
    std::span<DbValue const> values, std::vector<bool> const& changed)
{
    assert(values.size() == table.columns.size() && changed.size() == table.columns.size());
    WriteScope scope(*this);
    if (!scope.Status()) {
        return scope.Status();
    }
    auto& update = StatementsOf(table).updates[changed];
    if (update == nullptr) {
        std::string sql = "UPDATE " + table.name + " SET ";
        for (std::size_t i = 0; i < changed.size(); ++i) {
            if (changed[i]) {
                sql += table.columns[i] + " = ?, ";
            }
        }
        sql.resize(sql.size() - 2);
        if (auto status = Prepare(sql + " WHERE id = ?", update); !status) {
            return WriteFailure(status);
        }
    }
    {
        CStatementReset const reset(update.get());
        int parameter = 0;
        int code = SQLITE_OK;
        for (std::size_t i = 0; i < changed.size() && code == SQLITE_OK; ++i) {
            if (changed[i]) {
                code = BindValue(update.get(), ++parameter, values[i]);
            }
        }
        if (code == SQLITE_OK) {
            sqlite3_bind_int64(update.get(), ++parameter, key);
            code = sqlite3_step(update.get());
        }
        if (code != SQLITE_DONE) {
            return WriteFailure(Failure(code));
        }
    }
    if (sqlite3_changes64(m_connection.get()) == 0) {
        return {DbError::gone, "The record was deleted by another program."};
    }
    return scope.Done();
}

CDbStatus CSqliteDatabase::RemoveOne(
    CTableInfo const& table, std::int64_t key, std::int64_t& removed)
{
    auto& remove = StatementsOf(table).remove;
    if (remove == nullptr) {
        if (auto status = Prepare("DELETE FROM " + table.name + " WHERE id = ?", remove); !status) {
            return status;
        }
    }
    CStatementReset const reset(remove.get());
    sqlite3_bind_int64(remove.get(), 1, key);
    if (int const code = sqlite3_step(remove.get()); code != SQLITE_DONE) {
        return WriteFailure(Failure(code));
    }
    removed += sqlite3_changes64(m_connection.get());
    return {};
}

CDbStatus CSqliteDatabase::Remove(
    CTableInfo const& table, CKeyset const& keys, std::int64_t& removed)
{
    removed = 0;
    WriteScope scope(*this);
    auto status = scope.Status();
    std::int64_t count = 0;
    for (std::size_t i = 0; status && i < keys.Size(); ++i) {
        status = RemoveOne(table, keys[i], count);
    }
    if (!status) {
        Doom(status); // some rows may be gone already: all of them or none
        return status;
    }
    status = scope.Done();
    if (status) {
        removed = count;
    }
    return status;
}

CDbStatus CSqliteDatabase::Remove(CTableInfo const& table, std::int64_t key, std::int64_t& removed)
{
    CKeyset keys;
    keys.Add(key);
    return Remove(table, keys, removed);
}

CDbStatus CSqliteDatabase::Execute(
    std::string_view sql, std::span<DbValue const> values, std::int64_t& changed)
{
    changed = 0;
    WriteScope scope(*this);
    auto status = scope.Status();
    sqlite3_stmt* statement = nullptr;
    if (status) {
        status = Prepared(m_queries, sql, {}, statement);
    }
    if (!status) {
        return WriteFailure(status);
    }
    {
        CStatementReset const reset(statement);
        int code = BindValues(statement, values);
        while (code == SQLITE_OK || code == SQLITE_ROW) {
            code = sqlite3_step(statement);
        }
        if (code != SQLITE_DONE) {
            return WriteFailure(Failure(code));
        }
    }
    auto const count = sqlite3_changes64(m_connection.get());
    status = scope.Done();
    if (status) {
        changed = count;
    }
    return status;
}

// ---- transactions

CTransaction::CTransaction(CDatabase& database)
    : m_database(database)
    , m_status(database.Begin())
    , m_bOpen(m_status.IsOK())
{
}

CTransaction::~CTransaction()
{
    if (m_bOpen) {
        m_database.Rollback();
    }
}

CDbStatus CTransaction::Commit()
{
    if (!m_bOpen) {
        return m_status;
    }
    m_bOpen = false;
    m_status = m_database.Commit();
    return m_status;
}
