#include "tests/reports/ReportFixture.h"

namespace
{

/// Four members, two of them in one class, with workouts of many lengths on many days. One ends
/// before it began; the last member's are of no class.
class WorkoutReportTest : public CReportTest
{
protected:
    void SetUp() override
    {
        CReportTest::SetUp();
        for (int member = 1; member <= 4; ++member) {
            AddMember(member, std::string(1, char('A' + member)));
        }
        AddClass(1, 5, "Student", "PE 101");
        AddClass(2, 6, "student", "PE 101");
        AddClass(3, 7, "Faculty");
        for (auto const* const name : {"Circuits", "Treadmill"}) {
            Run(DataFile::center, "INSERT INTO stations (name, abbreviation) VALUES (?, '')",
                {std::string(name)});
        }
        // Every 17 hours, 1 to 96 minutes and some seconds long.
        Run(DataFile::member,
            "WITH RECURSIVE n (i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 199)"
            " INSERT INTO workouts (member_id, workout_ok, class_index, check_in, check_out,"
            " circuits, station1, station2, station3, station4, station5, station6, station7,"
            " station8, station9, station10, station11, station12)"
            " SELECT 1 + i % 4, i % 3 = 0, CASE i % 4 WHEN 0 THEN 5 WHEN 1 THEN 6 WHEN 2 THEN 7"
            " ELSE 99 END, ?1 - i * 61200, ?1 - i * 61200 + (i * 37 % 96) * 60 + i % 60 - 30,"
            " i % 6, i % 11, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 FROM n",
            {CEFOleDateTime(2026, 11, 16, 9, 0).Seconds()});
    }

    /// The sums over those workouts as "workouts okay minutes circuits".
    static std::string Sums(std::string const& where)
    {
        std::string sums;
        for (auto const* const sum : {"count(*)", "ifnull(sum(workout_ok), 0)",
                 "ifnull(sum(max(check_out - check_in, 0) / 60), 0)", "ifnull(sum(circuits), 0)"}) {
            sums += (sums.empty() ? "" : " ")
                + std::to_string(Number(
                    DataFile::member, "SELECT " + std::string(sum) + " FROM workouts " + where));
        }
        return sums;
    }
    /// The same of a report's last sum.
    static std::string LastSum(CReportJob const& job)
    {
        auto const report = Build(job);
        std::vector<std::string_view> cells;
        std::map<std::string, std::string> sum;
        for (auto const& block : report.m_lstBlocks) {
            if (auto const* const table = std::get_if<CReportTable>(&block)) {
                table->ReadRow(table->CountRows() - 1, cells);
                for (std::size_t i = 0; i < cells.size(); ++i) {
                    for (auto const c : cells[i]) {
                        if ((c >= '0' && c <= '9') || c == ':') {
                            sum[table->Columns()[i].m_strHeading] += c;
                        }
                    }
                }
            }
        }
        auto const hours = sum["Hours"];
        auto const colon = hours.find(':');
        auto const minutes = colon == std::string::npos
            ? sum["Minutes"]
            : std::to_string(std::stoi(hours) * 60 + std::stoi(hours.substr(colon + 1)));
        auto const first = job.m_nType == CDAOReport::rtDailyWorkouts ? "Name" : "Date";
        return (sum.contains("Workouts") ? sum["Workouts"] : sum[first]) + ' ' + sum["Okay"] + ' '
            + minutes + ' ' + sum["Circuits"];
    }
    static std::string Period(CEFOleDateTime const& from, CEFOleDateTime const& to)
    {
        return "WHERE check_in BETWEEN " + std::to_string(from.Seconds()) + " AND "
            + std::to_string(to.Seconds());
    }
};

} // namespace

TEST_F(WorkoutReportTest, SumsWhatIsStored)
{
    using R = CDAOReport;
    CEFOleDateTime const from(2026, 9, 1);
    CEFOleDateTime const to(2026, 10, 31, 23, 59, 59);
    std::string const ofClass = "class_index IN (5, 6)";
    EXPECT_EQ(LastSum({.m_nType = R::rtWorkoutSummaries, .m_nParam = R::roAll | R::roAllWorkouts}),
        Sums(""));
    EXPECT_EQ(LastSum({.m_nType = R::rtWorkoutSummaries,
                  .m_nParam = R::roCurrent | R::roMemberIDs,
                  .m_dtFrom = from,
                  .m_dtTo = to}),
        Sums(Period(from, to) + " AND member_id % 2 = 1"));
    EXPECT_EQ(LastSum({.m_nType = R::rtClassWorkouts,
                  .m_nParam = R::roAll,
                  .m_dtFrom = from,
                  .m_dtTo = to,
                  .m_strCategory = "STUDENT"}),
        Sums(Period(from, to) + " AND " + ofClass));
    EXPECT_EQ(LastSum({.m_nType = R::rtClassWorkouts,
                  .m_nParam = R::roPast | R::roAllWorkouts,
                  .m_strCategory = "Student",
                  .m_strCourse = "PE 101"}),
        Sums("WHERE member_id = 2"));
    EXPECT_EQ(LastSum({.m_nType = R::rtDailyWorkouts, .m_dtFrom = {2026, 11, 16, 13, 0}}),
        Sums(Period({2026, 11, 16}, {2026, 11, 16, 23, 59, 59})));
    EXPECT_EQ(LastSum({.m_nType = R::rtUnknownWorkouts}), Sums("WHERE member_id = 4"));
    EXPECT_EQ(LastSum({.m_nType = R::rtMemberWorkouts, .m_nParam = 1, .m_strCategory = "101"}),
        Sums("WHERE member_id = 1"));
}

TEST_F(WorkoutReportTest, ListsAMembersWorkoutsOfTheClassAskedFor)
{
    Run(DataFile::member,
        "UPDATE workouts SET class_index = 99 WHERE id IN (SELECT id FROM workouts"
        " WHERE member_id = 1 ORDER BY check_in DESC LIMIT 3)");
    Run(DataFile::member, "UPDATE workouts SET class_index = 8 WHERE id = 5"); // of no class either
    auto const count = [](char const* index) {
        auto const rows = RowsOf({.m_nType = CDAOReport::rtMemberWorkouts,
            .m_nParam = 1,
            .m_strCategory = index,
            .m_strCourse = "PE"});
        return rows.empty() ? 0 : int(rows.size()) - 1;
    };
    EXPECT_EQ(count("101"), 50);
    EXPECT_EQ(count("99"), 3);
    EXPECT_EQ(count("5"), 47);
    EXPECT_EQ(count("6"), 0);
}

TEST_F(WorkoutReportTest, DrawsTheWeeksOfAPeriodAndSaysThemInWords)
{
    CReportJob job{.m_nType = CDAOReport::rtWorkoutSummaries,
        .m_nParam = CDAOReport::roAll,
        .m_dtFrom = {2026, 10, 1},
        .m_dtTo = {2026, 10, 31, 23, 59, 59}};
    Run(DataFile::member, "DELETE FROM workouts " + Period({2026, 10, 11}, {2026, 10, 17, 23, 59}));
    auto const report = Build(job);
    auto const* const chart = std::get_if<CReportChart>(&report.m_lstBlocks.front());
    ASSERT_NE(chart, nullptr);
    std::string bars;
    for (auto const& point : chart->m_lstSeries.front().m_lstPoints) {
        bars += point.m_strLabel + ':' + std::to_string(int(point.m_dY)) + ' ';
    }
    std::string expected;
    for (CEFOleDateTime day(2026, 9, 27); day < job.m_dtTo;
         day = CEFOleDateTime::FromSeconds(day.Seconds() + 7 * CEFOleDateTime::kDay)) {
        auto const from = std::max(day, job.m_dtFrom);
        auto const to = std::min(
            CEFOleDateTime::FromSeconds(day.Seconds() + 7 * CEFOleDateTime::kDay - 1), job.m_dtTo);
        expected
            += day.Format("%m/%d:") + std::to_string(Count("workouts " + Period(from, to))) + ' ';
    }
    EXPECT_EQ(bars, expected);
    EXPECT_NE(chart->m_strInWords.find("in 5 weeks, from 09/27/2026 on"), std::string::npos)
        << chart->m_strInWords;
    job.m_nParam |= CDAOReport::roAllWorkouts; // 142 days, by week still
    job.m_dtFrom = job.m_dtTo = {};
    EXPECT_NE(Build(job).m_lstBlocks.size(), 0U);
}

TEST_F(WorkoutReportTest, TakesRowsThatMakeNoSense)
{
    Run(DataFile::member,
        "UPDATE workouts SET class_index = 300, check_in = -9000000000000000000,"
        " check_out = 9000000000000000000, circuits = 99999, station1 = -1 WHERE id = 1");
    Run(DataFile::member, "UPDATE members SET first_name = ?, status = 1000 WHERE member_id = 1",
        {std::string("\0\n\xFF|", 4)});
    using R = CDAOReport;
    for (auto const type : {R::rtWorkoutSummaries, R::rtUnknownWorkouts, R::rtMemberWorkouts,
             R::rtMemberProfile, R::rtMembershipStatus}) {
        Build({.m_nType = type,
            .m_nParam = type == R::rtMemberProfile || type == R::rtMemberWorkouts
                ? 1
                : R::roAll | R::roAllWorkouts,
            .m_strCategory = "101"});
    }
}
