#pragma once

#include "platform/db/Database.h"
#include "store/services/MemberServices.h"

#include <string>

/// Members in all of their tables, saved as their editor saves them. Every row of a member carries
/// the number of the save that wrote it, so that a member saved in part can be told from a whole
/// one.
namespace WholeMember
{

constexpr int kClasses = 3;

/// Adds or changes the row that a find has found or not.
template <typename Set, typename Fill>
bool SaveRow(Set& set, bool found, Fill const& fill)
{
    bool const begun = (found || (set.LastStatus() && set.OpenSet(false) == 0))
        && set.Op(found ? CDAOEFSet::opEdit : CDAOEFSet::opAddNew);
    fill();
    return begun && set.Op(CDAOEFSet::opUpdate);
}

/// The tables one after the other: each row is a commit of its own where no transaction is open.
/// With "to" the member gets another ID. The rows below follow the summary: their old ID finds
/// none of them any more.
inline bool SaveRows(
    std::int32_t from, std::int32_t to, std::int64_t save, std::int32_t workoutNumber)
{
    CDAOSmMem member;
    CDAOProf profile;
    CDAOEnr enrollment;
    CDAOMsg message;
    CClassSlot slot;
    slot.category = std::to_string(save);
    return SaveRow(member, member.FindMember(CDAOSmMem::idMember, from) != 0, [&] {
        member.m_MemberID = to;
        member.m_WorkoutNum = workoutNumber;
        member.m_FirstName = slot.category;
        member.m_LastName = "Featherstonehaugh";
        member.m_Status = 1;
    }) && SaveRow(profile, profile.FindProfile(to) != 0, [&] {
        profile.m_MemberID = to;
        profile.m_Address = slot.category;
        profile.m_Goals = profile.m_MedHist = static_cast<std::uint32_t>(save);
    }) && SaveRow(enrollment, enrollment.FindEnrollment(to) != 0, [&] {
        enrollment.m_MemberID = to;
        enrollment.m_EnrollDate = CEFOleDateTime::FromSeconds(save);
    }) && SaveRow(message, message.FindMessages(to) != 0, [&] {
        message.m_MemberID = to;
        message.m_Message = slot.category;
    }) && UpdateClasses(to, slot, slot, slot);
}
inline bool SaveRows(std::int32_t memberID, std::int64_t save)
{
    return SaveRows(memberID, memberID, save, memberID);
}

/// The whole member or nothing of it.
inline bool Save(std::int32_t from, std::int32_t to, std::int64_t save, std::int32_t workoutNumber)
{
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, status);
    if (database == nullptr) {
        return false;
    }
    CTransaction transaction(*database);
    return transaction.Status() && SaveRows(from, to, save, workoutNumber) && transaction.Commit();
}
inline bool Save(std::int32_t memberID, std::int64_t save)
{
    return Save(memberID, memberID, save, memberID);
}

/// What a program that shows a member has read: the number of the save, 0 when there is no such
/// member, -1 when its rows are not all there or not all of one save.
inline std::int64_t Load(std::int32_t memberID)
{
    CDAOSmMem members;
    CDAOProf profiles;
    CDAOEnr enrollments;
    CDAOMsg messages;
    CDAOCls classes;
    if (members.FindMember(CDAOSmMem::idMember, memberID) == 0) {
        return members.LastStatus() ? 0 : -1;
    }
    auto const save = std::stoll(members.m_FirstName);
    bool whole = profiles.FindProfile(memberID) == 1 && profiles.m_Address == members.m_FirstName
        && profiles.m_Goals == save && profiles.m_MedHist == save
        && enrollments.FindEnrollment(memberID) == 1 && enrollments.m_EnrollDate.Seconds() == save
        && messages.FindMessages(memberID) == 1 && messages.m_Message == members.m_FirstName
        && classes.FindClasses(memberID) == kClasses;
    for (int i = 0; i < kClasses; ++i) {
        whole = whole && classes.m_Category == members.m_FirstName;
        classes.Op(CDAOEFSet::opMoveNext);
    }
    return whole ? save : -1;
}

/// The number of members whose rows are not all there or not all of one save; -1 when that cannot
/// be read. One statement, so that it sees one moment.
inline std::int64_t Partial()
{
    constexpr char const* kSelect
        = "SELECT count(*) FROM members AS m WHERE NOT EXISTS (SELECT 1 FROM profiles AS p "
          "WHERE p.member_id = m.member_id AND p.address = m.first_name "
          "AND p.goals = m.first_name AND p.medical_history = m.first_name) "
          "OR NOT EXISTS (SELECT 1 FROM enrollments AS e WHERE e.member_id = m.member_id "
          "AND e.enroll_date = m.first_name) "
          "OR NOT EXISTS (SELECT 1 FROM messages AS n WHERE n.member_id = m.member_id "
          "AND n.message = m.first_name) "
          "OR 3 <> (SELECT count(*) FROM classes AS c WHERE c.member_id = m.member_id "
          "AND c.category = m.first_name)";
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, status);
    CRowBlock rows;
    return database != nullptr && database->Query(kSelect, {}, rows)
        ? rows.Row(0).Cell(0).integerValue
        : -1;
}

} // namespace WholeMember
