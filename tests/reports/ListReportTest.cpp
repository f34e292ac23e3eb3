#include "tests/reports/ReportFixture.h"

namespace
{

class ListReportTest : public CReportTest
{
};

} // namespace

TEST_F(ListReportTest, ListsTheMembersOfAStatusByName)
{
    AddMember(1, "Young", "Al");
    AddMember(2, "adams", "Bo");
    AddMember(3, "Baker", "Cy");
    Run(DataFile::member, "UPDATE enrollments SET expire_date = ? WHERE member_id = 3",
        {CEFOleDateTime(2026, 11, 15).Seconds()});
    Run(DataFile::member, "UPDATE enrollments SET expire_date = ? WHERE member_id = 1",
        {CEFOleDateTime(2026, 11, 16).Seconds()});
    using R = CDAOReport;
    EXPECT_EQ(RowsOf({.m_nType = R::rtMembershipStatus, .m_nParam = R::roAll | R::roMemberIDs}),
        (Rows{"adams, Bo|2|Past|01/01/2026|12/31/2026|",
            "Baker, Cy|3|Current|01/01/2026|11/15/2026|expired",
            "Young, Al|1|Current|01/01/2026|11/16/2026|", "=3 members (2 current, 1 past)|||||"}));
    EXPECT_EQ(RowsOf({.m_nType = R::rtMembershipStatus, .m_nParam = R::roPast}),
        (Rows{"adams, Bo|Past|01/01/2026|12/31/2026|", "=1 member||||"}));
    auto const contacts = Build({.m_nType = R::rtEmergencyContacts, .m_nParam = R::roCurrent});
    EXPECT_EQ(RowsOf(contacts),
        (Rows{"Baker, Cy|555|||Dr. No", "Young, Al|555|||Dr. No", "=2 members||||"}));
    EXPECT_EQ(contacts.m_strCenter, "Gym");
    EXPECT_EQ(contacts.m_strCenterLine, "Town, IL 62701");
    EXPECT_EQ(contacts.m_lstScope, Rows{"Current members"});
}

TEST_F(ListReportTest, CountsAMemberOnceInACategory)
{
    for (int member = 1; member <= 5; ++member) {
        AddMember(member);
    }
    AddClass(1, 1, "Student", "PE 101", "A");
    AddClass(1, 2, "Student", "PE 102");
    AddClass(2, 1, "student", "pe 101", "a");
    AddClass(3, 1, "Faculty");
    AddClass(3, 2, "Student", "PE 101", "A");
    auto const rows = RowsOf({.m_nType = CDAOReport::rtMemberCount});
    EXPECT_EQ(rows,
        (Rows{"#Faculty", "(no course)|1|0|1", "=All of Faculty|1|0|1", "#Student",
            "PE 101 A|2|1|3", "PE 102|1|0|1", "=All of Student|2|1|3",
            "=Members with a class|2|1|3", "=Members without a class|1|1|2",
            "=All members|3|2|5"}));
}

TEST_F(ListReportTest, ListsTheClassesOfARosterWithTheirMembers)
{
    for (int member = 1; member <= 3; ++member) {
        AddMember(member, std::string(1, char('D' - member)));
    }
    AddClass(1, 1, "Student", "PE 102", "A");
    AddClass(2, 1, "STUDENT", "PE 101", "B");
    AddClass(3, 1, "Student", "PE 102", "A");
    AddClass(3, 2, "Students", "PE 102", "A");
    CReportJob job{.m_nType = CDAOReport::rtClassRoster,
        .m_nParam = CDAOReport::roAll,
        .m_strCategory = "student"};
    EXPECT_EQ(RowsOf(job),
        (Rows{"#STUDENT PE 101 B", "B, Jo|Past|In Progress|555|12/31/2026", "=1 member||||",
            "#Student PE 102 A", "A, Jo|Current|In Progress|555|12/31/2026",
            "C, Jo|Current|In Progress|555|12/31/2026", "=2 members||||"}));
    job.m_strCourse = "PE 102";
    job.m_nParam = CDAOReport::roPast;
    EXPECT_TRUE(RowsOf(job).empty());
}

TEST_F(ListReportTest, TellsAllOfAMember)
{
    AddMember(7, "Smith", "Al");
    AddClass(7, 4, "Student", "PE 101", "A");
    AddRecords(7, 4);
    AddRecords(7, 4, {2026, 11, 17, 9, 0});
    auto const report = Build({.m_nType = CDAOReport::rtMemberProfile, .m_nParam = 7});
    EXPECT_EQ(report.m_lstScope, Rows{"Smith, Al"});
    EXPECT_EQ(RowsOf(report), Rows{"Student PE 101 A|In Progress|No|0|0"});
    std::string facts;
    std::string texts;
    for (auto const& block : report.m_lstBlocks) {
        if (auto const* const list = std::get_if<CReportFacts>(&block)) {
            for (auto const& [label, value] : list->m_lstFacts) {
                facts += label + '=' + value + '\n';
            }
        } else if (auto const* const text = std::get_if<CReportText>(&block)) {
            texts += text->m_strText + '\n';
        }
    }
    for (auto const* const fact : {"Workout number=507", "Birthday (age)=01/01/1990 (36)",
             "City=Springfield, IL 62701", "Workouts=2, the last one on 11/17/2026",
             "Evaluations=2, the last", "Body compositions=2, the last"}) {
        EXPECT_NE(facts.find(fact), std::string::npos) << fact << " in\n" << facts;
    }
    for (auto const* const text :
        {"Firm Up/Lose Inches, Gain Weight, Improve Flexibility, Increase",
            "Smoke or Chew Tobacco, 20 or More lbs Overweight, Disabilities/Limitations"}) {
        EXPECT_NE(texts.find(text), std::string::npos) << text << " in\n" << texts;
    }
}

TEST_F(ListReportTest, MakesNothingOfAJobThatCannotBeDone)
{
    AddMember(1);
    using R = CDAOReport;
    Build({.m_nType = R::rpttype(14)}, DbError::failed);
    Build({.m_nType = R::rpttype(-1)}, DbError::failed);
    Build({.m_nType = R::rtMemberProfile, .m_nParam = 2}, DbError::gone);
    Build({.m_nType = R::rtMemberWorkouts, .m_nParam = 2, .m_strCategory = "101"}, DbError::gone);
    for (auto const* const index : {"", "256", "1x", "-1"}) {
        Build({.m_nType = R::rtMemberWorkouts, .m_nParam = 1, .m_strCategory = index},
            DbError::failed);
    }
    Build({.m_nType = R::rtClassRoster, .m_nParam = R::roAll}, DbError::failed);
    Build(
        {.m_nType = R::rtClassWorkouts, .m_nParam = R::roAll | R::roAllWorkouts}, DbError::failed);
    Build({.m_nType = R::rtDailyWorkouts}, DbError::failed);
    Build({.m_nType = R::rtWorkoutSummaries, .m_nParam = R::roAll}, DbError::failed);
    CReport report;
    EXPECT_EQ(BuildReport(
                  {.m_nType = R::rtMembershipStatus}, [](double) { return false; }, report)
                  .Error(),
        DbError::stopped);
    Run(DataFile::member, "ALTER TABLE classes RENAME TO lost");
    CDatabaseSession::Get().ShutDown();
    EXPECT_FALSE(BuildReport({.m_nType = R::rtMemberCount}, {}, report));
    EXPECT_FALSE(BuildReport({.m_nType = R::rtMemberProfile, .m_nParam = 1}, {}, report));
}
