#pragma once

#include "bench/RawSqlite.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// Whole members in plain SQLite: what the store and the member editor are measured against.

std::string MemberPath();
/// Adds members of the IDs from 1 on, with nothing below them.
void AddMembers(CRawDatabase const& raw, int count);
/// Adds the rows of their other tables, three classes each: so many members share a class.
void AddTablesOfMembers(CRawDatabase const& raw, int membersOfAClass);

/// A table of a member, with what is read and written of each row.
struct CMemberTable
{
    char const* name;
    std::vector<char const*> numbers;
    std::vector<char const*> texts;
};
std::vector<CMemberTable> const& MemberTables();

/// A statement for each of these tables.
class CRawMemberStatements
{
public:
    enum class Kind
    {
        select,
        insert,
        update
    };

    CRawMemberStatements(CRawDatabase const& raw, Kind kind);
    CRawStatement const& Of(std::size_t table) const { return *m_statements[table]; }

private:
    std::vector<std::unique_ptr<CRawStatement>> m_statements;
};

/// Reads all rows of a member, each text made a string; returns a sum over them, so that nothing
/// is read in vain.
std::size_t LoadRaw(CRawMemberStatements const& selects, std::int32_t member);
