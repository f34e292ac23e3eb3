#include "reports/content/ReportRows.h"

#include "reports/content/ReportRequest.h"

#include <array>

namespace
{

constexpr int kRowsBetweenLooks = 512;

std::string const kNameOrder
    = "last_name COLLATE NOCASE, first_name COLLATE NOCASE, middle_initial COLLATE NOCASE, id";

} // namespace

// ---- members

CRecordClass const* CReportMember::GetThisClass()
{
    static CRecordClass const record = {"CReportMember", nullptr, DataFile::member,
        "(SELECT m.id AS id, m.member_id AS member_id, m.last_name AS last_name,"
        " m.first_name AS first_name, m.middle_initial AS middle_initial, m.status AS status,"
        " p.phone AS phone, p.emergency_name AS emergency_name,"
        " p.emergency_phone AS emergency_phone, p.physician AS physician,"
        " e.enroll_date AS enroll_date, e.expire_date AS expire_date FROM members AS m"
        " LEFT JOIN profiles AS p ON p.member_id = m.member_id"
        " LEFT JOIN enrollments AS e ON e.member_id = m.member_id)",
        true};
    return &record;
}

void CReportMember::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("last_name", m_LastName);
    fx.Field("first_name", m_FirstName);
    fx.Field("middle_initial", m_MiddleInit);
    fx.Field("status", m_Status);
    fx.Field("phone", m_Phone);
    fx.Field("emergency_name", m_EmergName);
    fx.Field("emergency_phone", m_EmergPhone);
    fx.Field("physician", m_Physician);
    fx.Field("enroll_date", m_EnrollDate);
    fx.Field("expire_date", m_ExpireDate);
}

int CReportMember::FindByStatus(std::int32_t options)
{
    auto const condition = StatusCondition(options);
    return Find((condition.empty() ? "" : "WHERE " + condition + ' ') + "ORDER BY " + kNameOrder);
}

// ---- classes

CRecordClass const* CReportClass::GetThisClass()
{
    static CRecordClass const record = {"CReportClass", nullptr, DataFile::member,
        "(SELECT c.id AS id, c.member_id AS member_id, m.last_name AS last_name,"
        " m.first_name AS first_name, m.middle_initial AS middle_initial, m.status AS status,"
        " c.category AS category, c.course AS course, c.section AS section,"
        " c.grade_status AS grade_status, p.phone AS phone, e.expire_date AS expire_date"
        " FROM classes AS c JOIN members AS m ON m.member_id = c.member_id"
        " LEFT JOIN profiles AS p ON p.member_id = c.member_id"
        " LEFT JOIN enrollments AS e ON e.member_id = c.member_id)",
        true};
    return &record;
}

void CReportClass::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("last_name", m_LastName);
    fx.Field("first_name", m_FirstName);
    fx.Field("middle_initial", m_MiddleInit);
    fx.Field("status", m_Status);
    fx.Field("category", m_Category);
    fx.Field("course", m_Course);
    fx.Field("section", m_Section);
    fx.Field("grade_status", m_GradeStat);
    fx.Field("phone", m_Phone);
    fx.Field("expire_date", m_ExpireDate);
}

int CReportClass::FindClass(std::string const& category, std::string const& course,
    std::string const& section, std::int32_t options)
{
    CClassCondition condition(category, course, section);
    if (auto const status = StatusCondition(options); !status.empty()) {
        condition.m_strText += " AND " + status;
    }
    return Select("WHERE " + condition.m_strText
            + " ORDER BY category COLLATE NOCASE, course COLLATE NOCASE, section COLLATE NOCASE, "
            + kNameOrder,
        std::move(condition.m_values), Extent::many);
}

// ---- workouts

CRecordClass const* CReportWorkout::GetThisClass()
{
    static CRecordClass const record = {"CReportWorkout", nullptr, DataFile::member,
        "(SELECT w.id AS id, w.member_id AS member_id, m.last_name AS last_name,"
        " m.first_name AS first_name, m.middle_initial AS middle_initial, w.check_in AS check_in,"
        " w.check_out AS check_out, w.circuits AS circuits, w.workout_ok AS workout_ok,"
        " c.category AS category, c.course AS course, c.section AS section, c.id AS class"
        " FROM workouts AS w JOIN members AS m ON m.member_id = w.member_id"
        " LEFT JOIN classes AS c ON c.id = (SELECT id FROM classes"
        " WHERE member_id = w.member_id AND class_index = w.class_index ORDER BY id LIMIT 1))",
        true};
    return &record;
}

void CReportWorkout::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("last_name", m_LastName);
    fx.Field("first_name", m_FirstName);
    fx.Field("middle_initial", m_MiddleInit);
    fx.Field("check_in", m_dtCheckIn);
    fx.Field("check_out", m_dtCheckOut);
    fx.Field("circuits", m_nCircuits);
    fx.Field("workout_ok", m_bWorkoutOK);
    fx.Field("category", m_Category);
    fx.Field("course", m_Course);
    fx.Field("section", m_Section);
}

int CReportWorkout::FindBetween(CEFOleDateTime const& from, CEFOleDateTime const& to)
{
    return Find("WHERE check_in BETWEEN ? AND ? ORDER BY check_in, id", from, to);
}

int CReportWorkout::FindOfNoClass()
{
    // Looks at every workout: no index tells which have no class.
    return Find("WHERE class IS NULL ORDER BY last_name COLLATE NOCASE, first_name COLLATE NOCASE,"
                " middle_initial COLLATE NOCASE, member_id, check_in, id");
}

// ---- what they share

CClassCondition::CClassCondition(
    std::string const& category, std::string const& course, std::string const& section)
{
    std::array<std::pair<char const*, std::string const&>, 3> const parts
        = {{{"category", category}, {"course", course}, {"section", section}}};
    for (auto const& [column, text] : parts) {
        if (m_values.empty() || !text.empty()) {
            m_strText += (m_strText.empty() ? "" : " AND ") + std::string("equals_folded(") + column
                + ", ?)";
            m_values.emplace_back(text);
        }
    }
}

std::string StatusCondition(std::int32_t options)
{
    if ((options & CDAOReport::roAll) != 0) {
        return {};
    }
    return (options & CDAOReport::roCurrent) != 0 ? "status <> 0"
        : (options & CDAOReport::roPast) != 0     ? "status = 0"
                                                  : "";
}

CDbStatus ForEachRow(CReportRequest const& request, CDAOEFSet& set, int count,
    std::function<void()> const& row, double from, double to)
{
    if (!set.LastStatus()) {
        return set.LastStatus();
    }
    bool onRow = count > 0 && set.Op(CDAOEFSet::opMoveFirst);
    for (int place = 0; place < count; ++place) {
        if (place % kRowsBetweenLooks == 0 && !request.GoesOn(from + (to - from) * place / count)) {
            return StoppedReport();
        }
        if (!set.LastStatus()) {
            return set.LastStatus();
        }
        if (onRow) { // others may delete rows meanwhile
            row();
        }
        onRow = set.Op(CDAOEFSet::opMoveNext);
    }
    return {};
}
