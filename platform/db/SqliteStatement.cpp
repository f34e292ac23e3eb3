#include "platform/db/SqliteStatement.h"

#include <type_traits>

sqlite3_stmt* CStatementCache::Find(std::string_view name) const
{
    auto const found = m_statements.find(name);
    return found == m_statements.end() ? nullptr : found->second.get();
}

sqlite3_stmt* CStatementCache::Keep(std::string name, CStatementPtr statement)
{
    if (m_statements.size() >= kMost) {
        m_statements.clear();
    }
    return m_statements.insert_or_assign(std::move(name), std::move(statement)).first->second.get();
}

int BindValue(sqlite3_stmt* statement, int parameter, DbValue const& value)
{
    return std::visit(
        [&](auto const& v) {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::int64_t>) {
                return sqlite3_bind_int64(statement, parameter, v);
            } else if constexpr (std::is_same_v<T, double>) {
                return sqlite3_bind_double(statement, parameter, v);
            } else if constexpr (std::is_same_v<T, std::string>) {
                return sqlite3_bind_text64(
                    statement, parameter, v.data(), v.size(), SQLITE_STATIC, SQLITE_UTF8);
            } else {
                return sqlite3_bind_null(statement, parameter);
            }
        },
        value);
}

int BindValues(sqlite3_stmt* statement, std::span<DbValue const> values)
{
    int parameter = 0;
    for (auto const& value : values) {
        if (int const code = BindValue(statement, ++parameter, value); code != SQLITE_OK) {
            return code;
        }
    }
    return SQLITE_OK;
}

void CopyCells(sqlite3_stmt* statement, int first, int count, CCell* cells, CRowBlock& block)
{
    for (int column = 0; column < count; ++column) {
        // Asking the value instead of the column saves a look-up for its type and another one for
        // its content; allowed because the connection is used by one thread.
        auto* const value = sqlite3_column_value(statement, first + column);
        CCell& cell = cells[column];
        switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            cell.type = CCell::integer;
            cell.integerValue = sqlite3_value_int64(value);
            break;
        case SQLITE_FLOAT:
            cell.type = CCell::real;
            cell.realValue = sqlite3_value_double(value);
            break;
        case SQLITE_TEXT:
        case SQLITE_BLOB: {
            cell.type = sqlite3_value_type(value) == SQLITE_TEXT ? CCell::text : CCell::blob;
            auto const* const bytes = static_cast<char const*>(sqlite3_value_blob(value));
            block.SetBytes(cell, {bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))});
            break;
        }
        default:
            cell.type = CCell::null;
            break;
        }
    }
}
