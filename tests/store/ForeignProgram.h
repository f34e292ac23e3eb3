#pragma once

#include "store/sets/DatabaseSession.h"
#include "tests/platform/db/PlainConnection.h"

#include <string>

/// The other program keeps none of our rules. It and the session take turns.
class CForeignProgram : public CPlainConnection
{
public:
    explicit CForeignProgram(DataFile file)
        : CPlainConnection(
            (CDatabaseSession::Get().ShutDown(), CDatabaseSession::Get().PathOf(file)))
    {
        Run("PRAGMA ignore_check_constraints = ON; PRAGMA foreign_keys = OFF");
    }

    /// Makes all tables anew as they are, but without types, rules and NOT NULL.
    void LoosenTables() const
    {
        std::string script;
        auto const add = [](void* target, int, char** values, char**) {
            static_cast<std::string*>(target)->append(values[0]);
            return 0;
        };
        sqlite3_exec(Get(),
            "SELECT 'DROP TABLE ' || m.name || '; CREATE TABLE ' || m.name || ' (' || "
            "group_concat(c.name || CASE c.pk WHEN 1 THEN ' INTEGER PRIMARY KEY AUTOINCREMENT' "
            "ELSE '' END, ', ') || ');' FROM sqlite_schema AS m, pragma_table_info(m.name) AS c "
            "WHERE m.type = 'table' AND m.name NOT LIKE 'sqlite%' GROUP BY m.name",
            add, &script, nullptr);
        Run(script);
    }
};
