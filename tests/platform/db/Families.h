#pragma once

#include "platform/db/Database.h"

#include <string>
#include <vector>

/// Rows that belong together, for tests: a family tells how many children it has, so that a part
/// of one can be told from a whole one.
namespace Families
{

constexpr std::int64_t kChildren = 3;

inline CSchema Schema()
{
    return {"family", 0x46414D31,
        {"CREATE TABLE families (id INTEGER PRIMARY KEY AUTOINCREMENT, number INTEGER NOT NULL "
         "UNIQUE, children INTEGER NOT NULL, note TEXT NOT NULL);"
         "CREATE TABLE children (id INTEGER PRIMARY KEY AUTOINCREMENT, family_id INTEGER NOT NULL "
         "REFERENCES families (id) ON DELETE CASCADE, name TEXT NOT NULL);"
         "CREATE INDEX children_family ON children (family_id);"}};
}

inline CTableInfo const kFamilies{"families", {"number", "children", "note"}};
inline CTableInfo const kChildrenTable{"children", {"family_id", "name"}};

/// Without a transaction around it each row is committed alone.
inline CDbStatus SaveRows(
    CDatabase& database, std::int64_t number, std::string const& note = "note")
{
    std::int64_t family = 0;
    auto status = database.Insert(kFamilies, std::vector<DbValue>{number, kChildren, note}, family);
    for (std::int64_t i = 0; status && i < kChildren; ++i) {
        std::int64_t child = 0;
        status = database.Insert(
            kChildrenTable, std::vector<DbValue>{family, "child " + std::to_string(i)}, child);
    }
    return status;
}

inline CDbStatus Save(CDatabase& database, std::int64_t number, std::string const& note = "note")
{
    CTransaction transaction(database);
    auto status = transaction.Status();
    if (status) {
        status = SaveRows(database, number, note);
    }
    return status ? transaction.Commit() : status;
}

/// The first column of the first row, or -1 when it cannot be read.
inline std::int64_t Number(CDatabase& database, std::string_view sql)
{
    CRowBlock rows;
    auto const status = database.Query(sql, {}, rows);
    return status && rows.Rows() > 0 ? rows.Row(0).Cell(0).integerValue : -1;
}

inline std::int64_t Count(CDatabase& database)
{
    return Number(database, "SELECT count(*) FROM families");
}

/// Families with other than all of their children.
inline std::int64_t Partial(CDatabase& database)
{
    return Number(database,
        "SELECT count(*) FROM families f WHERE children <> "
        "(SELECT count(*) FROM children c WHERE c.family_id = f.id)");
}

} // namespace Families
