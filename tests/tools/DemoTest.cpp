#include "tests/store/StoreFixture.h"
#include "tools/DemoRecords.h"

#include <string>

using DemoTest = CStoreTest;

TEST_F(DemoTest, RecordsFitEachOtherAndTheirLimits)
{
    CEFOleDateTime const now(2026, 11, 18, 20);
    CEFOleDateTime::SetClock(now);
    CCenterSettings settings;
    settings.liftStations = {{"Press", 10, 400}};
    settings.categories = {{"Day", {{"Spin", {"A", "B"}}}}, {"Evening", {}}};
    auto const made = WriteDemoRecords(settings, 1000, 1);
    ASSERT_TRUE(made) << made.Text();

    EXPECT_EQ(Count("members"), 1000);
    EXPECT_GT(Count("members WHERE status = 0"), 10);
    EXPECT_EQ(Count("reports", DataFile::report), 1);
    EXPECT_GT(Count("check_ins", DataFile::checkIn), 0);
    for (std::string const table : {"workouts", "evaluations", "body_compositions"}) {
        EXPECT_GT(Count(table), 100) << table;
        EXPECT_EQ(Count(table
                      + " AS r WHERE class_index <> 99 AND NOT EXISTS (SELECT 1 FROM classes "
                        "WHERE member_id = r.member_id AND class_index = r.class_index)"),
            0)
            << table;
    }
    auto const later = " > " + std::to_string(now.Seconds());
    EXPECT_EQ(Count("check_ins WHERE check_in" + later, DataFile::checkIn), 0);
    std::vector<std::string> const wrongs
        = {"workouts WHERE check_out" + later, "evaluations WHERE eval_date" + later,
            "workouts JOIN enrollments USING (member_id) WHERE check_in NOT BETWEEN enroll_date "
            "AND expire_date + 86399 OR check_out <= check_in OR circuits NOT BETWEEN 0 AND 5 OR "
            "max(station1, station12) > 999",
            // Nobody comes twice a day.
            "workouts GROUP BY member_id, check_in / 86400 HAVING count(*) > 1",
            "evaluations WHERE weight NOT BETWEEN 1 AND 500 OR height NOT BETWEEN 1 AND 90",
            // Current members are those who have not expired.
            "members JOIN enrollments USING (member_id) WHERE (status <> 0) <> (expire_date + 86399"
                + later + ")",
            "body_compositions WHERE percent_fat NOT BETWEEN 2 AND 65 OR method > 3",
            "members WHERE length(first_name) > 12 OR length(middle_initial) > 1 OR "
            "length(last_name) > 20",
            "profiles WHERE length(address) > 28 OR length(city) > 16 OR length(zip) > 10 OR "
            "length(phone) > 14 OR length(email) > 32 OR length(emergency_name) > 32 OR "
            "length(emergency_phone) > 14 OR length(physician) > 32"};
    for (auto const& wrong : wrongs) {
        EXPECT_EQ(Count("(SELECT 1 FROM " + wrong + ")"), 0) << wrong;
    }
}
