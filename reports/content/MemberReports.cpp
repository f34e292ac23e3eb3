#include "reports/content/MemberReports.h"

#include "reports/content/ReportRows.h"
#include "reports/content/ReportTexts.h"
#include "store/sets/DAODef.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/SetCloser.h"

#include <utility>

namespace
{

bool HasIDs(CReportRequest const& request)
{
    return (request.m_job.m_nParam & CDAOReport::roMemberIDs) != 0;
}

/// The columns that tell who a row is about.
std::vector<CReportTable::CColumn> NameColumns(bool ids)
{
    std::vector<CReportTable::CColumn> columns = {{"Name", 28}};
    if (ids) {
        columns.push_back({"Member ID", 10, true});
    }
    return columns;
}

/// Counts members as a report lists them, and says so in the last line.
class CMemberCounter
{
public:
    void Count(bool isCurrent) { ++(isCurrent ? m_nCurrent : m_nPast); }
    std::string Text() const
    {
        auto text = CountOf(m_nCurrent + m_nPast, "member", "members");
        if (m_nCurrent > 0 && m_nPast > 0) {
            text += " (" + CountText(m_nCurrent) + " current, " + CountText(m_nPast) + " past)";
        }
        return text;
    }

private:
    std::int64_t m_nCurrent = 0;
    std::int64_t m_nPast = 0;
};

bool IsExpired(CEFOleDateTime date)
{
    date.PreMidnight(); // the last day still counts
    return date.IsPast();
}

/// A list of members of a status, one row each.
CDbStatus MemberList(CReportRequest const& request, std::vector<CReportTable::CColumn> more,
    std::function<void(CReportMember const&, CRowTexts&)> const& fill)
{
    auto columns = NameColumns(HasIDs(request));
    columns.insert(columns.end(), more.begin(), more.end());
    request.m_report.m_lstScope.push_back(StatusScope(request.m_job.m_nParam));
    CReportTable table(std::move(columns));
    CReportMember members;
    CSetCloser const close(members);
    auto const count = members.FindByStatus(request.m_job.m_nParam);
    CMemberCounter counter;
    CRowTexts row;
    auto status = ForEachRow(request, members, count, [&] {
        row.Begin();
        row.Add(NameOf(members));
        row.AddIf(HasIDs(request), std::to_string(members.m_MemberID));
        fill(members, row);
        row.PutInto(table);
        counter.Count(members.m_Status != 0);
    });
    if (table.CountRows() > 0) {
        table.AddRow({counter.Text()}, CReportTable::Row::sum);
    }
    request.m_report.m_lstBlocks.emplace_back(std::move(table));
    return status;
}

} // namespace

CDbStatus EmergencyContacts(CReportRequest const& request)
{
    request.m_report.m_bLandscape = true;
    return MemberList(request,
        {{"Telephone", 15}, {"Emergency contact", 28}, {"Emergency telephone", 18},
            {"Physician", 26}},
        [](CReportMember const& member, CRowTexts& row) {
            row.Add(member.m_Phone);
            row.Add(member.m_EmergName);
            row.Add(member.m_EmergPhone);
            row.Add(member.m_Physician);
        });
}

CDbStatus MembershipStatus(CReportRequest const& request)
{
    auto status = MemberList(request, {{"Status", 9}, {"Enrolled", 11}, {"Expires", 11}, {"", 9}},
        [](CReportMember const& member, CRowTexts& row) {
            row.Add(CDAOSmMem::GetStatusStr(member.m_Status));
            row.Add(DateText(member.m_EnrollDate));
            row.Add(DateText(member.m_ExpireDate));
            row.Add(member.m_Status != 0 && !member.m_ExpireDate.IsZero()
                        && IsExpired(member.m_ExpireDate)
                    ? "expired"
                    : "");
        });
    request.m_report.Note("\"Expired\" marks current members whose enrollment has run out by the "
                          "day of this report.");
    return status;
}

CDbStatus ClassRoster(CReportRequest const& request)
{
    auto const& job = request.m_job;
    auto& report = request.m_report;
    if (job.m_strCategory.empty()) {
        return {DbError::failed, "The job names no category."};
    }
    report.m_lstScope = {ClassScope(job), StatusScope(job.m_nParam)};
    auto columns = NameColumns(HasIDs(request));
    columns.insert(
        columns.end(), {{"Status", 9}, {"Grade status", 13}, {"Telephone", 15}, {"Expires", 11}});
    CReportTable table(std::move(columns));
    CReportClass classes;
    CSetCloser const close(classes);
    auto const count
        = classes.FindClass(job.m_strCategory, job.m_strCourse, job.m_strSection, job.m_nParam);
    CMemberCounter inClass;
    std::string group;
    std::int64_t places = 0;
    CRowTexts row;
    auto const endGroup = [&] {
        if (std::exchange(places, 0) > 0) {
            table.AddRow({inClass.Text()}, CReportTable::Row::sum);
        }
        inClass = {};
    };
    auto status = ForEachRow(request, classes, count, [&] {
        if (auto name = ClassOf(classes); places == 0 || name != group) {
            endGroup();
            table.AddGroup(name);
            group = std::move(name);
        }
        row.Begin();
        row.Add(NameOf(classes));
        row.AddIf(HasIDs(request), std::to_string(classes.m_MemberID));
        row.Add(CDAOSmMem::GetStatusStr(classes.m_Status));
        row.Add(CDAODef::GetGrdStatStr(CDAODef::gradestat(classes.m_GradeStat)));
        row.Add(classes.m_Phone);
        row.Add(DateText(classes.m_ExpireDate));
        row.PutInto(table);
        inClass.Count(classes.m_Status != 0);
        ++places;
    });
    endGroup();
    report.m_lstBlocks.emplace_back(std::move(table));
    return status;
}
