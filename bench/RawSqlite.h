#pragma once

#include <cstdint>
#include <memory>
#include <sqlite3.h>
#include <string>

/// Plain SQLite, as someone would use it who needs speed and nothing else: the measure of all that
/// the store does. Ends the program when anything fails, because a figure would mean nothing then.
class CRawDatabase
{
public:
    explicit CRawDatabase(std::string const& path);

    void Run(char const* sql) const;
    sqlite3* Get() const { return m_connection.get(); }

private:
    struct Close
    {
        void operator()(sqlite3* connection) const { sqlite3_close(connection); }
    };
    std::unique_ptr<sqlite3, Close> m_connection;
};

class CRawStatement
{
public:
    CRawStatement(CRawDatabase const& database, std::string const& sql);
    ~CRawStatement() { sqlite3_finalize(m_pStatement); }
    CRawStatement(CRawStatement const&) = delete;
    CRawStatement& operator=(CRawStatement const&) = delete;

    void Bind(int parameter, std::int64_t value) const
    {
        sqlite3_bind_int64(m_pStatement, parameter, value);
    }
    void Bind(int parameter, std::string const& text) const
    {
        sqlite3_bind_text(
            m_pStatement, parameter, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
    bool Step() const;
    int Columns() const { return sqlite3_column_count(m_pStatement); }
    void Reset() const { sqlite3_reset(m_pStatement); }
    std::int64_t Integer(int column) const { return sqlite3_column_int64(m_pStatement, column); }
    double Real(int column) const { return sqlite3_column_double(m_pStatement, column); }
    std::string Text(int column) const
    {
        auto const* const bytes
            = static_cast<char const*>(sqlite3_column_blob(m_pStatement, column));
        return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(m_pStatement, column))};
    }

private:
    sqlite3* m_pConnection;
    sqlite3_stmt* m_pStatement = nullptr;
};
