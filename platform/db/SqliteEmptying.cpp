// How a whole table is emptied at once.
#include "platform/db/SqliteDatabase.h"

#include <cassert>
#include <string>
#include <string_view>
#include <vector>

namespace
{

/// SQLite gives all pages of a table back at once, without looking its rows up in the indexes, only
/// where it acts on no foreign key. This switch, unlike the pragma, works in a transaction.
class CForeignKeysOff
{
public:
    explicit CForeignKeysOff(sqlite3* connection)
        : m_pConnection(connection)
    {
        Switch(0);
    }
    ~CForeignKeysOff() { Switch(1); }
    CForeignKeysOff(CForeignKeysOff const&) = delete;
    CForeignKeysOff& operator=(CForeignKeysOff const&) = delete;

private:
    void Switch(int on)
    {
        int now = -1;
        sqlite3_db_config(m_pConnection, SQLITE_DBCONFIG_ENABLE_FKEY, on, &now);
        assert(now == on);
        (void)now;
    }

    sqlite3* m_pConnection;
};

} // namespace

/// Lists a table and those whose rows all go with its rows: each row refers to one that goes, and
/// goes by that. Empty where some row may stay, or stands in the way.
CDbStatus CSqliteDatabase::ListEmptied(std::string const& table, std::vector<std::string>& tables)
{
    constexpr std::string_view kSelect
        = "WITH RECURSIVE refs (parent, child, goes) AS MATERIALIZED ("
          "SELECT lower(f.\"table\"), lower(t.name), f.on_delete = 'CASCADE' AND c.\"notnull\" "
          "FROM sqlite_schema AS t JOIN pragma_foreign_key_list(t.name) AS f "
          "JOIN pragma_table_info(t.name) AS c ON c.name = f.\"from\" COLLATE NOCASE "
          "WHERE t.type = 'table'), "
          "emptied (name) AS (SELECT lower(?) UNION "
          "SELECT refs.child FROM emptied JOIN refs ON refs.parent = emptied.name) "
          "SELECT name, ifnull((SELECT min(goes) FROM refs WHERE child = name "
          "AND parent IN (SELECT name FROM emptied)), 1) FROM emptied ORDER BY name";
    tables.clear();
    CRowBlock rows;
    auto status = Query(kSelect, std::vector<DbValue>{table}, rows);
    for (std::size_t i = 0; status && i < rows.Rows(); ++i) {
        auto const row = rows.Row(i);
        std::string const name(row.Text(row.Cell(0)));
        bool goes = row.Cell(1).integerValue != 0;
        if (goes && name != table) {
            // What another program left without a parent row stays, as it does when that row goes.
            CRowBlock orphans;
            status = Query("SELECT 1 FROM pragma_foreign_key_check(?) LIMIT 1",
                std::vector<DbValue>{name}, orphans);
            goes = orphans.Rows() == 0;
        }
        if (!goes) {
            tables.clear();
            break;
        }
        tables.push_back(name);
    }
    return status;
}

CDbStatus CSqliteDatabase::Empty(std::vector<std::string> const& tables)
{
    assert(m_nDepth > 0);
    CForeignKeysOff const off(m_connection.get());
    for (auto const& table : tables) {
        auto const sql = "DELETE FROM " + table;
        int const code = sqlite3_exec(m_connection.get(), sql.c_str(), nullptr, nullptr, nullptr);
        if (code != SQLITE_OK) {
            return Failure(code);
        }
    }
    return {};
}

CDbStatus CSqliteDatabase::RemoveAll(CTableInfo const& table, std::int64_t rows, bool& done)
{
    done = false;
    CTransaction transaction(*this);
    auto status = transaction.Status();
    CRowBlock count;
    if (status) {
        status = Query("SELECT count(*) FROM " + table.name, {}, count);
    }
    if (status && count.Row(0).Cell(0).integerValue != rows) {
        return transaction.Commit();
    }
    std::vector<std::string> tables;
    if (status) {
        status = ListEmptied(table.name, tables);
    }
    if (status && tables.empty()) {
        std::int64_t ignored = 0;
        status = Execute("DELETE FROM " + table.name, {}, ignored);
    } else if (status) {
        status = Empty(tables);
    }
    if (!status) {
        return WriteFailure(status); // some tables may be empty already: all of them or none
    }
    status = transaction.Commit();
    done = status.IsOK();
    return status;
}
