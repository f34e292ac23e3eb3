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

std::string SqlPlaceholders(std::size_t count)
{
    std::string text = "(?";
    for (std::size_t i = 1; i < count; ++i) {
        text += ",?";
    }
    return text + ")";
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

void CopyValue(sqlite3_value* value, CCell& cell, CRowBlock& block)
{
    int const type = sqlite3_value_type(value);
    if (type == SQLITE_INTEGER) [[likely]] {
        cell.type = CCell::integer;
        cell.integerValue = sqlite3_value_int64(value);
    } else if (type == SQLITE_FLOAT) {
        cell.type = CCell::real;
        cell.realValue = sqlite3_value_double(value);
    } else if (type == SQLITE_NULL) {
        cell.type = CCell::null;
    } else {
        cell.type = type == SQLITE_TEXT ? CCell::text : CCell::blob;
        auto const* const bytes = static_cast<char const*>(sqlite3_value_blob(value));
        block.SetBytes(cell, {bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))});
    }
}
