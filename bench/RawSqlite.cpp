#include "bench/RawSqlite.h"

#include <cstdio>
#include <cstdlib>

namespace
{

void MustBe(bool right, sqlite3* connection)
{
    if (!right) {
        std::fprintf(stderr, "SQLite: %s\n", sqlite3_errmsg(connection));
        std::exit(1);
    }
}

} // namespace

CRawDatabase::CRawDatabase(std::string const& path)
{
    sqlite3* connection = nullptr;
    int const code = sqlite3_open_v2(
        path.c_str(), &connection, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    m_connection.reset(connection);
    MustBe(code == SQLITE_OK, connection);
    // As much memory for pages as the store has, and no more.
    Run("PRAGMA synchronous = FULL; PRAGMA foreign_keys = ON; PRAGMA cache_size = -16384");
}

void CRawDatabase::Run(char const* sql) const
{
    MustBe(sqlite3_exec(Get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK, Get());
}

CRawStatement::CRawStatement(CRawDatabase const& database, std::string const& sql)
    : m_pConnection(database.Get())
{
    MustBe(sqlite3_prepare_v2(m_pConnection, sql.c_str(), -1, &m_pStatement, nullptr) == SQLITE_OK,
        m_pConnection);
}

bool CRawStatement::Step() const
{
    int const code = sqlite3_step(m_pStatement);
    MustBe(code == SQLITE_ROW || code == SQLITE_DONE, m_pConnection);
    return code == SQLITE_ROW;
}
