#pragma once

#include "tests/doc/TestCentre.h"

#include <string>

/// Adds a member of that ID, without anything.
inline void AddMember(int id)
{
    auto const number = std::to_string(id);
    CTestCentre::Run("INSERT INTO members (member_id, workout_number, first_name, middle_initial, "
                     "last_name, status) VALUES ("
            + number + ", " + number + ", 'Jo', '', 'Doe', 1)",
        DataFile::member);
}

/// Adds a class of a member; names as SQL: "'Staff', 'Wellness', ''".
inline void AddClass(int memberID, int index, std::string const& names)
{
    CTestCentre::Run("INSERT INTO classes (member_id, class_index, category, course, section, "
                     "grade_status, orientation, re_evaluations, other_bonuses) VALUES ("
            + std::to_string(memberID) + ", " + std::to_string(index) + ", " + names
            + ", 1, 1, 2, 3)",
        DataFile::member);
}
