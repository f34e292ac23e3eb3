#include "reports/content/WorkoutReports.h"

#include "reports/content/ReportRows.h"
#include "reports/content/ReportTexts.h"
#include "reports/content/WorkoutTotals.h"
#include "store/sets/DAOCls.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/DAOStn.h"
#include "store/sets/DAOWk.h"
#include "store/sets/SetCloser.h"

#include <charconv>
#include <map>
#include <optional>
#include <utility>

namespace
{

char const* OkayText(bool isOkay)
{
    return isOkay ? "yes" : "no";
}

std::string SumText(CWorkoutTotals const& totals)
{
    return CountOf(totals.m_nWorkouts, "workout", "workouts");
}

std::string OkaySum(CWorkoutTotals const& totals)
{
    return CountText(totals.m_nOkay) + " yes";
}

/// The classes of a member by their indexes, numbered as they are stored.
class CMemberClasses
{
public:
    CDbStatus Read(CReportRequest const& request, std::int32_t member)
    {
        CDAOCls classes;
        CSetCloser const close(classes);
        auto const count = classes.FindClasses(member);
        return ForEachRow(request, classes, count, [&] {
            if (m_numbers.try_emplace(classes.m_ClassIndex, m_names.size() + 1).second) {
                m_names.push_back(ClassOf(classes));
            }
        });
    }
    std::vector<std::string> const& Names() const { return m_names; }
    bool Has(std::uint8_t index) const { return m_numbers.contains(index); }
    /// From 1 on; empty for what is no class of the member.
    std::string Number(std::uint8_t index) const
    {
        auto const found = m_numbers.find(index);
        return found != m_numbers.end() ? std::to_string(found->second) : std::string();
    }

private:
    std::map<std::uint8_t, std::size_t> m_numbers;
    std::vector<std::string> m_names;
};

/// Which class's workouts the job asks for, from its text; nothing when that is none.
std::optional<std::uint8_t> ClassIndexOf(CReportJob const& job)
{
    std::uint8_t index = 0;
    auto const& text = job.m_strCategory;
    auto const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, index);
    return error == std::errc() && stop == end ? std::optional(index) : std::nullopt;
}

bool IsAskedFor(std::uint8_t asked, std::uint8_t index, CMemberClasses const& classes)
{
    return asked == CDAOCls::kAllClasses || asked == index
        || (asked == CDAOCls::kUnknown && !classes.Has(index));
}

/// The abbreviations of the stations, in the order of a workout's values.
CDbStatus ReadStations(CReportRequest const& request, std::vector<std::string>& names)
{
    CDAOStn stations;
    CSetCloser const close(stations);
    auto const count = stations.OpenSet(true);
    auto status = ForEachRow(request, stations, count, [&] {
        names.push_back(
            stations.m_strStnAbbr.empty() ? stations.m_strStnName : stations.m_strStnAbbr);
    });
    names.resize(std::min<std::size_t>(names.size(), CDAOWk::kStationValues));
    return status;
}

} // namespace

// ---- of a day, and of no class

CDbStatus DailyWorkouts(CReportRequest const& request)
{
    auto from = request.m_job.m_dtFrom;
    if (from.IsZero() || !from.ChkStatus()) {
        return {DbError::failed, "The job names no day."};
    }
    from.Midnight();
    auto to = from;
    to.PreMidnight();
    request.m_report.m_lstScope.push_back(
        from.Format("%A, %B ") + std::to_string(from.Day()) + ", " + std::to_string(from.Year()));
    CReportTable table({{"In", 6}, {"Out", 6}, {"Minutes", 8, true}, {"Name", 25}, {"Class", 40},
        {"Circuits", 8, true}, {"Okay", 9}});
    table.m_strIfEmpty = "No workouts are recorded for this day.";
    CReportWorkout workouts;
    CSetCloser const close(workouts);
    auto const count = workouts.FindBetween(from, to);
    CWorkoutTotals totals;
    auto status = ForEachRow(request, workouts, count, [&] {
        totals.Add(workouts.Minutes(), workouts.m_nCircuits, workouts.m_bWorkoutOK);
        table.AddRow(
            {workouts.m_dtCheckIn.TimeStrHourMinute(), workouts.m_dtCheckOut.TimeStrHourMinute(),
                CountText(workouts.Minutes()), NameOf(workouts), ClassOf(workouts),
                CountText(workouts.m_nCircuits), OkayText(workouts.m_bWorkoutOK)});
    });
    if (totals.m_nWorkouts > 0) {
        table.AddRow({"", "", CountText(totals.m_nMinutes), SumText(totals), "",
                         CountText(totals.m_nCircuits), OkaySum(totals)},
            CReportTable::Row::sum);
    }
    request.m_report.m_lstBlocks.emplace_back(std::move(table));
    return status;
}

CDbStatus UnknownWorkouts(CReportRequest const& request)
{
    request.m_report.m_lstScope.emplace_back(
        "Workouts that belong to no category, course or section of their member");
    CReportTable table({{"Date", 11}, {"In", 6}, {"Out", 6}, {"Minutes", 8, true},
        {"Circuits", 8, true}, {"Okay", 9}});
    table.m_strIfEmpty = "Every workout belongs to a class.";
    CReportWorkout workouts;
    CSetCloser const close(workouts);
    auto const count = workouts.FindOfNoClass();
    CWorkoutTotals all;
    CWorkoutTotals ofMember;
    std::int32_t member = 0;
    auto const endMember = [&] {
        if (ofMember.m_nWorkouts > 1) {
            table.AddRow({SumText(ofMember), "", "", CountText(ofMember.m_nMinutes),
                             CountText(ofMember.m_nCircuits), OkaySum(ofMember)},
                CReportTable::Row::sum);
        }
        all.Add(std::exchange(ofMember, {}));
    };
    auto status = ForEachRow(request, workouts, count, [&] {
        if (std::exchange(member, workouts.m_MemberID) != workouts.m_MemberID) {
            endMember();
            table.AddGroup(NameOf(workouts));
        }
        ofMember.Add(workouts.Minutes(), workouts.m_nCircuits, workouts.m_bWorkoutOK);
        table.AddRow({DateText(workouts.m_dtCheckIn), workouts.m_dtCheckIn.TimeStrHourMinute(),
            workouts.m_dtCheckOut.TimeStrHourMinute(), CountText(workouts.Minutes()),
            CountText(workouts.m_nCircuits), OkayText(workouts.m_bWorkoutOK)});
    });
    endMember();
    if (all.m_nWorkouts > 0) {
        table.AddGroup("All members");
        table.AddRow({SumText(all), "", "", CountText(all.m_nMinutes), CountText(all.m_nCircuits),
                         OkaySum(all)},
            CReportTable::Row::sum);
    }
    request.m_report.m_lstBlocks.emplace_back(std::move(table));
    return status;
}

// ---- of a member

CDbStatus MemberWorkouts(CReportRequest const& request)
{
    auto const& job = request.m_job;
    auto& report = request.m_report;
    auto const asked = ClassIndexOf(job);
    if (!asked) {
        return {DbError::failed, "The job does not say which class it is about."};
    }
    CDAOSmMem member;
    CSetCloser const closeMember(member);
    if (member.FindMember(CDAOSmMem::idMember, job.m_nParam) == 0) {
        return member.LastStatus() ? NoSuchMember() : member.LastStatus();
    }
    CMemberClasses classes;
    std::vector<std::string> stations;
    if (auto status = classes.Read(request, job.m_nParam); !status) {
        return status;
    }
    if (auto status = ReadStations(request, stations); !status) {
        return status;
    }
    report.m_bLandscape = true;
    report.m_lstScope = {NameOf(member) + ", member ID " + std::to_string(job.m_nParam),
        *asked == CDAOCls::kAllClasses    ? "All classes"
            : *asked == CDAOCls::kUnknown ? "Workouts of no class"
                                          : "Class: " + job.m_strCourse};
    std::vector<CReportTable::CColumn> columns
        = {{"Date", 10}, {"In", 5}, {"Out", 5}, {"Minutes", 7, true}, {"Okay", 7}};
    bool const hasClass = *asked == CDAOCls::kAllClasses;
    if (hasClass) {
        columns.push_back({"Class", 5});
        for (std::size_t i = 0; i < classes.Names().size(); ++i) {
            report.m_lstScope.push_back(
                "Class " + std::to_string(i + 1) + ": " + classes.Names()[i]);
        }
    }
    for (auto const& station : stations) {
        columns.push_back({station, 4, true});
    }
    CReportTable table(std::move(columns));
    table.m_strIfEmpty = "No workouts are recorded.";
    CDAOWk workouts;
    CSetCloser const close(workouts);
    auto const count = workouts.FindWks(job.m_nParam);
    CWorkoutTotals totals;
    std::vector<std::int64_t> sums(stations.size());
    CWorkoutWeeks weeks;
    CRowTexts row;
    auto status = ForEachRow(request, workouts, count, [&] {
        if (!IsAskedFor(*asked, workouts.m_nClassIndex, classes)) {
            return;
        }
        totals.Add(workouts.TotalMinutes(), workouts.GetStnVal(0), workouts.m_bWorkoutOK);
        weeks.Add(workouts.m_dtCheckIn);
        row.Begin();
        row.Add(DateText(workouts.m_dtCheckIn));
        row.Add(workouts.m_dtCheckIn.TimeStrHourMinute());
        row.Add(workouts.m_dtCheckOut.TimeStrHourMinute());
        row.Add(CountText(workouts.TotalMinutes()));
        row.Add(OkayText(workouts.m_bWorkoutOK));
        row.AddIf(hasClass, classes.Number(workouts.m_nClassIndex));
        for (int station = 0; station < int(stations.size()); ++station) {
            row.Add(CountText(workouts.GetStnVal(station)));
            sums[std::size_t(station)] += workouts.GetStnVal(station);
        }
        row.PutInto(table);
    });
    if (totals.m_nWorkouts > 0) {
        row.Begin();
        row.Add(SumText(totals));
        row.Add("");
        row.Add("");
        row.Add(CountText(totals.m_nMinutes));
        row.Add(OkaySum(totals));
        row.AddIf(hasClass, "");
        for (auto const sum : sums) {
            row.Add(CountText(sum));
        }
        row.PutInto(table, CReportTable::Row::sum);
    }
    if (totals.m_nWorkouts > 0) {
        report.Body(CountOf(totals.m_nWorkouts, "workout", "workouts") + ", "
            + CountText(totals.m_nOkay) + " of them okay, " + HoursText(totals.m_nMinutes)
            + " hours in all, " + CountText(totals.MeanMinutes()) + " minutes each in the mean.");
    }
    if (weeks.IsWorthIt()) {
        report.m_lstBlocks.emplace_back(weeks.Chart());
    }
    report.m_lstBlocks.emplace_back(std::move(table));
    return status;
}
