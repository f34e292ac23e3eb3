#include "tests/store/StoreFixture.h"
#include "tools/DemoRecords.h"

#include <regex>

namespace
{

class DemoTest : public CStoreTest
{
protected:
    /// The records of a demo centre that is made at that hour.
    static void MakeDemo(int hour, int members, std::uint64_t seed)
    {
        Run(DataFile::member, "DELETE FROM members");
        Run(DataFile::checkIn, "DELETE FROM check_ins");
        CCenterSettings settings;
        settings.liftStations = {{"Press", 10, 400}};
        settings.categories = {{"Day", {{"Spin", {"A", "B"}}}}, {"Evening", {}}};
        CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 18, hour));
        auto const made = WriteDemoRecords(settings, members, seed);
        ASSERT_TRUE(made) << made.Text();
    }

    static std::int64_t Count(std::string const& rows, DataFile file = DataFile::member)
    {
        return Number(file, "SELECT count(*) FROM " + rows);
    }

    /// Two numbers that any change of a member and of a workout before today change.
    static std::pair<std::int64_t, std::int64_t> Marks()
    {
        return {Number(DataFile::member,
                    "SELECT sum(member_id * (unicode(last_name) + length(first_name)) + "
                    "workout_number) FROM members"),
            Number(DataFile::member,
                "SELECT sum(member_id * (check_in % 100003) + station5) FROM workouts WHERE "
                "check_in < "
                    + kToday)};
    }

    static inline std::string const kToday = std::to_string(CEFOleDateTime(2026, 11, 18).Seconds());
};

} // namespace

TEST_F(DemoTest, SameSeedMakesTheSameMembersAtAnyHour)
{
    std::vector<std::int64_t> today; // workouts
    std::vector<std::pair<std::int64_t, std::int64_t>> marks;
    for (auto const& [hour, seed] : {std::pair(5, 1U), {12, 1U}, {22, 1U}, {12, 2U}}) {
        ASSERT_NO_FATAL_FAILURE(MakeDemo(hour, 400, seed));
        marks.push_back(Marks());
        today.push_back(Count("workouts WHERE check_in > " + kToday));
        auto const now = std::to_string(CEFOleDateTime(2026, 11, 18, hour).Seconds());
        EXPECT_EQ(Count("workouts WHERE check_out >= " + now), 0) << "those that are over";
        EXPECT_GT(Count("check_ins", DataFile::checkIn), 0);
        EXPECT_EQ(Count("check_ins WHERE check_in > " + now, DataFile::checkIn), 0);
    }
    EXPECT_EQ(marks[1], marks[0]);
    EXPECT_EQ(marks[2], marks[0]);
    EXPECT_NE(marks[3], marks[0]);
    EXPECT_EQ(today[0], 0);
    EXPECT_GT(today[1], 3);
    EXPECT_GT(today[2], today[1]);
}

TEST_F(DemoTest, RecordsFitEachOtherAndTheirLimits)
{
    ASSERT_NO_FATAL_FAILURE(MakeDemo(20, 1000, 1));
    EXPECT_EQ(Count("members"), 1000);
    EXPECT_GT(Count("members WHERE status = 0"), 10);
    EXPECT_EQ(Count("reports", DataFile::report), 1);
    for (std::string const table : {"workouts", "evaluations", "body_compositions"}) {
        EXPECT_GT(Count(table), 100) << table;
        EXPECT_EQ(Count(table
                      + " AS r WHERE class_index <> 99 AND NOT EXISTS (SELECT 1 FROM classes "
                        "WHERE member_id = r.member_id AND class_index = r.class_index)"),
            0)
            << table;
    }
    for (std::string const wrong :
        {"workouts JOIN enrollments USING (member_id) WHERE check_in NOT BETWEEN enroll_date AND "
         "expire_date + 86399 OR check_out <= check_in OR circuits NOT BETWEEN 0 AND 5 OR "
         "max(station1, station12) > 999",
            // Nobody comes twice a day.
            "workouts GROUP BY member_id, check_in / 86400 HAVING count(*) > 1",
            "evaluations WHERE eval_date > @ + 20 * 3600 OR weight NOT BETWEEN 1 AND 500 OR "
            "height NOT BETWEEN 1 AND 90",
            // Current members are those who have not expired.
            "members JOIN enrollments USING (member_id) WHERE (status <> 0) <> (expire_date >= @)",
            "body_compositions WHERE percent_fat NOT BETWEEN 2 AND 65 OR method > 3",
            "members WHERE length(first_name) > 12 OR length(middle_initial) > 1 OR "
            "length(last_name) > 20",
            "profiles WHERE length(address) > 28 OR length(city) > 16 OR length(zip) > 10 OR "
            "length(phone) > 14 OR length(email) > 32 OR length(emergency_name) > 32 OR "
            "length(emergency_phone) > 14 OR length(physician) > 32"}) {
        auto const sql = std::regex_replace(wrong, std::regex("@"), kToday);
        EXPECT_EQ(Count("(SELECT 1 FROM " + sql + ")"), 0) << wrong;
    }
}
