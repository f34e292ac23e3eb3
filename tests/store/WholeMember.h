#pragma once

#include "store/services/MemberChange.h"
#include "store/services/MemberServices.h"

#include <string>

/// Members in all of their tables, saved as their editor saves them. Every row of a member carries
/// the number of the save that wrote it, so that a member saved in part can be told from a whole
/// one.
namespace WholeMember
{

/// Adds or changes the row that a find has found or not.
template <typename Set, typename Fill>
bool SaveRow(Set& set, int found, Fill const& fill)
{
    bool const begun = (found > 0 || (set.LastStatus() && set.OpenSet(false) == 0))
        && set.Op(found > 0 ? CDAOEFSet::opEdit : CDAOEFSet::opAddNew);
    fill();
    return begun && set.Op(CDAOEFSet::opUpdate);
}

/// The whole member or nothing of it. With "to" it gets another ID: the rows below follow the
/// summary, and their old ID finds none of them any more.
inline bool Save(std::int32_t from, std::int64_t save, std::int32_t to, std::int32_t workoutNumber)
{
    CMemberChange change;
    if (!change.IsOK()) {
        return false;
    }
    auto const text = std::to_string(save);
    CDAOSmMem member;
    change.Require(SaveRow(member, member.FindMember(CDAOSmMem::idMember, from), [&] {
        member.m_MemberID = to;
        member.m_WorkoutNum = workoutNumber;
        member.m_FirstName = text;
        member.m_LastName = "Featherstonehaugh";
        member.m_Status = 1;
    }));
    CDAOProf profile;
    change.Require(SaveRow(profile, profile.FindProfile(to), [&] {
        profile.m_MemberID = to;
        profile.m_Address = text;
        profile.m_Goals = profile.m_MedHist = static_cast<std::uint32_t>(save);
    }));
    CDAOEnr enrollment;
    change.Require(SaveRow(enrollment, enrollment.FindEnrollment(to), [&] {
        enrollment.m_MemberID = to;
        enrollment.m_EnrollDate = CEFOleDateTime::FromSeconds(save);
    }));
    CDAOMsg message;
    change.Require(SaveRow(message, message.FindMessages(to), [&] {
        message.m_MemberID = to;
        message.m_Message = text;
    }));
    CClassSlot slot;
    slot.category = text;
    change.Require(UpdateClasses(to, slot, slot, slot));
    return change.Commit();
}
inline bool Save(std::int32_t memberID, std::int64_t save)
{
    return Save(memberID, save, memberID, memberID);
}

/// The members whose rows are not all there or not all of one save.
constexpr char const* kPartial
    = "members AS m WHERE NOT EXISTS (SELECT 1 FROM profiles AS p "
      "WHERE p.member_id = m.member_id AND p.address = m.first_name "
      "AND p.goals = m.first_name AND p.medical_history = m.first_name) "
      "OR NOT EXISTS (SELECT 1 FROM enrollments AS e WHERE e.member_id = m.member_id "
      "AND e.enroll_date = m.first_name) "
      "OR NOT EXISTS (SELECT 1 FROM messages AS n WHERE n.member_id = m.member_id "
      "AND n.message = m.first_name) "
      "OR 3 <> (SELECT count(*) FROM classes AS c WHERE c.member_id = m.member_id "
      "AND c.category = m.first_name)";

} // namespace WholeMember
