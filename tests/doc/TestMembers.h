#pragma once

#include "tests/doc/TestCentre.h"

#include <string>

/// Runs SQL on the member file, as another program of the suite would.
inline void RunOnMembers(std::string const& sql)
{
    CTestCentre::Run(sql, DataFile::member);
}

/// Adds a member of that ID, without anything.
inline void AddMember(int id)
{
    auto const number = std::to_string(id);
    RunOnMembers(
        "INSERT INTO members VALUES (NULL, " + number + ", " + number + ", 'Jo', '', 'Doe', 1)");
}

/// Adds a class of a member; names as SQL: "'Staff', 'Wellness', ''".
inline void AddClass(int memberID, int index, std::string const& names)
{
    RunOnMembers("INSERT INTO classes VALUES (NULL, " + std::to_string(memberID) + ", "
        + std::to_string(index) + ", " + names + ", 1, 1, 2, 3)");
}
