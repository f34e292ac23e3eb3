#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>

/// Another program's connection: plain SQLite, which knows nothing of our locks and rules.
class CPlainConnection
{
public:
    explicit CPlainConnection(std::string const& path)
    {
        EXPECT_EQ(sqlite3_open(path.c_str(), &m_pConnection), SQLITE_OK);
    }
    ~CPlainConnection() { sqlite3_close(m_pConnection); }
    CPlainConnection(CPlainConnection const&) = delete;
    CPlainConnection& operator=(CPlainConnection const&) = delete;

    sqlite3* Get() const { return m_pConnection; }
    void Run(std::string const& sql) const
    {
        EXPECT_EQ(sqlite3_exec(m_pConnection, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_pConnection) << ": " << sql.substr(0, 200);
    }

private:
    sqlite3* m_pConnection = nullptr;
};
