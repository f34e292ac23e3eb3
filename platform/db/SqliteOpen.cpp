#include "platform/db/SqliteOpen.h"

#include "platform/db/Files.h"
#include "platform/db/SqliteFold.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <functional>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace
{

constexpr int kPageSize = 4096;
constexpr int kMostBytes = 64 * 1024 * 1024; // of one text: far more than any field of ours

/// Locks and shared memory of the log need all programs on one computer.
bool IsNetworkFileSystem(std::string const& path)
{
    constexpr std::array<unsigned long, 7> kNetwork = {
        0x6969UL, // NFS
        0xFF534D42UL, // CIFS
        0xFE534D42UL, // SMB2
        0x517BUL, // SMB
        0x01021997UL, // 9P
        0x5346414FUL, // AFS
        0x73757245UL, // Coda
    };
    struct statfs info = {};
    if (::statfs(path.c_str(), &info) != 0) {
        return false;
    }
    auto const type = static_cast<unsigned long>(info.f_type) & 0xFFFFFFFFUL;
    return std::find(kNetwork.begin(), kNetwork.end(), type) != kNetwork.end();
}

/// What can be said without opening the file.
CDbStatus LookAt(std::string const& path)
{
    struct stat info = {};
    if (::lstat(path.c_str(), &info) != 0) {
        return errno == ENOENT || errno == ENOTDIR
            ? CDbStatus(DbError::missing, Quoted(path) + "does not exist.")
            : FileFailure("Cannot use", path, errno);
    }
    if (!S_ISREG(info.st_mode)) {
        // A link would give one database two lock files.
        return {DbError::foreign, Quoted(path) + "is a link or a folder, not a file."};
    }
    if (info.st_size == 0) {
        return {DbError::empty, Quoted(path) + "is empty: its contents are lost."};
    }
    if (IsNetworkFileSystem(path)) {
        return {DbError::network, Quoted(path) + "is on a network drive, where it is not safe."};
    }
    if (::access(path.c_str(), R_OK | W_OK) != 0
        || ::access(FolderOf(path).c_str(), W_OK | X_OK) != 0) {
        return {DbError::readOnly,
            Quoted(path) + "or its folder cannot be written: check the permissions."};
    }
    return {};
}

CDbStatus CutStatus(std::string const& path)
{
    return {DbError::cut, Quoted(path) + "is cut short: a part of it is missing."};
}

/// Asks the file itself, past SQLite, which calls every file that ends too early just damaged.
bool EndsBeforeItsLastPage(sqlite3* connection)
{
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    std::array<unsigned char, 32> header = {};
    if (sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK
        || file->pMethods == nullptr || file->pMethods->xFileSize(file, &size) != SQLITE_OK
        || file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0)
            != SQLITE_OK) {
        return false;
    }
    sqlite3_int64 pages = 0;
    for (std::size_t i = 28; i < 32; ++i) {
        pages = pages * 256 + header[i];
    }
    return size < pages * kPageSize;
}

bool HasLog(std::string const& path)
{
    struct stat log = {};
    return ::stat((path + "-wal").c_str(), &log) == 0 && log.st_size > 0;
}

/// Others may add pages and empty the log meanwhile, so the order of the steps matters: a page is
/// first in the log, then in both, then in the file alone.
CDbStatus CheckSize(sqlite3* connection, std::string const& path)
{
    long least = 0;
    long pageSize = 0;
    auto status = ReadAnswer(connection, path, "PRAGMA page_count", least);
    if (status) {
        status = ReadAnswer(connection, path, "PRAGMA page_size", pageSize);
    }
    bool const hasLog = HasLog(path);
    struct stat file = {};
    if (status && ::stat(path.c_str(), &file) != 0) {
        return FileFailure("Cannot use", path, errno);
    }
    long most = 0;
    if (status) {
        status = ReadAnswer(connection, path, "PRAGMA page_count", most);
    }
    if (!status) {
        return status;
    }
    if (!hasLog && file.st_size > most * pageSize) {
        return {DbError::damaged, Quoted(path) + "is damaged: it is longer than its pages."};
    }
    if (file.st_size % pageSize != 0 || (!hasLog && file.st_size < least * pageSize)) {
        return CutStatus(path);
    }
    return {};
}

/// Some wrong bits in the header do no harm to a first look, but to rows and later writes.
bool IsLaidOutAsOurs(sqlite3* connection)
{
    int reserved = -1;
    sqlite3_file_control(connection, "main", SQLITE_FCNTL_RESERVE_BYTES, &reserved);
    return reserved == 0 && sqlite3_db_readonly(connection, "main") == 0;
}

/// What to say about a file that was opened and is not to be used. Lets SQLite remove the empty log
/// that it made beside it; one with changes in it is left as it is.
CDbStatus Refused(CDbStatus const& status, sqlite3* connection, std::string const& path)
{
    if (connection == nullptr) {
        return status;
    }
    if (!HasLog(path)) {
        sqlite3_db_config(connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    }
    bool const cut = status.Error() == DbError::damaged && EndsBeforeItsLastPage(connection);
    return cut ? CutStatus(path) : status;
}

/// Puts right what a compaction leaves that failed or was killed, a file without its log and a part
/// of a copy beside it, unless somebody else uses the file.
CDbStatus TidyUp(sqlite3* connection, std::string const& path, CFileUse& use)
{
    std::string mode;
    auto const part = PartName(path);
    auto status = ReadAnswer(connection, path, "PRAGMA journal_mode", mode);
    bool const isTidy = mode == "wal" && ::access(part.c_str(), F_OK) != 0;
    if (!status || isTidy || !use.TryExclusive()) {
        return status;
    }
    RemoveWithLog(part);
    if (mode != "wal") {
        status = ReadAnswer(connection, path, "PRAGMA journal_mode = WAL", mode);
    }
    use.BackToShared();
    return status;
}

/// The first free name for a copy of a file of that version.
std::string CopyName(std::string const& path, int version)
{
    auto const stem = WithExtension(path, ".v" + std::to_string(version));
    auto name = stem + ".bak";
    for (int n = 2; ::access(name.c_str(), F_OK) == 0; ++n) {
        name = stem + "-" + std::to_string(n) + ".bak";
    }
    return name;
}

CDbStatus FillNew(std::string const& path, CSchema const& schema)
{
    CConnectionPtr connection;
    auto status = Connect(path, connection, kLongestWait);
    if (!status) {
        return status;
    }
    sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    std::string sql = "PRAGMA page_size = " + std::to_string(kPageSize)
        + "; PRAGMA journal_mode = WAL; BEGIN IMMEDIATE; PRAGMA application_id = "
        + std::to_string(schema.applicationID) + "; ";
    for (auto const step : schema.steps) {
        sql.append(step).append("\n;"); // a step may end with a comment
    }
    sql += "PRAGMA user_version = " + std::to_string(schema.Version()) + "; COMMIT;";
    int code = sqlite3_exec(connection.get(), sql.c_str(), nullptr, nullptr, nullptr);
    if (code == SQLITE_OK) {
        code = sqlite3_wal_checkpoint_v2(
            connection.get(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    }
    return code == SQLITE_OK ? CDbStatus() : SqliteFailure(connection.get(), code, path);
}

/// Gives a finished file its name, or leaves none of that name.
CDbStatus PutInPlace(std::string const& part, std::string const& path)
{
    auto status = SyncFile(part);
    if (status) {
        status = RenameNoReplace(part, path);
    }
    if (!status) {
        return status;
    }
    status = SyncFolderOf(path);
    if (!status) {
        ::unlink(path.c_str());
    }
    return status;
}

/// Makes a new database file, whole under its name or not there at all, even if we are killed. fill
/// gets the name of an empty file, 0600, which it is to leave closed: SQLite alone would make one
/// that all can read.
CDbStatus MakeFile(
    std::string const& path, std::function<CDbStatus(std::string const& part)> const& fill)
{
    if (::access(path.c_str(), F_OK) == 0) {
        return {DbError::exists, Quoted(path) + "exists already and is left as it is."};
    }
    CFileUse use;
    auto status = use.Acquire(path, kMaintenanceWait);
    if (status && !use.TryExclusive()) {
        status = {DbError::inUse, Quoted(path) + "is being made by another program."};
    }
    if (!status) {
        return status;
    }
    auto const part = PartName(path);
    // Nobody else makes this file now: what is there is what a killed program left.
    RemoveWithLog(part);
    status = CreateEmptyFile(part);
    if (status) {
        status = fill(part);
    }
    if (status) {
        status = PutInPlace(part, path);
    }
    RemoveWithLog(part);
    return status;
}

} // namespace

std::string Quoted(std::string const& path)
{
    return "The file \"" + path + "\" ";
}

std::string FileName(std::string const& path)
{
    return path.starts_with('/') ? path : "./" + path;
}

CDbStatus Connect(
    std::string const& path, CConnectionPtr& connection, std::chrono::milliseconds wait)
{
    // One thread uses a connection. Has no effect, and needs none, once SQLite has been used.
    sqlite3_config(SQLITE_CONFIG_MULTITHREAD);
    sqlite3* opened = nullptr;
    int const code = sqlite3_open_v2(FileName(path).c_str(), &opened,
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    connection.reset(opened);
    if (code != SQLITE_OK) {
        return SqliteFailure(opened, code, path);
    }
    sqlite3_busy_timeout(opened, static_cast<int>(wait.count()));
    sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, kMostBytes);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
    // A file that turns out not to be ours is left as it is, its log included.
    sqlite3_db_config(opened, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    AddFoldFunctions(opened);
    int const set = sqlite3_exec(opened,
        "PRAGMA cell_size_check = ON; PRAGMA secure_delete = ON; PRAGMA synchronous = FULL; "
        "PRAGMA temp_store = MEMORY; PRAGMA cache_size = -16384; "
        "PRAGMA wal_autocheckpoint = 0;",
        nullptr, nullptr, nullptr);
    return set == SQLITE_OK ? CDbStatus() : SqliteFailure(opened, set, path);
}

CDbStatus ReadAnswer(
    sqlite3* connection, std::string const& path, char const* sql, std::string& answer)
{
    answer.clear();
    auto const keep = [](void* target, int, char** values, char**) {
        *static_cast<std::string*>(target) = values[0] == nullptr ? "" : values[0];
        return 0;
    };
    int const code = sqlite3_exec(connection, sql, keep, &answer, nullptr);
    return code == SQLITE_OK ? CDbStatus() : SqliteFailure(connection, code, path);
}

CDbStatus ReadAnswer(sqlite3* connection, std::string const& path, char const* sql, long& answer)
{
    std::string text;
    auto status = ReadAnswer(connection, path, sql, text);
    answer = std::strtol(text.c_str(), nullptr, 10);
    return status;
}

CDbStatus Recognise(
    sqlite3* connection, std::string const& path, CSchema const& schema, int& version)
{
    long applicationID = 0;
    long tables = 0;
    long stored = 0;
    auto status = ReadAnswer(connection, path, "PRAGMA application_id", applicationID);
    if (status) {
        status = ReadAnswer(connection, path, "SELECT count(*) FROM sqlite_schema", tables);
    }
    if (!status) {
        return status;
    }
    if (static_cast<std::uint32_t>(applicationID) != schema.applicationID) {
        return {DbError::foreign,
            Quoted(path) + "is not a Corvana " + std::string(schema.kind) + " file."};
    }
    status = ReadAnswer(connection, path, "PRAGMA user_version", stored);
    if (!status) {
        return status;
    }
    if (stored < 1 || tables == 0) {
        return {DbError::damaged, Quoted(path) + "is damaged: its tables are missing."};
    }
    if (stored > schema.Version()) {
        return {DbError::newer,
            Quoted(path) + "was written by a newer version of Corvana. Update this one first."};
    }
    if (!IsLaidOutAsOurs(connection)) {
        return {DbError::damaged, Quoted(path) + "is damaged: its beginning is not as we make it."};
    }
    version = static_cast<int>(stored);
    return CheckSize(connection, path);
}

void RemoveWithLog(std::string const& path)
{
    for (auto const* const extension : {"", "-wal", "-shm", "-journal"}) {
        ::unlink((path + extension).c_str());
    }
}

CDbStatus OpenDatabase(std::string const& path, CSchema const& schema,
    std::unique_ptr<CDatabase>& database, std::chrono::milliseconds wait)
{
    database.reset();
    CFileUse use;
    CConnectionPtr connection;
    int version = 0;
    auto status = LookAt(path);
    if (status) {
        status = use.Acquire(path, std::min(wait, kMaintenanceWait));
    }
    if (status) {
        // Maintenance may have exchanged the file while we waited.
        status = LookAt(path);
    }
    if (status) {
        status = Connect(path, connection, wait);
    }
    if (status) {
        status = Recognise(connection.get(), path, schema, version);
    }
    if (status) {
        status = TidyUp(connection.get(), path, use);
    }
    if (!status) {
        return Refused(status, connection.get(), path);
    }
    sqlite3_busy_timeout(connection.get(), static_cast<int>(kLongestWait.count()));
    sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    auto opened
        = std::make_unique<CSqliteDatabase>(path, schema, std::move(use), std::move(connection));
    if (version < schema.Version()) {
        if (status = opened->Migrate(version); !status) {
            return status;
        }
    }
    database = std::move(opened);
    return {};
}

CDbStatus CreateDatabase(std::string const& path, CSchema const& schema)
{
    return MakeFile(path, [&](std::string const& part) { return FillNew(part, schema); });
}

// ---- what needs the connection as a whole

CDbStatus CSqliteDatabase::Migrate(int version)
{
    auto status = UseExclusively();
    if (!status) {
        return status;
    }
    status = CopyTo(CopyName(m_strPath, version), {});
    if (status) {
        // A step that replaces a table drops the old one, which would delete the rows below it.
        sqlite3_db_config(m_connection.get(), SQLITE_DBCONFIG_ENABLE_FKEY, 0, nullptr);
        status = RunSteps(version);
        sqlite3_db_config(m_connection.get(), SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
    }
    ShareAgain();
    return status;
}

CDbStatus CSqliteDatabase::RunSteps(int version)
{
    CTransaction transaction(*this);
    auto status = transaction.Status();
    std::int64_t orphansBefore = 0;
    if (status) {
        status = CountOrphans(orphansBefore);
    }
    for (auto step = static_cast<std::size_t>(version); status && step < m_schema.steps.size();
         ++step) {
        auto const sql = std::string(m_schema.steps[step])
            + "\n; PRAGMA user_version = " + std::to_string(step + 1) + ";";
        int const code = sqlite3_exec(m_connection.get(), sql.c_str(), nullptr, nullptr, nullptr);
        status = code == SQLITE_OK ? CDbStatus() : WriteFailure(Failure(code));
    }
    std::int64_t orphans = 0;
    if (status) {
        status = CountOrphans(orphans);
    }
    if (status && orphans > orphansBefore) {
        status = {DbError::constraint,
            Quoted(m_strPath) + "cannot be brought to the present version: rows would be lost."};
    }
    return status ? transaction.Commit() : status;
}

CDbStatus CSqliteDatabase::CountOrphans(std::int64_t& orphans)
{
    CRowBlock rows;
    auto status = Query("PRAGMA foreign_key_check", {}, rows);
    orphans = static_cast<std::int64_t>(rows.Rows());
    return status;
}

CDbStatus CSqliteDatabase::CopyTo(std::string const& path, CDbWatch const& watch)
{
    auto status = MovedStatus();
    return status ? MakeFile(path, [&](std::string const& part) { return VacuumInto(part, watch); })
                  : status;
}
