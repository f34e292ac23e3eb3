// How keys and rows are read.
#include "platform/db/SqliteDatabase.h"

#include <algorithm>
#include <cassert>
#include <functional>

namespace
{

constexpr std::size_t kFewRows = 16;

bool IsAscending(std::span<std::int64_t const> keys)
{
    return std::adjacent_find(keys.begin(), keys.end(), std::greater_equal<>()) == keys.end();
}

/// A range reads a block faster than a list of keys where few foreign rows lie between.
bool IsDense(std::span<std::int64_t const> keys)
{
    auto const width
        = static_cast<std::uint64_t>(keys.back()) - static_cast<std::uint64_t>(keys.front());
    return width < keys.size() + keys.size() / 4;
}

/// Adds the columns of a statement's row, from the first one wanted on.
void AddRow(sqlite3_stmt* statement, int first, CRowBlock& rows)
{
    auto* cell = rows.AddRow();
    for (int column = first; column < sqlite3_column_count(statement); ++column) {
        // Plain values are as good as protected ones: one thread uses the connection.
        CopyValue(sqlite3_column_value(statement, column), *cell++, rows);
    }
}

} // namespace

/// Runs a SELECT, kept in the cache under its clause, and calls what takes each of its rows.
template <typename Take>
CDbStatus CSqliteDatabase::RunSelect(CStatementCache& cache, std::string_view clause,
    std::string_view head, std::span<DbValue const> values, Take const& take)
{
    if (auto status = ReadableStatus(); !status) {
        return status;
    }
    sqlite3_stmt* statement = nullptr;
    if (auto status = Prepared(cache, clause, head, statement); !status) {
        return status;
    }
    CStatementReset const reset(statement);
    int code = BindValues(statement, values);
    if (code == SQLITE_OK) {
        // Not by take_row: where rows are sorted, it is called before that.
        while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
            take(statement);
        }
    }
    return code == SQLITE_DONE ? CDbStatus() : Failure(code);
}

CDbStatus CSqliteDatabase::FindKeys(
    CTableInfo const& table, CSelection const& selection, CKeyset& keys)
{
    keys.Clear();
    return RunSelect(StatementsOf(table).keyFinds, selection.clause,
        "SELECT id FROM " + table.name + " ", selection.values,
        [&](sqlite3_stmt* statement) { keys.Add(sqlite3_column_int64(statement, 0)); });
}

CDbStatus CSqliteDatabase::FindRows(
    CTableInfo const& table, CSelection const& selection, CKeyset& keys, CRowBlock& rows)
{
    keys.Clear();
    rows.Reset(table.columns.size(), 0);
    auto& statements = StatementsOf(table);
    return RunSelect(statements.finds, selection.clause, statements.select, selection.values,
        [&](sqlite3_stmt* statement) {
            keys.Add(sqlite3_column_int64(statement, 0));
            AddRow(statement, 1, rows);
        });
}

CDbStatus CSqliteDatabase::ReadRows(
    CTableInfo const& table, std::span<std::int64_t const> keys, CRowBlock& rows)
{
    assert(keys.size() <= kBlockRows);
    rows.Reset(table.columns.size(), keys.size());
    if (keys.empty()) {
        return {};
    }
    if (auto status = ReadableStatus(); !status) {
        return status;
    }
    auto& statements = StatementsOf(table);
    bool const ascending = IsAscending(keys);
    sqlite3_stmt* statement = nullptr;
    if (auto status = BindKeys(statements, keys, ascending, statement); !status) {
        return status;
    }
    CStatementReset const reset(statement);
    m_order.resize(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        m_order[i] = {keys[i], i};
    }
    if (!ascending) {
        std::sort(m_order.begin(), m_order.end());
    }
    m_nNextInOrder = 0;
    m_pTakenRows = &rows;
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW) {
        code = sqlite3_step(statement);
    }
    return code == SQLITE_DONE ? CDbStatus() : Failure(code);
}

CDbStatus CSqliteDatabase::BindKeys(TableStatements& statements, std::span<std::int64_t const> keys,
    bool ascending, sqlite3_stmt*& statement)
{
    bool const range = ascending && IsDense(keys);
    bool const few = keys.size() <= kFewRows;
    auto& prepared = range ? statements.range : few ? statements.few : statements.block;
    std::size_t const places = few ? kFewRows : kBlockRows;
    if (prepared == nullptr) {
        auto const sql = statements.take
            + (range ? std::string("WHERE id BETWEEN ? AND ?")
                     : "WHERE id IN" + SqlPlaceholders(places))
            + " ORDER BY id";
        if (auto status = Prepare(sql, prepared); !status) {
            return status;
        }
    }
    statement = prepared.get();
    if (range) {
        sqlite3_bind_int64(statement, 1, keys.front());
        sqlite3_bind_int64(statement, 2, keys.back());
        return {};
    }
    int parameter = 0;
    for (auto const key : keys) {
        sqlite3_bind_int64(statement, ++parameter, key);
    }
    while (parameter < static_cast<int>(places)) {
        sqlite3_bind_null(statement, ++parameter);
    }
    return {};
}

/// Called by SQLite for each row: its key and its columns. The rows of a block come by ascending
/// key; those that nobody asked for, between the keys of a range, are passed over.
void CSqliteDatabase::TakeRow(std::span<sqlite3_value*> values)
{
    auto const key = sqlite3_value_int64(values.front());
    while (m_nNextInOrder < m_order.size() && m_order[m_nNextInOrder].first < key) {
        ++m_nNextInOrder;
    }
    if (m_nNextInOrder == m_order.size() || m_order[m_nNextInOrder].first != key) {
        return;
    }
    auto* cells = m_pTakenRows->FillRow(m_order[m_nNextInOrder++].second);
    for (auto* const value : values.subspan(1)) {
        CopyValue(value, *cells++, *m_pTakenRows);
    }
}

CDbStatus CSqliteDatabase::Query(
    std::string_view sql, std::span<DbValue const> values, CRowBlock& rows)
{
    rows.Reset(0, 0);
    return RunSelect(m_queries, sql, {}, values, [&](sqlite3_stmt* statement) {
        if (rows.Rows() == 0) {
            rows.Reset(static_cast<std::size_t>(sqlite3_column_count(statement)), 0);
        }
        AddRow(statement, 0, rows);
    });
}
