// What concerns the file as a whole: its log, its exclusive use, copies, and whether it is sound.
#include "platform/db/SqliteOpen.h"

#include <algorithm>
#include <cassert>
#include <chrono>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace
{

constexpr std::chrono::seconds kLongLogWait{1};
constexpr std::chrono::milliseconds kWritersTurn{50};
constexpr int kWatchedSteps = 20'000; // of SQLite's machine, some milliseconds

/// While it lives, asks between the steps of this connection's statements how much is done by then,
/// and ends what runs when the watch says so.
class CStepWatch
{
public:
    CStepWatch(sqlite3* connection, CDbWatch const& watch, std::function<double(double steps)> done)
        : m_pConnection(connection)
        , m_watch(watch)
        , m_fnDone(std::move(done))
    {
        auto const ask
            = [](void* self) { return static_cast<CStepWatch*>(self)->GoesOn() ? 0 : 1; };
        if (m_watch) {
            sqlite3_progress_handler(m_pConnection, kWatchedSteps, ask, this);
        }
    }
    ~CStepWatch() { sqlite3_progress_handler(m_pConnection, 0, nullptr, nullptr); }
    CStepWatch(CStepWatch const&) = delete;
    CStepWatch& operator=(CStepWatch const&) = delete;

private:
    bool GoesOn()
    {
        m_steps += kWatchedSteps;
        return m_watch(std::min(m_fnDone(m_steps), 1.0));
    }

    sqlite3* m_pConnection;
    CDbWatch const& m_watch;
    std::function<double(double steps)> const m_fnDone;
    double m_steps = 0;
};

} // namespace

void CSqliteDatabase::NoteLogPages(int pages)
{
    if (pages < m_nLogPages) {
        m_nNextCheckpoint = kLogPages;
    }
    m_nLogPages = pages;
}

int CSqliteDatabase::MoveLog(int mode, std::chrono::milliseconds wait)
{
    sqlite3_busy_timeout(m_connection.get(), static_cast<int>(wait.count()));
    int const code = sqlite3_wal_checkpoint_v2(m_connection.get(), nullptr, mode, nullptr, nullptr);
    sqlite3_busy_timeout(m_connection.get(), static_cast<int>(kLongestWait.count()));
    m_use.UnlockCheckpoint();
    return code;
}

void CSqliteDatabase::CheckpointWhenLong()
{
    if (m_nLogPages < m_nNextCheckpoint || !MovedStatus()) {
        return;
    }
    // Under load some writer and some reader are always at work, and the log would never end.
    bool const pressing = m_nLogPages >= 4 * kLogPages;
    if (pressing && m_use.LockCheckpoint(kLongLogWait)) {
        MoveLog(SQLITE_CHECKPOINT_RESTART, kReadersWait);
    } else if (!pressing && m_use.TryLockCheckpoint()) {
        MoveLog(SQLITE_CHECKPOINT_PASSIVE, {});
    }
    // If all of it was moved, the log starts anew with a later commit; until then it has to grow.
    m_nNextCheckpoint = m_nLogPages + kLogPages / 4;
}

CDbStatus CSqliteDatabase::Checkpoint()
{
    assert(m_nDepth == 0);
    if (auto status = MovedStatus(); !status) {
        return status;
    }
    auto const end = std::chrono::steady_clock::now() + kLongestWait;
    int code = SQLITE_BUSY;
    // In turns, because others cannot write while this waits for somebody's long read.
    for (;;) {
        if (m_use.LockCheckpoint(kReadersWait)) {
            code = MoveLog(SQLITE_CHECKPOINT_TRUNCATE, kReadersWait);
        }
        if ((code & 0xFF) != SQLITE_BUSY || std::chrono::steady_clock::now() >= end) {
            break;
        }
        std::this_thread::sleep_for(kWritersTurn);
    }
    return code == SQLITE_OK ? CDbStatus() : Failure(code);
}

CDbStatus CSqliteDatabase::UseExclusively()
{
    if (m_use.TryExclusive()) {
        return {};
    }
    std::string users;
    for (auto const& user : FileUsers(m_strPath)) {
        if (user.pid != ::getpid()) {
            users += (users.empty() ? "" : ", ") + user.program + " (process "
                + std::to_string(user.pid) + ")";
        }
    }
    return {DbError::inUse,
        "The file \"" + m_strPath + "\" is in use by " + (users.empty() ? "another program" : users)
            + ". Close it there first."};
}

CDbStatus CSqliteDatabase::VacuumInto(std::string const& path, CDbWatch const& watch)
{
    constexpr char const* kSize = "SELECT (page_count - freelist_count) * page_size "
                                  "FROM pragma_page_count, pragma_freelist_count, pragma_page_size";
    long bytes = 0;
    auto status = ReadAnswer(m_connection.get(), m_strPath, kSize, bytes);
    CStepWatch const steps(m_connection.get(), watch, [&](double /*steps*/) {
        struct stat copy = {};
        return ::stat(path.c_str(), &copy) == 0 ? double(copy.st_size) / double(bytes) : 0;
    });
    DbValue const name = FileName(path);
    CStatementPtr statement;
    if (status) {
        status = Prepare("VACUUM INTO ?", statement);
    }
    if (status) {
        BindValue(statement.get(), 1, name);
        int const code = sqlite3_step(statement.get());
        status = code == SQLITE_DONE ? CDbStatus() : Failure(code);
    }
    return status;
}

void CSqliteDatabase::ShareAgain()
{
    m_use.BackToShared();
}

CDbStatus CSqliteDatabase::AddFindings(
    char const* sql, char const* what, std::vector<std::string>& findings)
{
    CRowBlock rows;
    auto status = Query(sql, {}, rows);
    for (std::size_t i = 0; status && i < rows.Rows(); ++i) {
        auto const row = rows.Row(i);
        auto const& cell = row.Cell(0);
        auto const text = cell.type == CCell::text ? std::string(row.Text(cell)) : std::string();
        if (text != "ok") {
            findings.push_back(what + text);
        }
    }
    return status;
}

/// About how many steps the checks of all rows take, by the columns, indexes and foreign keys of
/// their tables. What is too damaged to be counted is left to the check to tell.
double CSqliteDatabase::StepsOfCheck()
{
    CRowBlock tables;
    double steps = 1;
    auto status = Query("SELECT printf('SELECT count(*) FROM \"%w\"', t.name), 2 "
                        "+ 2 * (SELECT count(*) FROM pragma_table_info(t.name)) "
                        "+ 5 * (SELECT count(*) FROM pragma_index_list(t.name)) "
                        "+ 5 * (SELECT count(*) FROM pragma_foreign_key_list(t.name)) "
                        "FROM sqlite_schema AS t WHERE t.type = 'table'",
        {}, tables);
    for (std::size_t i = 0; status && i < tables.Rows(); ++i) {
        auto const table = tables.Row(i);
        long rows = 0;
        std::string const count(table.Text(table.Cell(0)));
        status = ReadAnswer(m_connection.get(), m_strPath, count.c_str(), rows);
        steps += double(rows) * double(table.Cell(1).integerValue);
    }
    return steps;
}

CDbStatus CSqliteDatabase::Check(std::vector<std::string>& findings, CDbWatch const& watch)
{
    double const all = watch ? StepsOfCheck() : 1;
    CStepWatch const steps(m_connection.get(), watch, [&](double done) { return done / all; });
    auto status = AddFindings("PRAGMA integrity_check", "damage: ", findings);
    if (status) {
        status = AddFindings(
            "PRAGMA foreign_key_check", "rows without their parent row in table ", findings);
    }
    if (status) {
        status = CompareSchema(findings);
    }
    return status;
}

CDbStatus CSqliteDatabase::CompareSchema(std::vector<std::string>& findings)
{
    constexpr char const* kObjects = "SELECT name, coalesce(sql, '') FROM sqlite_schema "
                                     "WHERE name NOT LIKE 'sqlite_%' ORDER BY name";
    sqlite3* memory = nullptr;
    int code = sqlite3_open(":memory:", &memory);
    CConnectionPtr const model(memory);
    for (std::size_t i = 0; code == SQLITE_OK && i < m_schema.steps.size(); ++i) {
        code = sqlite3_exec(
            memory, std::string(m_schema.steps[i]).c_str(), nullptr, nullptr, nullptr);
    }
    std::map<std::string, std::string> expected;
    auto const keep = [](void* target, int, char** values, char**) {
        static_cast<std::map<std::string, std::string>*>(target)->emplace(values[0], values[1]);
        return 0;
    };
    if (code == SQLITE_OK) {
        code = sqlite3_exec(memory, kObjects, keep, &expected, nullptr);
    }
    if (code != SQLITE_OK) {
        return SqliteFailure(memory, code, m_strPath);
    }
    std::map<std::string, std::string> found;
    code = sqlite3_exec(m_connection.get(), kObjects, keep, &found, nullptr);
    if (code != SQLITE_OK) {
        return Failure(code);
    }
    for (auto const& [name, sql] : expected) {
        auto const match = found.find(name);
        if (match == found.end()) {
            findings.push_back("missing: " + name);
        } else if (match->second != sql) {
            findings.push_back("not as this version makes it: " + name);
        }
    }
    for (auto const& [name, sql] : found) {
        if (!expected.contains(name)) {
            findings.push_back("unknown: " + name);
        }
    }
    return {};
}
