#include "store/services/MemberServices.h"

#include "store/services/MemberChange.h"
#include "store/sets/DAOCat.h"
#include "store/sets/DAOCour.h"
#include "store/sets/DAOSec.h"
#include "store/text/Text.h"

#include <array>
#include <vector>

namespace
{

constexpr std::array kRecordTables = {"workouts", "evaluations", "body_compositions"};

void MoveRecords(
    CMemberChange& change, std::int32_t memberID, std::uint8_t oldIndex, std::uint8_t newIndex)
{
    for (std::string const table : kRecordTables) {
        change.Run(
            "UPDATE " + table + " SET class_index = ? WHERE member_id = ? AND class_index = ?",
            {std::int64_t(newIndex), std::int64_t(memberID), std::int64_t(oldIndex)});
    }
}

void DeleteRecords(CMemberChange& change, std::int32_t memberID, std::uint8_t classIndex)
{
    for (std::string const table : kRecordTables) {
        change.Run("DELETE FROM " + table + " WHERE member_id = ? AND class_index = ?",
            {std::int64_t(memberID), std::int64_t(classIndex)});
    }
}

} // namespace

CClassSlot EmptySlot(CDAODef const& defaults, std::uint8_t classIndex)
{
    return {.category = {},
        .course = {},
        .section = {},
        .gradeStat = defaults.m_nDefGradeStat,
        .orientBonus = (defaults.m_nDefFlags & CDAODef::kOrientBonus) != 0,
        .reEvalBonuses = defaults.m_nDefReEvalBonuses,
        .otherBonuses = defaults.m_nDefOtherBonuses,
        .classIndex = classIndex};
}

bool IsMember(std::int32_t number, CDAOSmMem::id kind)
{
    CDAOSmMem members;
    return members.FindMember(kind, number) != 0;
}

bool ResetMember(CDAOSmMem& members, CDAOEnr& enrollments, CDAOProf& profiles, CDAOCls& classes,
    CDAOMsg& messages)
{
    CDAODef defaults;
    if (defaults.OpenSet(true) == 0) {
        return false;
    }
    defaults.Op(CDAOEFSet::opClose);
    for (CDAOEFSet* set :
        std::initializer_list<CDAOEFSet*>{&members, &enrollments, &profiles, &classes, &messages}) {
        set->ClearFields();
    }
    auto today = CEFOleDateTime::GetCurrentTime();
    today.Midnight();
    members.m_Status = 1;
    profiles.m_Birthday = today;
    profiles.m_Sex = 1;
    enrollments.m_EnrollDate = today;
    enrollments.m_ExpireDate = today;
    enrollments.m_ExpireDate.AddMonths(1);
    classes.m_ClassIndex = 1;
    classes.m_GradeStat = defaults.m_nDefGradeStat;
    classes.m_Orient = (defaults.m_nDefFlags & CDAODef::kOrientBonus) != 0 ? 1 : 0;
    classes.m_ReEval = defaults.m_nDefReEvalBonuses;
    classes.m_Other = defaults.m_nDefOtherBonuses;
    return true;
}

bool ReplaceClass(
    std::int32_t memberID, std::uint8_t classIndex, CClassSlot const& replacement, bool transfer)
{
    if (!replacement.CanBeStored()) {
        return false;
    }
    CMemberChange change;
    auto const changed = change.Run("UPDATE classes SET category = ?, course = ?, section = ?, "
                                    "grade_status = ?, orientation = ?, re_evaluations = ?, "
                                    "other_bonuses = ? WHERE member_id = ? AND class_index = ?",
        {replacement.category, replacement.course, replacement.section,
            std::int64_t(replacement.gradeStat), std::int64_t(replacement.orientBonus ? 1 : 0),
            std::int64_t(replacement.reEvalBonuses), std::int64_t(replacement.otherBonuses),
            std::int64_t(memberID), std::int64_t(classIndex)});
    change.Require(changed > 0);
    if (!transfer) {
        DeleteRecords(change, memberID, classIndex);
    }
    return change.Commit();
}

bool UpdateEnrollment(std::int32_t const& memberID, CEFOleDateTime const& enrollDate,
    CEFOleDateTime const& expireDate, std::uint8_t const& period, std::uint8_t const& incentive,
    std::uint8_t const& status)
{
    CMemberChange change;
    std::int64_t const id = memberID;
    change.Require(
        change.Run("UPDATE members SET status = ? WHERE member_id = ?", {std::int64_t(status), id})
        == 1);
    change.Run("INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
               "VALUES (?, ?, ?, ?, ?) ON CONFLICT (member_id) DO UPDATE SET "
               "enroll_date = excluded.enroll_date, expire_date = excluded.expire_date, "
               "period = excluded.period, incentive = excluded.incentive",
        {id, enrollDate.Seconds(), expireDate.Seconds(), std::int64_t(period),
            std::int64_t(incentive)});
    return change.Commit();
}

bool IsUnexpired(std::uint8_t status, CEFOleDateTime expireDate)
{
    expireDate.PreMidnight();
    return status != 0 && !expireDate.IsPast();
}

bool UpdateClassIndex(std::int32_t memberID, std::uint8_t oldIndex, std::uint8_t newIndex)
{
    CMemberChange change;
    MoveRecords(change, memberID, oldIndex, newIndex);
    return change.Commit();
}

bool DeleteClassData(std::int32_t memberID, std::uint8_t classIndex)
{
    CMemberChange change;
    DeleteRecords(change, memberID, classIndex);
    return change.Commit();
}

CDbStatus DeleteClass(std::int32_t memberID, std::string_view category, std::string_view course,
    std::string_view section, bool withRecords)
{
    CMemberChange change;
    CDAOCls set;
    bool const found = set.FindClasses(memberID, category, course, section) > 0;
    change.Require(set.LastStatus().IsOK(), set.LastStatus());
    change.Require(found, {DbError::gone, "The class was deleted or changed by another program."});
    if (withRecords) {
        DeleteRecords(change, memberID, set.m_ClassIndex);
    } else {
        MoveRecords(change, memberID, set.m_ClassIndex, CDAOCls::kUnknown);
    }
    if (change.IsOK()) {
        change.Require(set.DelCurrent(), set.LastStatus());
    }
    return change.Finish();
}

bool IsCurrentClass(
    std::string const& category, std::string const& course, std::string const& section)
{
    if (category.empty()) {
        return false;
    }
    std::string sql = "SELECT count(*) FROM categories AS a";
    std::string where = " WHERE a.name = ?";
    std::vector<DbValue> values = {category};
    if (!course.empty()) {
        sql += " JOIN courses AS b ON b.category = a.number";
        where += " AND b.name = ?";
        values.emplace_back(course);
        if (!section.empty()) {
            sql += " JOIN sections AS c ON c.course = b.number";
            where += " AND c.name = ?";
            values.emplace_back(section);
        }
    } else if (!section.empty()) {
        return false;
    }
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::center, status);
    CRowBlock rows;
    return database != nullptr && database->Query(sql + where, values, rows)
        && rows.Row(0).Cell(0).integerValue > 0;
}

CORVAPI_RETURN corv_apiPostMemberMessage(
    char const* text, std::int32_t memberID, bool replaceExisting)
{
    std::string const message = text == nullptr ? "" : text;
    if (CountCharacters(message) > CDAOMsg::kLongestMessage) {
        return apiStoreError;
    }
    CMemberChange change;
    if (!change.IsOK()) {
        return apiStoreError;
    }
    CDAOSmMem members;
    if (members.FindMember(CDAOSmMem::idMember, memberID) == 0) {
        return members.LastStatus() ? apiNoMember : apiStoreError;
    }
    CDAOMsg messages;
    bool const there = messages.FindMessages(memberID) > 0;
    change.Require(messages.LastStatus().IsOK());
    if (there && !messages.m_Message.empty() && !replaceExisting) {
        return change.Commit() ? apiSuccess : apiStoreError;
    }
    change.Require(messages.Op(there ? CDAOEFSet::opEdit : CDAOEFSet::opAddNew));
    messages.m_MemberID = memberID;
    messages.m_Message = message;
    change.Require(messages.Op(CDAOEFSet::opUpdate));
    return change.Commit() ? apiSuccess : apiStoreError;
}
