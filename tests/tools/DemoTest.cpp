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

    static std::int64_t Number(std::string_view sql, std::vector<DbValue> const& values = {},
        DataFile file = DataFile::member)
    {
        CDbStatus status;
        CRowBlock rows;
        auto* const database = CDatabaseSession::Get().Open(file, status);
        EXPECT_TRUE(database != nullptr && database->Query(sql, values, rows)) << sql;
        return rows.Rows() == 0 ? -1 : rows.Row(0).Cell(0).integerValue;
    }

    /// A number that any change of a member, a workout or an evaluation changes.
    static std::int64_t Mark()
    {
        return Number("SELECT sum(member_id * (unicode(last_name) + length(first_name)) "
                      "+ workout_number) FROM members")
            + Number("SELECT sum(id * (check_in % 100003) + station5) FROM workouts")
            + Number("SELECT sum(eval_id * run_seconds) FROM evaluations");
    }
};

} // namespace

TEST_F(DemoTest, SameSeedMakesTheSameMembers)
{
    ASSERT_NO_FATAL_FAILURE(MakeDemo("7"));
    auto const seven = Mark();
    ASSERT_NO_FATAL_FAILURE(MakeDemo("8"));
    EXPECT_NE(Mark(), seven);
    ASSERT_NO_FATAL_FAILURE(MakeDemo("7"));
    EXPECT_EQ(Mark(), seven);
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
    EXPECT_EQ(Number("SELECT count(*) FROM workouts JOIN enrollments USING (member_id) WHERE "
                     "check_in NOT BETWEEN enroll_date AND expire_date OR check_out <= check_in "
                     "OR circuits NOT BETWEEN 0 AND 5 OR max(station1, station12) > 999"),
        0);
    auto midnight = CEFOleDateTime::GetCurrentTime();
    auto const now = midnight.Seconds();
    midnight.Midnight();
    auto const today = midnight.Seconds();
    EXPECT_EQ(Number("SELECT count(*) FROM workouts WHERE check_in > ?", {now}), 0);
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
                  {today}),
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

TEST_F(DemoTest, RefusesNumbersOfMembersThatItCannotMake)
{
    for (auto const* const members : {"-1", "500001", "many", "1.5"}) {
        auto const result
            = Run({"demo", "--members", members, "--password-file", m_password.string()});
        EXPECT_EQ(result.exitCode, 2) << members;
        EXPECT_EQ(Names(), "none");
    }
}
