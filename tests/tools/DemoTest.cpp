#include "store/sets/DAOChkIn.h"
#include "store/EFOleDateTime.h"
#include "tests/tools/CorvanaDbFixture.h"
#include "tools/DemoPerson.h"
#include "tools/DemoRecords.h"

namespace
{

CCenterSettings SomeSettings()
{
    CCenterSettings settings;
    settings.liftStations = {{"Press", 10, 400}};
    settings.categories = {{"Day", {{"Spin", {"A", "B"}}}}, {"Evening", {}}};
    return settings;
}

class DemoTest : public CCorvanaDbTest
{
protected:
    void MakeDemo(std::string const& seed)
    {
        CDatabaseSession::Get().ShutDown();
        std::filesystem::remove_all(m_data);
        auto const made = Run(
            {"demo", "--members", "300", "--seed", seed, "--password-file", m_password.string()});
        ASSERT_EQ(made.exitCode, 0) << made.errors;
        CDatabaseSession::Get().SetDataFolder(m_data);
    }

    /// The records of a demo centre that is made at that time.
    void MakeDemoAt(CEFOleDateTime const& now, int members)
    {
        CDatabaseSession::Get().ShutDown();
        std::filesystem::remove_all(m_data);
        ASSERT_NO_FATAL_FAILURE(MakeCenter());
        CEFOleDateTime::SetClock(now);
        auto const made = WriteDemoRecords(SomeSettings(), members, 1);
        CEFOleDateTime::SetClock({});
        ASSERT_TRUE(made) << made.Text();
    }

    static std::int64_t Number(std::string_view sql, std::vector<DbValue> const& values = {},
        DataFile file = DataFile::member)
    {
        CDbStatus status;
        CRowBlock rows;
        auto* const database = CDatabaseSession::Get().Open(file, status);
        EXPECT_TRUE(database != nullptr && database->Query(sql, values, rows)) << sql;
        return rows.Rows() == 0 ? -1 : rows.Row(0).Cell(0).integerValue;
    }

    static CEFOleDateTime Today()
    {
        auto today = CEFOleDateTime::GetCurrentTime();
        today.Midnight();
        return today;
    }

    /// A number that any change of a member, a workout before today or an evaluation changes.
    static std::int64_t Mark(CEFOleDateTime const& today)
    {
        return Number("SELECT sum(member_id * (unicode(last_name) + length(first_name)) "
                      "+ workout_number) FROM members")
            + Number("SELECT sum(member_id * (check_in % 100003) + station5) FROM workouts "
                     "WHERE check_in < ?",
                {today.Seconds()})
            + Number("SELECT sum(eval_id * run_seconds) FROM evaluations");
    }
};

} // namespace

TEST_F(DemoTest, SameSeedMakesTheSameMembers)
{
    ASSERT_NO_FATAL_FAILURE(MakeDemo("7"));
    auto const seven = Mark(Today());
    ASSERT_NO_FATAL_FAILURE(MakeDemo("8"));
    EXPECT_NE(Mark(Today()), seven);
    ASSERT_NO_FATAL_FAILURE(MakeDemo("7"));
    EXPECT_EQ(Mark(Today()), seven);
}

TEST_F(DemoTest, RecordsFitEachOtherAndTheirLimits)
{
    ASSERT_NO_FATAL_FAILURE(MakeDemo("1"));
    EXPECT_EQ(Number("SELECT count(*) FROM members"), 300);
    for (std::string_view const table : {"workouts", "evaluations", "body_compositions"}) {
        std::string all = "SELECT count(*) FROM ";
        all.append(table).append(" AS r");
        EXPECT_GT(Number(all), 50) << table;
        auto const strangers = all.append(" WHERE class_index <> 99 AND NOT EXISTS (SELECT 1 FROM "
                                          "classes WHERE member_id = r.member_id AND class_index "
                                          "= r.class_index)");
        EXPECT_EQ(Number(strangers), 0) << table;
    }
    EXPECT_EQ(
        Number("SELECT count(*) FROM workouts JOIN enrollments USING (member_id) WHERE "
               "check_in NOT BETWEEN enroll_date AND expire_date + 86399 OR check_out <= check_in "
               "OR circuits NOT BETWEEN 0 AND 5 OR max(station1, station12) > 999"),
        0);
    auto const now = CEFOleDateTime::GetCurrentTime().Seconds();
    EXPECT_EQ(Number("SELECT count(*) FROM workouts WHERE check_out > ?", {now}), 0);
    EXPECT_EQ(Number("SELECT count(*) FROM evaluations WHERE eval_date > ? OR weight NOT BETWEEN 1 "
                     "AND 500 OR height NOT BETWEEN 1 AND 90",
                  {now}),
        0);
    EXPECT_EQ(Number("SELECT count(*) FROM body_compositions WHERE percent_fat NOT BETWEEN 2 AND "
                     "65 OR method NOT BETWEEN 0 AND 3"),
        0);
    EXPECT_EQ(Number("SELECT count(DISTINCT method) FROM body_compositions"), 4);
    EXPECT_EQ(Number("SELECT count(*) FROM members WHERE length(first_name) > 12 OR "
                     "length(last_name) > 20"),
        0);
    EXPECT_EQ(Number("SELECT count(DISTINCT (status <> 0) || (expire_date >= ?)) FROM members JOIN "
                     "enrollments USING (member_id)",
                  {Today().Seconds()}),
        2)
        << "current members are those who have not expired";
    EXPECT_GT(
        Number("SELECT count(*) FROM check_ins WHERE check_in <= ?", {now}, DataFile::checkIn), 0);
    EXPECT_EQ(Number("SELECT count(*) FROM reports", {}, DataFile::report), 1);
    EXPECT_EQ(Run({"check"}).exitCode, 0);
}

TEST_F(DemoTest, TextsOfAMemberFitTheirFields)
{
    auto const settings = SomeSettings();
    CEFOleDateTime const today(2026, 11, 18);
    CDemoRandom random(1);
    for (int n = kMostDemoMembers - 1; n >= 0; n -= 7) {
        auto const person = MakeDemoPerson(random, n, settings, today);
        std::vector<std::pair<std::string_view, std::size_t>> const fields
            = {{person.firstName, 12}, {person.middleInit, 1}, {person.lastName, 20},
                {person.address, 28}, {person.city, 16}, {person.zip, 10}, {person.phone, 14},
                {person.email, 32}, {person.emergencyName, 32}, {person.emergencyPhone, 14},
                {person.physician, 32}};
        for (auto const& [text, most] : fields) {
            ASSERT_LE(text.size(), most) << n << " " << text;
        }
        auto const end = std::to_string(person.memberID).append("@mail.example");
        ASSERT_TRUE(person.email.empty() || person.email.ends_with(end)) << person.email;
    }
}

TEST_F(DemoTest, MembersComeOnceADayAndMostlyOnWeekdays)
{
    CEFOleDateTime const today(2026, 11, 18);
    ASSERT_NO_FATAL_FAILURE(MakeDemoAt({2026, 11, 18, 20, 30}, 3000));
    auto const all = Number("SELECT count(*) FROM workouts");
    EXPECT_GT(all, 60000);
    EXPECT_EQ(Number("SELECT count(*) FROM (SELECT check_out, lead(check_in) OVER (PARTITION BY "
                     "member_id ORDER BY check_in) AS next FROM workouts) WHERE next <= check_out"),
        0);
    EXPECT_EQ(
        Number("SELECT count(DISTINCT member_id * 100000 + check_in / 86400) FROM workouts"), all);
    CDAOChkIn here;
    int const count = here.FindChkIns();
    EXPECT_GT(count, 10);
    for (int i = 0; i < count; ++i, here.Op(CDAOEFSet::opMoveNext)) {
        EXPECT_EQ(Number("SELECT count(*) FROM workouts WHERE member_id = ? AND check_in > ?",
                      {here.m_lMemberID, today.Seconds()}),
            0);
    }
    // Percent of all on each weekday, from Saturday on, where the days are counted from.
    std::vector<std::pair<int, int>> const bounds
        = {{6, 10}, {4, 8}, {16, 22}, {15, 21}, {15, 21}, {14, 20}, {11, 17}};
    for (std::size_t day = 0; day < bounds.size(); ++day) {
        auto const percent = 100
            * Number("SELECT count(*) FROM workouts WHERE check_in / 86400 % 7 = ?",
                {static_cast<std::int64_t>(day)})
            / all;
        EXPECT_GE(percent, bounds[day].first) << day;
        EXPECT_LT(percent, bounds[day].second) << day;
    }
}

TEST_F(DemoTest, WorkoutsOfTodayAreThoseThatAreOver)
{
    CEFOleDateTime const today(2026, 11, 18);
    auto const workoutsAt = [&](int hour) {
        CEFOleDateTime const now(2026, 11, 18, hour);
        MakeDemoAt(now, 500);
        EXPECT_EQ(Number("SELECT count(*) FROM workouts WHERE check_out >= ?", {now.Seconds()}), 0);
        EXPECT_GT(Number("SELECT count(*) FROM check_ins", {}, DataFile::checkIn), 0);
        return Number("SELECT count(*) FROM workouts WHERE check_in > ?", {today.Seconds()});
    };
    EXPECT_EQ(workoutsAt(5), 0);
    auto const records = Mark(today);
    auto const morning = workoutsAt(12);
    EXPECT_GT(morning, 3);
    EXPECT_GT(workoutsAt(22), morning);
    EXPECT_EQ(Mark(today), records) << "the hour changed other records";
}

TEST_F(DemoTest, RefusesNumbersOfMembersThatItCannotMake)
{
    for (auto const* const members : {"-1", "500001", "many", "1.5"}) {
        auto const result
            = Run({"demo", "--members", members, "--password-file", m_password.string()});
        EXPECT_EQ(result.exitCode, 2) << members;
        EXPECT_EQ(Names(), "none");
    }
}
