#include "tests/store/text/DataFileFixture.h"

#include <limits>
#include <map>
#include <set>

namespace
{

/// What becomes of numbers that others have: workout numbers, and those of evaluations.
class DataFileNumberTest : public CDataFileTest
{
};

/// Who of members 1 to 5 is replaced when the file gives each the number 500 more than his ID:
/// whose number stays with a member that is not replaced is not replaced either.
std::set<std::int64_t> Replaced(std::map<std::int64_t, std::int64_t> const& numbersThere)
{
    std::set<std::int64_t> replaced = {1, 2, 3, 4, 5};
    for (bool done = false; !done;) {
        done = true;
        for (auto const& [id, number] : numbersThere) {
            done = done && (replaced.contains(id) || replaced.erase(number - 500) == 0);
        }
    }
    return replaced;
}

} // namespace

TEST_F(DataFileNumberTest, AMemberWhoseWorkoutNumberIsTakenIsSkippedWhole)
{
    AddMember(1);
    AddMember(2);
    auto const file = BackupMembers();
    Run(DataFile::member, "DELETE FROM members WHERE member_id = 2");
    Run(DataFile::member, "UPDATE members SET workout_number = 502");
    EXPECT_EQ(Restore(m_setMem, file), 0);
    EXPECT_EQ(m_setMem.LastSkipped(), 1);
    EXPECT_TRUE(m_setMem.LastStatus());
    EXPECT_EQ(Count("members"), 1U);
    EXPECT_EQ(Count("profiles WHERE member_id = 2"), 0U);

    Run(DataFile::member, "UPDATE members SET member_id = 3, workout_number = 501");
    EXPECT_EQ(Restore(m_setMem, file, 0, false), 1);
    EXPECT_EQ(m_setMem.LastSkipped(), 1);
    Run(DataFile::member, "UPDATE members SET last_name = 'Kept' WHERE member_id = 2");
    Run(DataFile::member, "UPDATE members SET workout_number = 7 WHERE member_id = 2");
    Run(DataFile::member, "UPDATE members SET workout_number = 502 WHERE member_id = 3");
    auto const before = BackupMembers();
    EXPECT_EQ(Restore(m_setMem, file, 2, false), 0);
    EXPECT_EQ(m_setMem.LastSkipped(), 1);
    EXPECT_EQ(BackupMembers(), before);
}

/// Members can have taken over one another's numbers since the file was written.
TEST_F(DataFileNumberTest, OnlyANumberThatStaysWithAnotherMemberKeepsAMemberOut)
{
    for (std::int32_t id = 1; id <= 5; ++id) {
        AddMember(id);
    }
    auto const file = BackupMembers();
    for (int round = 0; round < 100; ++round) {
        Run(DataFile::member, "DELETE FROM members");
        ASSERT_EQ(Restore(m_setMem, file), 5);
        AddMember(6); // not in the file
        Run(DataFile::member, "UPDATE members SET last_name = 'Changed'");
        std::map<std::int64_t, std::int64_t> numbers; // of the members that are there
        Run(DataFile::member, "UPDATE members SET workout_number = workout_number + 1000");
        auto const order = m_rows.Order(6);
        for (std::int64_t id = 1; id <= 6; ++id) {
            std::int64_t const number = 501 + order[static_cast<std::size_t>(id) - 1];
            if (m_rows.Chance(6)) {
                Run(DataFile::member, "DELETE FROM members WHERE member_id = ?", {id});
            } else {
                Run(DataFile::member, "UPDATE members SET workout_number = ? WHERE member_id = ?",
                    {number, id});
                numbers[id] = number;
            }
        }
        auto const replaced = Replaced(numbers);
        std::string lines;
        for (int const line : m_rows.Order(5)) {
            lines += Line(file, line + 1);
        }
        ASSERT_EQ(Restore(m_setMem, lines, 0, false), std::ssize(replaced)) << lines;
        ASSERT_EQ(m_setMem.LastSkipped(), 5 - std::ssize(replaced));
        for (std::int64_t id = 1; id <= 6; ++id) {
            bool const isNew = replaced.contains(id);
            bool const isThere = isNew || numbers.contains(id);
            auto const found = Count("members WHERE member_id = " + std::to_string(id)
                + " AND workout_number = " + std::to_string(isNew ? id + 500 : numbers[id])
                + " AND last_name " + (isNew ? "<>" : "=") + " 'Changed'");
            ASSERT_EQ(found, isThere ? 1U : 0U) << id;
        }
    }
}

TEST_F(DataFileNumberTest, OfTwoMembersThatWantOneNumberOneGetsIt)
{
    for (std::int32_t id = 1; id <= 3; ++id) {
        AddMember(id);
    }
    auto const third = "UPDATE members SET workout_number = ? WHERE member_id = 3";
    auto const swap = [] {
        for (std::int64_t const number : {900, 501, 502}) {
            Run(DataFile::member, "UPDATE members SET workout_number = ? WHERE member_id = ?",
                {number, std::int64_t(number == 501 ? 2 : 1)});
        }
    };
    swap();
    auto file = BackupMembers(); // 502, 501
    Run(DataFile::member, "UPDATE members SET workout_number = 900 WHERE member_id = 2");
    Run(DataFile::member, third, {std::int64_t(501)});
    file = Line(BackupMembers(), 3) + Line(file, 1) + Line(file, 2); // the third wants 501, too
    Run(DataFile::member, third, {std::int64_t(503)});
    Run(DataFile::member, "UPDATE members SET workout_number = 500 + member_id");
    Add(m_setMem,
        {{"member_id", 4}, {"workout_number", 999'999'999}}); // where one would step aside
    auto const before = Dump("members");
    EXPECT_EQ(Restore(m_setMem, file + "\n", 0, false), 0);
    EXPECT_EQ(Restore(m_setMem, BackupMembers(), 4, false), 1);
    EXPECT_EQ(Dump("members"), before) << "who waited in a restore that failed waits no longer";
    EXPECT_EQ(Restore(m_setMem, file, 0, false), 2);
    EXPECT_EQ(m_setMem.LastSkipped(), 1);
    EXPECT_EQ(Count("members WHERE workout_number IN (501, 502)"), 2U);
}

TEST_F(DataFileNumberTest, NewNumbersOfEvaluationsComeAfterAllOthers)
{
    AddMember(1);
    AddMember(2);
    for (std::int32_t const number : {10, 11, 12}) {
        Add(m_setEval,
            {{"member_id", number == 12 ? 2 : 1}, {"eval_date", number}, {"eval_id", number}});
    }
    auto const file = BackupEvaluations();
    auto const lifts = Dump("lifts WHERE eval_id < 12", false);
    auto const dates = [](std::string const& number) {
        return Number(
            DataFile::member, "SELECT eval_date FROM evaluations WHERE eval_id = " + number);
    };
    Run(DataFile::member, "UPDATE evaluations SET eval_id = 500 WHERE eval_id = 12");
    auto const bad = BackupEvaluations() + "\n";
    for (std::int32_t const member : {0, 1}) {
        Run(DataFile::member, "DELETE FROM evaluations");
        Run(DataFile::member, "DELETE FROM members WHERE member_id = 2");
        Add(m_setEval, {{"member_id", 1}, {"eval_date", 99}, {"eval_id", 10}});
        Add(m_setEval,
            {{"member_id", 1}, {"eval_date", 98},
                {"eval_id", std::numeric_limits<std::int64_t>::min()}});
        EXPECT_EQ(Restore(m_setEval, bad), 0);
        Run(DataFile::member, "DELETE FROM lifts");
        ASSERT_EQ(Restore(m_setEval, file, member), 2) << m_setEval.LastStatus().Text();
        EXPECT_EQ(dates("10"), 99);
        EXPECT_EQ(dates("11"), 11);
        EXPECT_EQ(dates("13"), 10);
        Run(DataFile::member, "UPDATE lifts SET eval_id = 10 WHERE eval_id = 13");
        EXPECT_EQ(Dump("lifts", false), lifts);
    }
}

TEST_F(DataFileNumberTest, AnEvaluationWhoseNumberIsTakenGetsANewOne)
{
    AddMember(1);
    for (std::int32_t i = 1; i <= 20; ++i) {
        Add(m_setEval, {{"member_id", 1}, {"eval_date", kTime + i}, {"eval_id", i}});
    }
    auto const lifts = Dump("lifts");
    auto const file = BackupEvaluations();
    Run(DataFile::member, "UPDATE evaluations SET eval_date = eval_date + 100");
    EXPECT_EQ(Restore(m_setEval, file), 20) << m_setEval.LastStatus().Text();
    EXPECT_EQ(Count("evaluations"), 40U);
    EXPECT_EQ(Count("lifts"), 2 * lifts.size());
    Run(DataFile::member, "DELETE FROM evaluations WHERE eval_id <= 20");
    Run(DataFile::member, "UPDATE evaluations SET eval_id = eval_id - 20");
    EXPECT_EQ(BackupEvaluations(), file);
    EXPECT_EQ(Restore(m_setEval, file), 0);

    Run(DataFile::member, "UPDATE evaluations SET eval_id = 2147483647 WHERE eval_id = 20");
    Run(DataFile::member, "UPDATE evaluations SET eval_date = 5 WHERE eval_id = 3");
    EXPECT_EQ(Restore(m_setEval, file), 1) << m_setEval.LastStatus().Text();
    EXPECT_EQ(Count("evaluations WHERE eval_id = 20"), 1U);
    Run(DataFile::member, "DELETE FROM members");
    EXPECT_EQ(Restore(m_setEval, file), 0);
    EXPECT_EQ(m_setEval.LastSkipped(), 20);
}
