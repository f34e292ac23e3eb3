#pragma once

#include <array>
#include <string_view>

/// What the rows of a selection can be put in order by: up to three terms over the columns of the
/// record set's table, and of what is joined to it; each one what it sorts by, not how it reads.
struct CSortKey
{
    std::array<std::string_view, 3> terms;
    std::string_view join = {}; ///< gives each row one other row, with columns of other names

    bool IsEmpty() const { return terms.front().empty(); }
};

// Of the records of members.

inline constexpr CSortKey kByMemberID = {{"member_id"}};
/// The name of the member whose record a row is. Looks each one up.
inline constexpr CSortKey kByNameOfMember = {
    {"last_name COLLATE NOCASE", "first_name COLLATE NOCASE", "middle_initial COLLATE NOCASE"},
    "LEFT JOIN (SELECT member_id AS of_member, last_name, first_name, middle_initial FROM members) "
    "ON of_member = member_id "};
