#include "reports/content/WorkoutTotals.h"

#include "reports/content/ReportTexts.h"
#include "reports/document/Report.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr std::int64_t kWeek = 7;
constexpr std::int64_t kMostDaysByWeek = 26 * kWeek;
constexpr std::size_t kMostBars = 60;

CEFOleDateTime DayOf(std::int64_t day)
{
    return CEFOleDateTime::FromSeconds(day * CEFOleDateTime::kDay);
}

/// The zero date was a Saturday; weeks begin on Sundays.
std::int64_t WeekBegin(std::int64_t day)
{
    return day - ((day - 1) % kWeek + kWeek) % kWeek;
}

std::int64_t MonthBegin(std::int64_t day)
{
    return day - (DayOf(day).Day() - 1);
}

std::int64_t NextMonth(std::int64_t begin)
{
    auto date = DayOf(begin);
    date.AddMonths(1);
    return date.Seconds() / CEFOleDateTime::kDay;
}

} // namespace

void CWorkoutTotals::Add(CWorkoutTotals const& other)
{
    m_nWorkouts += other.m_nWorkouts;
    m_nOkay += other.m_nOkay;
    m_nMinutes += other.m_nMinutes;
    m_nCircuits += other.m_nCircuits;
}

std::int64_t CWorkoutTotals::MeanMinutes() const
{
    return m_nWorkouts == 0 ? 0 : (m_nMinutes + m_nWorkouts / 2) / m_nWorkouts;
}

void CWorkoutWeeks::Add(CEFOleDateTime const& day, std::int64_t workouts)
{
    if (day.ChkStatus() && !day.IsZero()) {
        auto date = day;
        date.Midnight();
        m_days[date.Seconds() / CEFOleDateTime::kDay] += workouts;
    }
}

bool CWorkoutWeeks::IsWorthIt() const
{
    return !m_days.empty() && WeekBegin(m_days.begin()->first) != WeekBegin(m_days.rbegin()->first);
}

CReportChart CWorkoutWeeks::Chart() const
{
    auto const last = m_days.rbegin()->first;
    bool const byWeek = last - m_days.begin()->first <= kMostDaysByWeek;
    std::vector<std::pair<std::int64_t, std::int64_t>> bars; // first day, workouts
    for (auto const& [day, workouts] : m_days) {
        auto const begin = byWeek ? WeekBegin(day) : MonthBegin(day);
        // Those without a workout are bars too, unless there is no end of them.
        while (!bars.empty() && bars.back().first < begin && bars.size() < 10 * kMostBars) {
            auto const next = byWeek ? bars.back().first + kWeek : NextMonth(bars.back().first);
            bars.emplace_back(next, 0);
        }
        if (bars.empty() || bars.back().first != begin) {
            bars.emplace_back(begin, 0);
        }
        bars.back().second += workouts;
    }
    bool const isCut = bars.size() > kMostBars;
    if (isCut) {
        bars.erase(bars.begin(), bars.end() - std::ptrdiff_t(kMostBars));
    }
    CReportChart chart;
    chart.m_kind = CReportChart::Kind::bars;
    std::string const unit = byWeek ? "week" : "month";
    chart.m_strTitle = "Workouts by " + unit;
    auto& series = chart.m_lstSeries.emplace_back();
    series.m_strName = byWeek ? "By the week's first day, Sunday" : "By month";
    auto best = bars.front();
    std::int64_t sum = 0;
    for (auto const& bar : bars) {
        auto const date = DayOf(bar.first);
        series.m_lstPoints.push_back(
            {date.Seconds(), double(bar.second), date.Format(byWeek ? "%m/%d" : "%m/%y")});
        best = bar.second > best.second ? bar : best;
        sum += bar.second;
    }
    auto const mean = double(sum) / double(bars.size());
    chart.m_strInWords = CountOf(sum, "workout", "workouts") + " in "
        + CountOf(std::ssize(bars), unit, unit + "s") + (isCut ? ", the last ones" : "") + ", from "
        + DateText(DayOf(bars.front().first)) + " on: " + NumberText(mean, 1) + " a " + unit
        + " in the mean, the most, " + CountText(best.second) + ", in the " + unit + " from "
        + DateText(DayOf(best.first)) + ".";
    return chart;
}
