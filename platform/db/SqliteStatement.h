#pragma once

#include "platform/db/RowBlock.h"
#include "platform/db/Value.h"

#include <memory>
#include <span>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <unordered_map>

struct CStatementDeleter
{
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using CStatementPtr = std::unique_ptr<sqlite3_stmt, CStatementDeleter>;

/// Resets a statement on every path: one left unfinished would hold a read open, show stale rows
/// and make this connection's own writes fail.
class CStatementReset
{
public:
    explicit CStatementReset(sqlite3_stmt* statement)
        : m_pStatement(statement)
    {
    }
    ~CStatementReset() { sqlite3_reset(m_pStatement); }
    CStatementReset(CStatementReset const&) = delete;
    CStatementReset& operator=(CStatementReset const&) = delete;

private:
    sqlite3_stmt* m_pStatement;
};

/// Prepared statements by a text that tells them apart.
class CStatementCache
{
public:
    /// The statement kept under this name, null when there is none.
    sqlite3_stmt* Find(std::string_view name) const;
    sqlite3_stmt* Keep(std::string name, CStatementPtr statement);
    void Clear() { m_statements.clear(); }

private:
    struct Hash
    {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const
        {
            return std::hash<std::string_view>()(text);
        }
    };
    // Searches put together by the user could go on making new statements all day.
    static constexpr std::size_t kMost = 200;

    std::unordered_map<std::string, CStatementPtr, Hash, std::equal_to<>> m_statements;
};

/// A list of count question marks: "(?,?,?)".
std::string SqlPlaceholders(std::size_t count);

/// Binds a value; a text must stay where it is until the statement is reset.
int BindValue(sqlite3_stmt* statement, int parameter, DbValue const& value);
int BindValue(sqlite3_stmt* statement, int parameter, DbValue&& value) = delete;
int BindValues(sqlite3_stmt* statement, std::span<DbValue const> values);

/// Copies one value; what is longer than a number goes to the block's bytes.
void CopyValue(sqlite3_value* value, CCell& cell, CRowBlock& block);
