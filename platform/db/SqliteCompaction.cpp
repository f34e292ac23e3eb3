// A copy without gaps takes the place of a database file.
#include "platform/db/Files.h"
#include "platform/db/SqliteOpen.h"

#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace
{

constexpr std::chrono::milliseconds kLeavingPause{5};

/// All is read once and in order: what is kept of it had better fit into the processor's cache,
/// which saves a tenth of the time.
CDbStatus KeepFewPages(sqlite3* connection, std::string const& path)
{
    std::string ignored;
    return ReadAnswer(connection, path, "PRAGMA cache_size = -512", ignored);
}

/// Something of which a table and each of its indexes have the same number.
struct CRows
{
    std::string table; ///< empty for an index of the table before it
    std::string from; ///< what follows FROM to count them there
};

CDbStatus ListRows(sqlite3* connection, std::string const& path, std::vector<CRows>& rows)
{
    constexpr char const* kSelect
        = "SELECT printf('\"%w\"', name), printf('\"%w\" NOT INDEXED', name), name, 0 "
          "FROM sqlite_schema WHERE type = 'table' UNION ALL "
          "SELECT '', printf('\"%w\" INDEXED BY \"%w\" WHERE 1', t.name, i.name), t.name, 1 "
          "FROM sqlite_schema AS t JOIN pragma_index_list(t.name) AS i "
          "WHERE t.type = 'table' AND NOT i.partial ORDER BY 3, 4";
    auto const keep = [](void* target, int, char** values, char**) {
        static_cast<std::vector<CRows>*>(target)->push_back({values[0], values[1]});
        return 0;
    };
    int const code = sqlite3_exec(connection, kSelect, keep, &rows, nullptr);
    return code == SQLITE_OK ? CDbStatus() : SqliteFailure(connection, code, path);
}

CDbStatus Count(sqlite3* connection, std::string const& path, std::string const& from, long& count)
{
    return ReadAnswer(connection, path, ("SELECT count(*) FROM " + from).c_str(), count);
}

/// SQLite copies an index entry by entry, so that what it lacked it lacks in the copy.
CDbStatus RebuildIndexes(sqlite3* connection, std::string const& path)
{
    std::string answer;
    auto status = ReadAnswer(connection, path, "REINDEX", answer);
    if (status) {
        status = ReadAnswer(connection, path, "PRAGMA integrity_check(1)", answer);
    }
    return !status || answer == "ok"
        ? status
        : CDbStatus(DbError::damaged, Quoted(path) + "is damaged: " + answer + ".");
}

} // namespace

CDbStatus CompactDatabaseFile(std::string const& path, CSchema const& schema)
{
    std::unique_ptr<CDatabase> database;
    auto status = OpenDatabase(path, schema, database, kMaintenanceWait);
    return status ? static_cast<CSqliteDatabase&>(*database).Compact() : status;
}

CDbStatus CSqliteDatabase::Compact()
{
    sqlite3_busy_timeout(m_connection.get(), static_cast<int>(kMaintenanceWait.count()));
    auto status = WaitForExclusiveUse();
    if (status) {
        status = LeaveLogMode();
    }
    if (status) {
        status = KeepFewPages(m_connection.get(), m_strPath);
    }
    long dataVersion = 0;
    if (status) {
        status = ReadAnswer(m_connection.get(), m_strPath, "PRAGMA data_version", dataVersion);
    }
    if (!status) {
        return status;
    }
    auto const copy = PartName(m_strPath);
    status = MakeCompacted(copy);
    if (status) {
        status = TakePlace(copy, dataVersion);
    }
    RemoveWithLog(copy);
    if (!status && MovedStatus()) {
        std::string ignored; // whoever opens the file next tries again
        (void)ReadAnswer(m_connection.get(), m_strPath, "PRAGMA journal_mode = WAL", ignored);
    }
    return status;
}

CDbStatus CSqliteDatabase::WaitForExclusiveUse()
{
    auto const end = std::chrono::steady_clock::now() + kMaintenanceWait;
    while (!m_use.TryExclusive() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(kLeavingPause);
    }
    return UseExclusively();
}

/// Moves the log into the file, which then is all there is of it. Fails if a program has the file
/// open that knows nothing of the lock file; one that opens it later cannot write into a file that
/// lost its name, as it could through a log.
CDbStatus CSqliteDatabase::LeaveLogMode()
{
    std::string mode;
    auto status = ReadAnswer(m_connection.get(), m_strPath, "PRAGMA journal_mode = DELETE", mode);
    return !status || mode == "delete" ? status : Failure(SQLITE_BUSY);
}

CDbStatus CSqliteDatabase::MakeCompacted(std::string const& path)
{
    RemoveWithLog(path);
    auto status = CreateEmptyFile(path);
    if (status) {
        status = VacuumInto(path);
    }
    if (status) {
        status = CheckCopy(path);
    }
    if (status) {
        status = CopyAccess(m_strPath, path);
    }
    return status ? SyncFile(path) : status;
}

CDbStatus CSqliteDatabase::CheckCopy(std::string const& path)
{
    CConnectionPtr copy;
    int version = 0;
    auto status = Connect(path, copy, kMaintenanceWait);
    if (status) {
        sqlite3_db_config(copy.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
        status = Recognise(copy.get(), path, m_schema, version);
    }
    if (status) {
        status = KeepFewPages(copy.get(), path);
    }
    if (status) {
        status = CompareRows(copy.get(), path);
    }
    std::string mode;
    if (status) {
        status = ReadAnswer(copy.get(), path, "PRAGMA journal_mode = WAL", mode);
    }
    return status;
}

CDbStatus CSqliteDatabase::CompareRows(sqlite3* copy, std::string const& path)
{
    std::vector<CRows> list;
    auto status = ListRows(copy, path, list);
    bool areIndexesWhole = true;
    long copied = 0;
    for (auto rows = list.begin(); status && rows != list.end(); ++rows) {
        long count = 0;
        status = Count(copy, path, rows->from, count);
        if (rows->table.empty()) {
            areIndexesWhole = areIndexesWhole && count == copied;
            continue;
        }
        copied = count;
        if (status) { // by an index if there is one, which may be what is wrong
            status = Count(m_connection.get(), m_strPath, rows->table, count);
        }
        if (status && count != copied) {
            status = Count(m_connection.get(), m_strPath, rows->from, count);
        }
        if (status && count != copied) {
            status = {DbError::damaged, Quoted(m_strPath) + "is damaged: rows would be lost."};
        }
    }
    return status && !areIndexesWhole ? RebuildIndexes(copy, path) : status;
}

CDbStatus CSqliteDatabase::TakePlace(std::string const& copy, long dataVersion)
{
    // Nobody at all reads or writes now, also by SQLite alone.
    std::string ignored;
    long now = 0;
    auto status = ReadAnswer(m_connection.get(), m_strPath, "BEGIN EXCLUSIVE", ignored);
    if (status) {
        status = ReadAnswer(m_connection.get(), m_strPath, "PRAGMA data_version", now);
    }
    if (status && now != dataVersion) {
        status = {DbError::busy, Quoted(m_strPath) + "was changed by another program meanwhile."};
    }
    if (status) {
        auto const old = WithExtension(m_strPath, ".old");
        RemoveWithLog(old);
        status = ReplaceFile(m_strPath, copy, old);
    }
    if (status) {
        status = SyncFolderOf(m_strPath);
    }
    sqlite3_exec(m_connection.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    return status;
}
