#pragma once

#include <array>
#include <string_view>

/// What the rows of a selection can be put in order by: up to three terms over the columns of the
/// record set's table, each one what it sorts by, not how it reads.
struct CSortKey
{
    std::array<std::string_view, 3> terms;

    bool IsEmpty() const { return terms.front().empty(); }
};

// Of the records of members.

inline constexpr CSortKey kByMemberID = {{"member_id"}};
/// The name of the member whose record a row is: last, first, middle initial, ignoring case. Looks
/// each one up.
inline constexpr CSortKey kByNameOfMember
    = {{"(SELECT name FROM (SELECT member_id AS of_member, last_name || char(1) || first_name || "
        "char(1) || middle_initial AS name FROM members) WHERE of_member = member_id) "
        "COLLATE NOCASE"}};
