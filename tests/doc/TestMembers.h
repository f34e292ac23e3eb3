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
    RunOnMembers("INSERT INTO members (member_id, workout_number, first_name, middle_initial, "
                 "last_name, status) VALUES ("
        + number + ", " + number + ", 'Jo', '', 'Doe', 1)");
}

/// Adds a class of a member; names as SQL: "'Staff', 'Wellness', ''".
inline void AddClass(int memberID, int index, std::string const& names)
{
    RunOnMembers("INSERT INTO classes (member_id, class_index, category, course, section, "
                 "grade_status, orientation, re_evaluations, other_bonuses) VALUES ("
        + std::to_string(memberID) + ", " + std::to_string(index) + ", " + names + ", 1, 1, 2, 3)");
}
