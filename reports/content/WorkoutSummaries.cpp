#include "reports/content/QueryCells.h"
#include "reports/content/ReportRows.h"
#include "reports/content/ReportTexts.h"
#include "reports/content/WorkoutReports.h"
#include "reports/content/WorkoutTotals.h"

namespace
{

/// Which workouts are summed up: SQL over "workouts AS w JOIN members AS m", with its values.
struct CSelected
{
    std::string m_strWhere;
    std::vector<DbValue> m_values;
};

void AddCondition(CSelected& selected, std::string const& condition)
{
    if (!condition.empty()) {
        selected.m_strWhere += (selected.m_strWhere.empty() ? " WHERE " : " AND ") + condition;
    }
}

/// False when the job gives no period and does not ask for all.
bool AddPeriod(CSelected& selected, CReportJob const& job)
{
    if ((job.m_nParam & CDAOReport::roAllWorkouts) != 0) {
        return true;
    }
    if (job.m_dtFrom.IsZero() || job.m_dtTo.IsZero()) {
        return false;
    }
    AddCondition(selected, "check_in BETWEEN ? AND ?");
    selected.m_values.emplace_back(job.m_dtFrom.Seconds());
    selected.m_values.emplace_back(job.m_dtTo.Seconds());
    return true;
}

void AddClass(CSelected& selected, CClassCondition const& condition)
{
    AddCondition(selected,
        "EXISTS (SELECT 1 FROM classes AS c WHERE c.member_id = w.member_id"
        " AND c.class_index = w.class_index AND "
            + condition.m_strText + ")");
    selected.m_values.insert(
        selected.m_values.end(), condition.m_values.begin(), condition.m_values.end());
}

CWorkoutTotals TotalsIn(CRowView const& row, std::size_t first)
{
    CWorkoutTotals totals;
    totals.m_nWorkouts = NumberIn(row, first);
    totals.m_nOkay = NumberIn(row, first + 1);
    totals.m_nMinutes = NumberIn(row, first + 2);
    totals.m_nCircuits = NumberIn(row, first + 3);
    return totals;
}

class CSummary
{
public:
    CSummary(CReportRequest const& request, CSelected const& selected)
        : m_request(request)
        , m_selected(selected)
        , m_bIDs((request.m_job.m_nParam & CDAOReport::roMemberIDs) != 0)
    {
    }

    /// Reads every workout selected twice, for its member and for its week.
    CDbStatus Build();
    std::int64_t Members() const { return m_nMembers; }

private:
    CDbStatus Query(std::string const& sql, std::string const& order, CRowBlock& rows) const
    {
        return QueryMembers(sql + m_selected.m_strWhere + order, m_selected.m_values, rows);
    }
    CDbStatus AddWeeks();
    CDbStatus AddMembers();
    void AddRow(CReportTable& table, CRowView const& row);
    void AddTexts(CWorkoutTotals const& totals, CEFOleDateTime const& last);

    CReportRequest const& m_request;
    CSelected const& m_selected;
    bool const m_bIDs;
    CWorkoutTotals m_totals;
    std::int64_t m_nMembers = 0;
    CEFOleDateTime m_dtLast;
    CRowTexts m_row;
};

CDbStatus CSummary::AddWeeks()
{
    CRowBlock rows;
    if (auto status = Query("SELECT check_in / 86400, count(*) FROM workouts AS w"
                            " JOIN members AS m ON m.member_id = w.member_id",
            " GROUP BY 1 ORDER BY 1", rows);
        !status) {
        return status;
    }
    CWorkoutWeeks weeks;
    for (std::size_t i = 0; i < rows.Rows(); ++i) {
        auto const row = rows.Row(i);
        weeks.Add(
            CEFOleDateTime::FromSeconds(NumberIn(row, 0) * CEFOleDateTime::kDay), NumberIn(row, 1));
    }
    if (weeks.IsWorthIt()) {
        m_request.m_report.m_lstBlocks.emplace_back(weeks.Chart());
    }
    return {};
}

void CSummary::AddTexts(CWorkoutTotals const& totals, CEFOleDateTime const& last)
{
    m_row.Add(CountText(totals.m_nWorkouts));
    m_row.Add(CountText(totals.m_nOkay));
    m_row.Add(HoursText(totals.m_nMinutes));
    m_row.Add(CountText(totals.MeanMinutes()));
    m_row.Add(CountText(totals.m_nCircuits));
    m_row.Add(DateText(last));
}

void CSummary::AddRow(CReportTable& table, CRowView const& row)
{
    auto const totals = TotalsIn(row, 4);
    auto const last = CEFOleDateTime::FromSeconds(NumberIn(row, 8));
    m_row.Begin();
    m_row.Add(NameText(TextIn(row, 1), TextIn(row, 2), TextIn(row, 3)));
    m_row.AddIf(m_bIDs, std::to_string(NumberIn(row, 0)));
    AddTexts(totals, last);
    m_row.PutInto(table);
    m_totals.Add(totals);
    m_dtLast = std::max(m_dtLast, last);
    ++m_nMembers;
}

CDbStatus CSummary::AddMembers()
{
    CRowBlock rows;
    if (auto status
        = Query("SELECT m.member_id, m.last_name, m.first_name, m.middle_initial, count(*),"
                " sum(workout_ok <> 0),"
                " CAST(sum(min(max(check_out - check_in, 0) / 60, 2147483647)) AS INTEGER),"
                " sum(circuits), max(check_in) FROM workouts AS w"
                " JOIN members AS m ON m.member_id = w.member_id",
            " GROUP BY m.id ORDER BY m.last_name COLLATE NOCASE,"
            " m.first_name COLLATE NOCASE, m.middle_initial COLLATE NOCASE, m.id",
            rows);
        !status) {
        return status;
    }
    std::vector<CReportTable::CColumn> columns = {{"Name", 28}};
    if (m_bIDs) {
        columns.push_back({"Member ID", 10, true});
    }
    columns.insert(columns.end(),
        {{"Workouts", 9, true}, {"Okay", 7, true}, {"Hours", 8, true}, {"Min. each", 9, true},
            {"Circuits", 8, true}, {"Last workout", 12, true}});
    CReportTable table(std::move(columns));
    table.m_strIfEmpty = "No workouts are recorded.";
    for (std::size_t i = 0; i < rows.Rows(); ++i) {
        AddRow(table, rows.Row(i));
    }
    if (m_nMembers > 0) {
        m_row.Begin();
        m_row.Add(CountOf(m_nMembers, "member", "members"));
        m_row.AddIf(m_bIDs, "");
        AddTexts(m_totals, m_dtLast);
        m_row.PutInto(table, CReportTable::Row::sum);
    }
    m_request.m_report.m_lstBlocks.emplace_back(std::move(table));
    return {};
}

CDbStatus CSummary::Build()
{
    if (auto status = AddWeeks(); !status) {
        return status;
    }
    if (!m_request.GoesOn(0.5)) {
        return StoppedReport();
    }
    return AddMembers();
}

/// The report, and below it how many of the members that the condition is true for have no workout.
CDbStatus SumUp(CReportRequest const& request, CSelected const& selected,
    std::string const& members, std::vector<DbValue> const& values)
{
    CSummary summary(request, selected);
    if (auto status = summary.Build(); !status) {
        return status;
    }
    CRowBlock rows;
    auto status = QueryMembers("SELECT count(*) FROM members AS m" + members, values, rows);
    auto const rest = status ? NumberIn(rows.Row(0), 0) - summary.Members() : 0;
    if (rest > 0) {
        request.m_report.Note(
            CountOf(rest, "member has", "members have") + " no workout that is summed up here.");
    }
    return status;
}

CDbStatus NoPeriod()
{
    return {DbError::failed, "The job names no period."};
}

} // namespace

CDbStatus WorkoutSummaries(CReportRequest const& request)
{
    auto const& job = request.m_job;
    request.m_report.m_lstScope = {PeriodScope(job), StatusScope(job.m_nParam)};
    CSelected selected;
    if (!AddPeriod(selected, job)) {
        return NoPeriod();
    }
    auto const status = StatusCondition(job.m_nParam);
    AddCondition(selected, status);
    return SumUp(request, selected, status.empty() ? "" : " WHERE " + status, {});
}

CDbStatus ClassWorkouts(CReportRequest const& request)
{
    auto const& job = request.m_job;
    if (job.m_strCategory.empty()) {
        return {DbError::failed, "The job names no category."};
    }
    request.m_report.m_lstScope = {ClassScope(job), PeriodScope(job), StatusScope(job.m_nParam)};
    CSelected selected;
    if (!AddPeriod(selected, job)) {
        return NoPeriod();
    }
    CClassCondition const inClass(job.m_strCategory, job.m_strCourse, job.m_strSection);
    AddClass(selected, inClass);
    auto const status = StatusCondition(job.m_nParam);
    AddCondition(selected, status);
    return SumUp(request, selected,
        " WHERE EXISTS (SELECT 1 FROM classes AS c"
        " WHERE c.member_id = m.member_id AND "
            + inClass.m_strText + ")" + (status.empty() ? "" : " AND " + status),
        inClass.m_values);
}
